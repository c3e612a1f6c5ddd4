#pragma once

#include <QString>
#include <memory>

class Entry;
class SqliteStatement;
struct sqlite3;

// Writes entries with their tracks and links to the current schema's tables, with statements
// prepared once per save. The caller owns the transaction.
class EntryWriter {
 public:
  explicit EntryWriter(sqlite3* db, const QString& tablePrefix = {});
  ~EntryWriter();

  bool isValid() const;
  bool writeAttributes(const Entry& entry);
  // Replaces the saved tracks and links of the entry with the ones it holds.
  bool writeRelationships(Entry& entry);
  bool remove(qint64 uid);

 private:
  std::unique_ptr<SqliteStatement> upsert_, deleteTracks_, deleteLinks_, insertTrack_, insertLink_, deleteEntry_,
      deleteMemberships_;
};
