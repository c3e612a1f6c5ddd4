#pragma once

#include "SqliteDatabase.h"

// BEGIN IMMEDIATE on construction; rolls back unless commit() succeeded.
class SqliteTransaction {
 public:
  explicit SqliteTransaction(SqliteDatabase& db) : db_(db), open_(db.exec(QStringLiteral("BEGIN IMMEDIATE"))) {}
  ~SqliteTransaction() {
    if (open_) db_.exec(QStringLiteral("ROLLBACK"));
  }
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;

  bool isOpen() const { return open_; }
  bool commit() {
    if (!open_ || !db_.exec(QStringLiteral("COMMIT"))) return false;
    open_ = false;
    return true;
  }

 private:
  SqliteDatabase& db_;
  bool open_;
};
