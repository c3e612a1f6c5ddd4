#include "SqlValue.h"

#include "SqliteStatement.h"
#include "ValueKind.h"

#include <QDateTime>
#include <QTimeZone>

namespace SqlValue {

void bind(SqliteStatement& s, int i, AttributeKind kind, const QVariant* v) {
  if (!v || !v->isValid()) {
    s.bindNull(i);
    return;
  }
  switch (ValueKind::of(kind).storage()) {
    case ValueKind::Storage::Milliseconds:
      s.bind(i, qint64(v->toDateTime().toMSecsSinceEpoch()));
      break;
    case ValueKind::Storage::Integer:
      s.bind(i, qint64(v->toLongLong()));
      break;
    case ValueKind::Storage::Boolean:
      s.bind(i, qint64(v->toBool() ? 1 : 0));
      break;
    case ValueKind::Storage::Text:
      s.bind(i, v->toString());
  }
}

QVariant read(const SqliteStatement& s, int col, AttributeKind kind) {
  if (s.isNull(col)) return {};
  switch (ValueKind::of(kind).storage()) {
    case ValueKind::Storage::Milliseconds:
      return QDateTime::fromMSecsSinceEpoch(s.int64(col), QTimeZone::utc());
    case ValueKind::Storage::Integer:
      return s.int64(col);
    case ValueKind::Storage::Boolean:
      return s.int64(col) != 0;
    case ValueKind::Storage::Text:
      break;
  }
  return s.text(col);
}

}  // namespace SqlValue
