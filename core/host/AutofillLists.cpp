#include "AutofillLists.h"

#include <algorithm>

void AutofillLists::addValue(const QVariant& value, const QString& field) {
  const QString text = value.toString().trimmed();
  if (!value.isValid() || text.isEmpty()) return;
  auto& list = lists_[field];
  const QString folded = text.toCaseFolded();
  if (!list.contains(folded)) list.insert(folded, text);
}

QStringList AutofillLists::valuesForField(const QString& field) const {
  QStringList values = lists_.value(field).values();
  std::sort(values.begin(), values.end(), [](const QString& a, const QString& b) {
    return QString::compare(a, b, Qt::CaseInsensitive) < 0;
  });
  return values;
}
