#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QVariant>
#include <sqlite3.h>

// A prepared statement, finalized on destruction. Binding and column indexes follow SQLite:
// bind from 1, columns from 0.
class SqliteStatement {
 public:
  SqliteStatement(sqlite3* db, const QString& sql);
  ~SqliteStatement();
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  bool isValid() const { return stmt_ != nullptr; }
  void bindNull(int i) { sqlite3_bind_null(stmt_, i); }
  void bind(int i, qint64 v) { sqlite3_bind_int64(stmt_, i, v); }
  void bind(int i, double v) { sqlite3_bind_double(stmt_, i, v); }
  void bind(int i, const QString& v);
  // SQLITE_ROW, SQLITE_DONE or an error code.
  int step();
  // step() until done; false on error.
  bool run();
  void reset();

  bool isNull(int col) const { return sqlite3_column_type(stmt_, col) == SQLITE_NULL; }
  qint64 int64(int col) const { return sqlite3_column_int64(stmt_, col); }
  double real(int col) const { return sqlite3_column_double(stmt_, col); }
  QString text(int col) const;
  // Valid until the next step, reset or column call on this statement.
  QByteArrayView utf8(int col) const {
    const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, col));
    return data ? QByteArrayView(data, sqlite3_column_bytes(stmt_, col)) : QByteArrayView();
  }
  int columnCount() const { return sqlite3_column_count(stmt_); }
  QString columnName(int col) const { return QString::fromUtf8(sqlite3_column_name(stmt_, col)); }

 private:
  sqlite3* db_;
  sqlite3_stmt* stmt_ = nullptr;
};
