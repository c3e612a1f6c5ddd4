#include "ManagedObject.h"

#include "ValueKind.h"

#include <algorithm>
#include <cstdio>

QVariant ManagedObject::value(const QString& key) const {
  const int index = schema_->indexOf(key);
  if (index >= 0) {
    const QVariant* v = valueAt(index);
    return v ? *v : QVariant();
  }
  if (schema_->isDerived(key)) return derivedValue(key);
  std::fprintf(stderr, "Unknown key \"%s\" of entity %s\n", qPrintable(key), qPrintable(schema_->entityName()));
  return {};
}

QVariant ManagedObject::derivedValue(const QString&) const { return {}; }

bool ManagedObject::setValue(const QString& key, const QVariant& value) { return write(key, value, true); }

bool ManagedObject::setPrimitiveValue(const QString& key, const QVariant& value) { return write(key, value, false); }

const QVariant* ManagedObject::valueAt(int index) const {
  auto it = std::lower_bound(values_.begin(), values_.end(), index, [](const Slot& s, int i) { return s.index < i; });
  return it != values_.end() && it->index == index ? &it->value : nullptr;
}

void ManagedObject::loadValueAt(int index, QVariant value) {
  stamp_ = nextStamp();
  auto it = std::lower_bound(values_.begin(), values_.end(), index, [](const Slot& s, int i) { return s.index < i; });
  if (!value.isValid()) {
    if (it != values_.end() && it->index == index) values_.erase(it);
  } else if (it != values_.end() && it->index == index) {
    it->value = std::move(value);
  } else {
    values_.insert(it, Slot{index, std::move(value)});
  }
}

bool ManagedObject::write(const QString& key, const QVariant& value, bool notify) {
  const int index = schema_->indexOf(key);
  if (index < 0) return false;
  bool ok = true;
  QVariant held = ValueKind::of(schema_->attributes()[index].kind).coerced(value, &ok);
  if (!ok) return false;
  loadValueAt(index, std::move(held));
  didChange(key, notify);
  return true;
}
