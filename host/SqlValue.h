#pragma once

#include "AttributeKind.h"

#include <QVariant>

class SqliteStatement;

// Binds and reads attribute values in the store's columns the way their kind's storage says:
// dates as milliseconds since 1970 UTC, booleans as 0/1, texts as text.
namespace SqlValue {
void bind(SqliteStatement& statement, int index, AttributeKind kind, const QVariant* value);
QVariant read(const SqliteStatement& statement, int column, AttributeKind kind);
}  // namespace SqlValue
