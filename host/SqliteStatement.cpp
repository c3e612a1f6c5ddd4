#include "SqliteStatement.h"

#include <cstdio>

SqliteStatement::SqliteStatement(sqlite3* db, const QString& sql) : db_(db) {
  const QByteArray utf8 = sql.toUtf8();
  if (sqlite3_prepare_v2(db, utf8.constData(), int(utf8.size()), &stmt_, nullptr) != SQLITE_OK) {
    std::fprintf(stderr, "SQL error: %s in %s\n", sqlite3_errmsg(db), utf8.constData());
    stmt_ = nullptr;
  }
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(stmt_); }

void SqliteStatement::bind(int i, const QString& v) {
  sqlite3_bind_text16(stmt_, i, v.utf16(), int(v.size() * sizeof(char16_t)), SQLITE_TRANSIENT);
}

int SqliteStatement::step() { return stmt_ ? sqlite3_step(stmt_) : SQLITE_MISUSE; }

bool SqliteStatement::run() {
  int rc;
  while ((rc = step()) == SQLITE_ROW) {
  }
  if (rc != SQLITE_DONE) std::fprintf(stderr, "SQL error: %s\n", sqlite3_errmsg(db_));
  reset();
  return rc == SQLITE_DONE;
}

void SqliteStatement::reset() {
  if (!stmt_) return;
  sqlite3_reset(stmt_);
  sqlite3_clear_bindings(stmt_);
}

QString SqliteStatement::text(int col) const {
  // The file holds UTF-8; Qt's decoder is faster than having SQLite convert to UTF-16 first.
  const QByteArrayView bytes = utf8(col);
  return bytes.data() ? QString::fromUtf8(bytes) : QString();
}
