#include "SqliteDatabase.h"

#include "SqliteStatement.h"

bool SqliteDatabase::open(const QString& path, int flags) {
  close();
  if (sqlite3_open_v2(path.toUtf8().constData(), &db_, flags, nullptr) != SQLITE_OK) {
    openError_ = db_ ? QString::fromUtf8(sqlite3_errmsg(db_)) : QStringLiteral("out of memory");
    close();
    return false;
  }
  sqlite3_extended_result_codes(db_, 0);
  return true;
}

void SqliteDatabase::close() {
  if (db_) sqlite3_close_v2(db_);
  db_ = nullptr;
}

bool SqliteDatabase::exec(const QString& sql) {
  return db_ && sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

QString SqliteDatabase::errorMessage() const { return db_ ? QString::fromUtf8(sqlite3_errmsg(db_)) : openError_; }

qint64 SqliteDatabase::userVersion() {
  SqliteStatement q(db_, QStringLiteral("PRAGMA user_version"));
  return q.step() == SQLITE_ROW ? q.int64(0) : -1;
}
