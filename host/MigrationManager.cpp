#include "MigrationManager.h"

#include "EntityMigrationPolicy.h"
#include "Entry.h"
#include "EntryWriter.h"
#include "ModelKeys.h"
#include "SqliteDatabase.h"
#include "SqliteStatement.h"
#include "SqlValue.h"
#include "SqliteTransaction.h"
#include "StoreSchema.h"
#include "ValueKind.h"

#include <QDateTime>
#include <QTimeZone>

namespace {
const QStringList version4Tables = {"entries", "tracks", "links", "collections", "collection_entries"};

// Version 4 counted dates in seconds from 2001-01-01 UTC.
QDateTime version4Date(double seconds) {
  static const qint64 referenceMs = QDateTime(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc()).toMSecsSinceEpoch();
  return QDateTime::fromMSecsSinceEpoch(referenceMs + qint64(seconds * 1000.0), QTimeZone::utc());
}

// Copies every column of the row whose name is an attribute of the object.
void copyRow(const SqliteStatement& q, ManagedObject& object, int firstColumn) {
  for (int c = firstColumn; c < q.columnCount(); ++c) {
    const QString name = q.columnName(c);
    const int index = object.schema().indexOf(name);
    if (index < 0 || q.isNull(c)) continue;
    const AttributeKind kind = object.schema().attributes()[index].kind;
    object.loadValueAt(index, ValueKind::of(kind).isDate() ? QVariant(version4Date(q.real(c))) : SqlValue::read(q, c, kind));
  }
}
}  // namespace

MigrationManager::MigrationManager(SqliteDatabase& db, std::shared_ptr<EntityMigrationPolicy> policy)
    : db_(db), policy_(policy ? std::move(policy) : std::make_shared<EntityMigrationPolicy>()) {}

MigrationManager::~MigrationManager() = default;

bool MigrationManager::hasSourceForDestination(const Entry& destination) const {
  return sources_.contains(destination.uid());
}

std::vector<std::unique_ptr<Track>> MigrationManager::takeTracksFor(const Entry& destination) {
  auto it = tracks_.find(destination.uid());
  if (it == tracks_.end()) return {};
  auto taken = std::move(it->second);
  tracks_.erase(it);
  return taken;
}

std::vector<std::unique_ptr<Link>> MigrationManager::takeLinksFor(const Entry& destination) {
  auto it = links_.find(destination.uid());
  if (it == links_.end()) return {};
  auto taken = std::move(it->second);
  links_.erase(it);
  return taken;
}

bool MigrationManager::createDestinationInstances(QString* error) {
  auto failed = [&](const QString& what) {
    if (error) *error = what + QStringLiteral(": ") + db_.errorMessage();
    return false;
  };
  SqliteStatement entries(db_.handle(), QStringLiteral("SELECT * FROM v4_entries ORDER BY uid"));
  if (!entries.isValid()) return failed(QStringLiteral("reading version-4 entries"));
  int rc;
  while ((rc = entries.step()) == SQLITE_ROW) {
    auto entry = std::make_unique<Entry>(entries.int64(0));
    copyRow(entries, *entry, 1);
    sources_.insert(entry->uid(), true);
    destinations_.push_back(std::move(entry));
  }
  if (rc != SQLITE_DONE) return failed(QStringLiteral("reading version-4 entries"));

  SqliteStatement tracks(db_.handle(), QStringLiteral("SELECT entry_uid,* FROM v4_tracks ORDER BY entry_uid,id"));
  if (!tracks.isValid()) return failed(QStringLiteral("reading version-4 tracks"));
  while ((rc = tracks.step()) == SQLITE_ROW) {
    auto track = std::make_unique<Track>();
    copyRow(tracks, *track, 1);
    tracks_[tracks.int64(0)].push_back(std::move(track));
  }
  if (rc != SQLITE_DONE) return failed(QStringLiteral("reading version-4 tracks"));

  SqliteStatement links(db_.handle(), QStringLiteral("SELECT entry_uid,* FROM v4_links ORDER BY entry_uid,id"));
  if (!links.isValid()) return failed(QStringLiteral("reading version-4 links"));
  while ((rc = links.step()) == SQLITE_ROW) {
    auto link = std::make_unique<Link>();
    copyRow(links, *link, 1);
    auto& list = links_[links.int64(0)];
    link->setPrimitiveValue(QStringLiteral("position"), qint64(list.size()));  // version 4 kept links in insertion order
    list.push_back(std::move(link));
  }
  if (rc != SQLITE_DONE) return failed(QStringLiteral("reading version-4 links"));
  return true;
}

bool MigrationManager::createRelationships(QString* error) {
  const EntityMapping mapping{QStringLiteral("CDToCD"), ModelKeys::entityCD, ModelKeys::entityCD};
  for (auto& entry : destinations_)
    if (!policy_->createRelationshipsForDestinationInstance(*entry, mapping, *this, error)) return false;
  return true;
}

bool MigrationManager::writeDestination(QString* error) {
  auto failed = [&]() {
    if (error) *error = db_.errorMessage();
    return false;
  };
  // The entries are made in the current form, but this step ends at version 5, which later steps
  // build on: they are written to scratch tables of the current form and copied into the frozen
  // version-5 tables, every column version 5 has.
  const QString scratch = QStringLiteral("new_");
  for (const QString& sql : StoreSchema::createStatements(scratch) + StoreSchema::version5CreateStatements())
    if (!db_.exec(sql)) return failed();
  {
    EntryWriter writer(db_.handle(), scratch);
    for (auto& entry : destinations_) {
      if (!writer.writeAttributes(*entry) || !writer.writeRelationships(*entry)) {
        if (error) *error = QStringLiteral("writing entry %1: %2").arg(entry->uid()).arg(db_.errorMessage());
        return false;
      }
    }
  }
  for (const QString& table : {QStringLiteral("entries"), QStringLiteral("tracks"), QStringLiteral("links")}) {
    QStringList columns;
    SqliteStatement info(db_.handle(), QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table));
    while (info.step() == SQLITE_ROW) columns << StoreSchema::quoted(info.text(0));
    const QString list = columns.join(QLatin1Char(','));
    if (columns.isEmpty() ||
        !db_.exec(QStringLiteral("INSERT INTO %1(%2) SELECT %2 FROM %3%1").arg(table, list, scratch)) ||
        !db_.exec(QStringLiteral("DROP TABLE %1%2").arg(scratch, table)))
      return failed();
  }
  for (const QString& table : {QStringLiteral("collections"), QStringLiteral("collection_entries"),
                               QStringLiteral("meta"), QStringLiteral("entry_revisions")})
    if (!db_.exec(QStringLiteral("DROP TABLE %1%2").arg(scratch, table))) return failed();
  const QStringList copy = {
      QStringLiteral("INSERT INTO collections(id,name,position) SELECT id,name,id FROM v4_collections"),
      QStringLiteral("INSERT OR IGNORE INTO collection_entries(collection_id,entry_uid,position) "
                     "SELECT collection_id,entry_uid,rowid FROM v4_collection_entries"),
  };
  for (const QString& sql : copy)
    if (!db_.exec(sql)) return failed();
  return true;
}

bool MigrationManager::migrate(QString* error) {
  for (const QString& table : version4Tables) {
    if (!db_.exec(QStringLiteral("ALTER TABLE %1 RENAME TO v4_%1").arg(table))) {
      if (error) *error = QStringLiteral("the version-4 table %1 is missing").arg(table);
      return false;
    }
  }
  if (!createDestinationInstances(error) || !createRelationships(error) || !writeDestination(error)) return false;
  for (const QString& table : version4Tables) {
    if (!db_.exec(QStringLiteral("DROP TABLE v4_%1").arg(table))) {
      if (error) *error = db_.errorMessage();
      return false;
    }
  }
  return true;
}
