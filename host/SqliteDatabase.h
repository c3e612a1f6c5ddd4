#pragma once

#include <QString>
#include <sqlite3.h>

// An open SQLite connection, closed on destruction.
class SqliteDatabase {
 public:
  SqliteDatabase() = default;
  ~SqliteDatabase() { close(); }
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  // flags: SQLITE_OPEN_READWRITE, SQLITE_OPEN_CREATE, ...; false with errorMessage() set.
  bool open(const QString& path, int flags);
  void close();
  sqlite3* handle() const { return db_; }
  bool exec(const QString& sql);
  QString errorMessage() const;
  int errorCode() const { return db_ ? sqlite3_errcode(db_) : SQLITE_CANTOPEN; }
  qint64 userVersion();
  // A copy of the whole database as this connection sees it, write-ahead log included, in a new
  // file at path; false with the reason when it could not be written whole.
  bool backupTo(const QString& path, QString* error);

 private:
  sqlite3* db_ = nullptr;
  QString openError_;
};
