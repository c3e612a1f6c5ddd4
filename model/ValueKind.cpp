#include "ValueKind.h"

#include <QDateTime>
#include <QTimeZone>

const ValueKind& ValueKind::of(AttributeKind kind) {
  static const ValueKind kinds[] = {
      {AttributeKind::Text, Storage::Text, Order::Text},
      {AttributeKind::NumberText, Storage::Text, Order::Decimal},
      {AttributeKind::TimeText, Storage::Text, Order::Seconds},
      {AttributeKind::Date, Storage::Milliseconds, Order::Milliseconds},
      {AttributeKind::Integer, Storage::Integer, Order::Number},
      {AttributeKind::Boolean, Storage::Boolean, Order::Number},
  };
  return kinds[int(kind)];
}

QVariant ValueKind::coerced(const QVariant& value, bool* ok) const {
  *ok = true;
  if (!value.isValid() || value.isNull()) return {};
  switch (storage_) {
    case Storage::Text:
      if (value.metaType().id() == QMetaType::QDateTime) return value.toDateTime().toUTC().toString(Qt::ISODate);
      if (!value.canConvert<QString>()) break;
      return value.toString();
    case Storage::Milliseconds: {
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
    case Storage::Integer: {
      bool converted = false;
      const qint64 n = value.metaType().id() == QMetaType::QString ? value.toString().trimmed().toLongLong(&converted)
                                                                 : value.toLongLong(&converted);
      if (!converted) break;
      return n;
    }
    case Storage::Boolean: {
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
