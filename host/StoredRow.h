#pragma once

#include <QByteArrayView>
#include <QtGlobal>

class EntitySchema;
class SqliteStatement;

// A saved track or link row read straight from the file, its columns in schema order. It lives
// only for the duration of the visit that hands it out.
class StoredRow {
 public:
  StoredRow(const SqliteStatement& statement, const EntitySchema& schema) : statement_(statement), schema_(schema) {}

  const EntitySchema& schema() const { return schema_; }
  bool isNull(int attribute) const;
  qint64 integer(int attribute) const;
  // The value as the file holds it, UTF-8; valid until the next call on this row.
  QByteArrayView utf8(int attribute) const;

 private:
  const SqliteStatement& statement_;
  const EntitySchema& schema_;
};
