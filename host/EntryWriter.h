#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

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
  // Writes only the attributes at these schema indexes (sorted) to the saved row. 1 when written,
  // 0 when the file holds no such entry, -1 on error.
  int updateAttributes(const Entry& entry, const std::vector<int>& indexes);
  // Replaces the saved tracks and links of the entry with the ones it holds.
  bool writeRelationships(Entry& entry);
  bool remove(qint64 uid);

 private:
  sqlite3* db_;
  QString prefix_;
  QHash<QString, std::shared_ptr<SqliteStatement>> updates_;  // by the list of columns they set
  std::unique_ptr<SqliteStatement> upsert_, deleteTracks_, deleteLinks_, insertTrack_, insertLink_, deleteEntry_,
      deleteMemberships_;
};
