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

bool SqliteDatabase::backupTo(const QString& path, QString* error) {
  sqlite3* copy = nullptr;
  int rc = sqlite3_open_v2(path.toUtf8().constData(), &copy, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  if (rc == SQLITE_OK) {
    if (sqlite3_backup* backup = sqlite3_backup_init(copy, "main", db_, "main")) {
      // One step under one read lock, so the copy is a single consistent snapshot.
      const int step = sqlite3_backup_step(backup, -1);
      rc = sqlite3_backup_finish(backup);
      if (step != SQLITE_DONE) rc = step;
    } else {
      rc = sqlite3_errcode(copy);
    }
  }
  if (rc != SQLITE_OK && error) *error = QString::fromUtf8(sqlite3_errstr(rc));
  sqlite3_close_v2(copy);
  return rc == SQLITE_OK;
}
