#include "AttributeInput.h"

#include "ManagedObject.h"
#include "NaturalDate.h"
#include "ValueKind.h"

#include <optional>

namespace AttributeInput {

std::optional<QVariant> read(AttributeKind kind, const QVariant& input) {
  const ValueKind& valueKind = ValueKind::of(kind);
  if (valueKind.isDate() && input.metaType().id() == QMetaType::QString) {
    const QString text = input.toString().trimmed();
    if (text.isEmpty()) return QVariant();
    auto date = NaturalDate::myDateWithNaturalLanguageString(text);
    if (!date) return std::nullopt;
    return QVariant(*date);
  }
  bool ok = false;
  QVariant value = valueKind.coerced(input, &ok);
  if (!ok) return std::nullopt;
  return value;
}

}  // namespace AttributeInput
