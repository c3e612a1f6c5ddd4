#include "EntryWriter.h"

#include "Entry.h"
#include "SqlValue.h"
#include "SqliteStatement.h"
#include "StoreSchema.h"

static QString placeholders(int n) {
  QString s;
  for (int i = 0; i < n; ++i) s += i ? QStringLiteral(",?") : QStringLiteral("?");
  return s;
}

EntryWriter::EntryWriter(sqlite3* db, const QString& p) : db_(db), prefix_(p) {
  const auto& cd = EntitySchema::cd();
  QStringList updates;
  for (const auto& a : cd.attributes())
    updates << StoreSchema::quoted(a.key) + QStringLiteral("=excluded.") + StoreSchema::quoted(a.key);
  upsert_ = std::make_unique<SqliteStatement>(
      db, QStringLiteral("INSERT INTO %1entries (uid,%2) VALUES (?,%3) ON CONFLICT(uid) DO UPDATE SET %4")
              .arg(p, StoreSchema::columnList(cd), placeholders(int(cd.attributes().size())),
                   updates.join(QLatin1Char(','))));
  deleteTracks_ = std::make_unique<SqliteStatement>(db, QStringLiteral("DELETE FROM %1tracks WHERE entry_uid=?").arg(p));
  deleteLinks_ = std::make_unique<SqliteStatement>(db, QStringLiteral("DELETE FROM %1links WHERE entry_uid=?").arg(p));
  insertTrack_ = std::make_unique<SqliteStatement>(
      db, QStringLiteral("INSERT INTO %1tracks (entry_uid,%2) VALUES (?,%3)")
              .arg(p, StoreSchema::columnList(EntitySchema::track()),
                   placeholders(int(EntitySchema::track().attributes().size()))));
  insertLink_ = std::make_unique<SqliteStatement>(
      db, QStringLiteral("INSERT INTO %1links (entry_uid,%2) VALUES (?,%3)")
              .arg(p, StoreSchema::columnList(EntitySchema::link()),
                   placeholders(int(EntitySchema::link().attributes().size()))));
  deleteEntry_ = std::make_unique<SqliteStatement>(db, QStringLiteral("DELETE FROM %1entries WHERE uid=?").arg(p));
  deleteMemberships_ =
      std::make_unique<SqliteStatement>(db, QStringLiteral("DELETE FROM %1collection_entries WHERE entry_uid=?").arg(p));
}

EntryWriter::~EntryWriter() = default;

bool EntryWriter::isValid() const {
  return upsert_->isValid() && deleteTracks_->isValid() && deleteLinks_->isValid() && insertTrack_->isValid() &&
         insertLink_->isValid() && deleteEntry_->isValid() && deleteMemberships_->isValid();
}

static void bindAttributes(SqliteStatement& s, int first, const ManagedObject& object) {
  const auto& attributes = object.schema().attributes();
  for (int i = 0; i < int(attributes.size()); ++i) SqlValue::bind(s, first + i, attributes[i].kind, object.valueAt(i));
}

bool EntryWriter::writeAttributes(const Entry& entry) {
  upsert_->bind(1, entry.uid());
  bindAttributes(*upsert_, 2, entry);
  return upsert_->run();
}

int EntryWriter::updateAttributes(const Entry& entry, const std::vector<int>& indexes) {
  const auto& attributes = entry.schema().attributes();
  QStringList columns;
  for (int i : indexes) columns << StoreSchema::quoted(attributes[size_t(i)].key) + QStringLiteral("=?");
  const QString set = columns.join(QLatin1Char(','));
  auto& update = updates_[set];
  if (!update) {
    // With nothing to set (only tracks or links changed) the statement still tells whether the row is there.
    update = std::make_shared<SqliteStatement>(db_, QStringLiteral("UPDATE %1entries SET %2 WHERE uid=?")
                                                        .arg(prefix_, set.isEmpty() ? QStringLiteral("uid=uid") : set));
    if (!update->isValid()) return -1;
  }
  int at = 1;
  for (int i : indexes) SqlValue::bind(*update, at++, attributes[size_t(i)].kind, entry.valueAt(i));
  update->bind(at, entry.uid());
  if (!update->run()) return -1;
  return sqlite3_changes(db_) > 0 ? 1 : 0;
}

bool EntryWriter::writeRelationships(Entry& entry) {
  deleteTracks_->bind(1, entry.uid());
  deleteLinks_->bind(1, entry.uid());
  if (!deleteTracks_->run() || !deleteLinks_->run()) return false;
  for (const auto& track : entry.tracksSet()) {
    insertTrack_->bind(1, entry.uid());
    bindAttributes(*insertTrack_, 2, *track);
    if (!insertTrack_->run()) return false;
  }
  for (const auto& link : entry.linksSet()) {
    insertLink_->bind(1, entry.uid());
    bindAttributes(*insertLink_, 2, *link);
    if (!insertLink_->run()) return false;
  }
  return true;
}

bool EntryWriter::remove(qint64 uid) {
  for (auto* s : {deleteTracks_.get(), deleteLinks_.get(), deleteEntry_.get(), deleteMemberships_.get()}) {
    s->bind(1, uid);
    if (!s->run()) return false;
  }
  return true;
}
