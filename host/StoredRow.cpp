#include "StoredRow.h"

#include "SqliteStatement.h"

bool StoredRow::isNull(int attribute) const { return statement_.isNull(attribute); }

qint64 StoredRow::integer(int attribute) const { return statement_.int64(attribute); }

QByteArrayView StoredRow::utf8(int attribute) const { return statement_.utf8(attribute); }
