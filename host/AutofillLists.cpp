#include "AutofillLists.h"

#include <algorithm>

void AutofillLists::addValue(const QVariant& value, const QString& field) {
  const QString text = value.toString().trimmed();
  if (!value.isValid() || text.isEmpty()) return;
  auto& list = lists_[field];
  const QString folded = text.toCaseFolded();
  if (!list.contains(folded)) list.insert(folded, text);
}

void AutofillLists::seedOnce() const {
  if (!seed_) return;
  auto seed = std::move(seed_);
  seed_ = nullptr;
  seed(const_cast<AutofillLists&>(*this));
}

QStringList AutofillLists::valuesForField(const QString& field) const {
  seedOnce();
  QStringList values = lists_.value(field).values();
  std::sort(values.begin(), values.end(), [](const QString& a, const QString& b) {
    return QString::compare(a, b, Qt::CaseInsensitive) < 0;
  });
  return values;
}
