#include "ManagedObject.h"

#include <QDateTime>
#include <QTimeZone>
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
  QVariant held = coerced(schema_->attributes()[index].kind, value, &ok);
  if (!ok) return false;
  loadValueAt(index, std::move(held));
  didChange(key, notify);
  return true;
}

QVariant ManagedObject::coerced(AttributeKind kind, const QVariant& value, bool* ok) {
  *ok = true;
  if (!value.isValid() || value.isNull()) return {};
  switch (kind) {
    case AttributeKind::Text:
    case AttributeKind::NumberText:
    case AttributeKind::TimeText:
      if (value.metaType().id() == QMetaType::QDateTime) return value.toDateTime().toUTC().toString(Qt::ISODate);
      if (!value.canConvert<QString>()) break;
      return value.toString();
    case AttributeKind::Date: {
      if (value.metaType().id() == QMetaType::QDateTime) {
        const QDateTime d = value.toDateTime();
        if (!d.isValid()) break;
        return d.toUTC();
      }
      if (value.metaType().id() == QMetaType::QString && value.toString().isEmpty()) return {};
      if (value.metaType().id() == QMetaType::QString) {
        QDateTime d = QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
        if (!d.isValid()) break;
        if (d.timeSpec() == Qt::LocalTime) d.setTimeZone(QTimeZone::utc());
        return d.toUTC();
      }
      break;
    }
    case AttributeKind::Integer: {
      bool converted = false;
      const qint64 n = value.metaType().id() == QMetaType::QString ? value.toString().trimmed().toLongLong(&converted)
                                                                 : value.toLongLong(&converted);
      if (!converted) break;
      return n;
    }
    case AttributeKind::Boolean: {
      if (value.metaType().id() == QMetaType::Bool) return value.toBool();
      if (value.metaType().id() == QMetaType::QString) {
        const QString s = value.toString().trimmed().toLower();
        if (s == "1" || s == "yes" || s == "true" || s == "on") return true;
        if (s == "0" || s == "no" || s == "false" || s == "off" || s.isEmpty()) return false;
        break;
      }
      bool converted = false;
      const qint64 n = value.toLongLong(&converted);
      if (!converted) break;
      return n != 0;
    }
  }
  *ok = false;
  return {};
}
