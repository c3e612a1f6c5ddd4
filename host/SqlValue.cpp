#include "SqlValue.h"

#include "SqliteStatement.h"

#include <QDateTime>
#include <QTimeZone>

namespace SqlValue {

void bind(SqliteStatement& s, int i, AttributeKind kind, const QVariant* v) {
  if (!v || !v->isValid()) {
    s.bindNull(i);
    return;
  }
  switch (kind) {
    case AttributeKind::Date:
      s.bind(i, qint64(v->toDateTime().toMSecsSinceEpoch()));
      break;
    case AttributeKind::Integer:
      s.bind(i, qint64(v->toLongLong()));
      break;
    case AttributeKind::Boolean:
      s.bind(i, qint64(v->toBool() ? 1 : 0));
      break;
    default:
      s.bind(i, v->toString());
  }
}

QVariant read(const SqliteStatement& s, int col, AttributeKind kind) {
  if (s.isNull(col)) return {};
  switch (kind) {
    case AttributeKind::Date:
      return QDateTime::fromMSecsSinceEpoch(s.int64(col), QTimeZone::utc());
    case AttributeKind::Integer:
      return s.int64(col);
    case AttributeKind::Boolean:
      return s.int64(col) != 0;
    default:
      return s.text(col);
  }
}

}  // namespace SqlValue
