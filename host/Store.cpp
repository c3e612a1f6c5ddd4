#include "Store.h"

#include "CdKeys.h"
#include "Entry.h"
#include "EntryWriter.h"
#include "ModelKeys.h"
#include "SqlValue.h"
#include "SqliteStatement.h"
#include "StoredRow.h"
#include "SqliteTransaction.h"
#include "StoreSchema.h"
#include "StoreUpgrader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <sqlite3.h>
#include <utility>

namespace {
constexpr qint64 uidBlockSize = 1000;
constexpr int busyTimeoutMs = 10000;
// meta keys: the file's change number, taken by every save, and the one of the last save that
// changed the collections.
const QString revisionKey = QStringLiteral("revision");
const QString collectionsRevisionKey = QStringLiteral("collectionsRevision");

// Titles outside printable ASCII, whose case SQLite does not fold as Qt does.
const QString unusualTitle = QStringLiteral("title GLOB '*[^ -~]*'");

bool hasSqliteHeader(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return false;
  const QByteArray head = f.read(16);
  return head.isEmpty() || head == QByteArray("SQLite format 3", 16);
}

// The row's columns from firstColumn on are the object's attributes, in schema order.
void loadRow(const SqliteStatement& q, ManagedObject& object, int firstColumn) {
  const auto& attributes = object.schema().attributes();
  // Entries hold a handful of their sixty-odd attributes: reserve only what the row has.
  int present = 0;
  for (int i = 0; i < int(attributes.size()); ++i) present += q.isNull(i + firstColumn) ? 0 : 1;
  object.reserveValues(present);
  for (int i = 0; i < int(attributes.size()); ++i)
    if (!q.isNull(i + firstColumn)) object.loadValueAt(i, SqlValue::read(q, i + firstColumn, attributes[i].kind));
}

template <typename T>
std::vector<std::unique_ptr<T>> readObjects(SqliteStatement& q, qint64 uid) {
  std::vector<std::unique_ptr<T>> objects;
  q.bind(1, uid);
  while (q.step() == SQLITE_ROW) {
    objects.push_back(std::make_unique<T>());
    loadRow(q, *objects.back(), 0);
  }
  q.reset();
  return objects;
}
}  // namespace

Store::Store() = default;

Store::~Store() {
  entryQuery_.reset();
  trackQuery_.reset();
  linkQuery_.reset();
  trackRowsQuery_.reset();
  linkRowsQuery_.reset();
}

void Store::setMigrationPolicy(std::shared_ptr<EntityMigrationPolicy> policy) { policy_ = std::move(policy); }

Store::OpenResult Store::prepareFile(const QString& path) {
  const bool memory = path == QLatin1String(":memory:");
  const QFileInfo info(path);
  if (!memory && info.exists()) {
    if (info.isDir()) return {OpenStatus::CannotOpen, QStringLiteral("%1 is a folder, not a catalogue.").arg(path)};
    if (!info.isReadable()) return {OpenStatus::CannotOpen, QStringLiteral("%1 cannot be read.").arg(path)};
    if (!hasSqliteHeader(path))
      return {OpenStatus::NotACatalogue, QStringLiteral("%1 is not a Discary catalogue.").arg(path)};
    if (!info.isWritable() || !QFileInfo(info.absolutePath()).isWritable())
      return {OpenStatus::ReadOnly,
              QStringLiteral("%1 is read-only; Discary needs to write to its catalogue and its folder.").arg(path)};
  } else if (!memory && !QDir().mkpath(info.absolutePath())) {
    return {OpenStatus::CannotOpen, QStringLiteral("Cannot create the folder %1.").arg(info.absolutePath())};
  }
  if (!db_.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX))
    return {OpenStatus::CannotOpen, QStringLiteral("Cannot open %1: %2").arg(path, db_.errorMessage())};
  sqlite3_busy_timeout(db_.handle(), busyTimeoutMs);
  return {};
}

Store::OpenResult Store::open(const QString& path, Loading loading) {
  path_ = path;
  OpenResult result = prepareFile(path);
  if (!result.ok()) return result;

  const qint64 version = db_.userVersion();
  if (version < 0) {
    const bool busy = db_.errorCode() == SQLITE_BUSY;
    result = {busy ? OpenStatus::Busy : OpenStatus::NotACatalogue,
              busy ? QStringLiteral("%1 is locked by another program.").arg(path)
                   : QStringLiteral("%1 is not a Discary catalogue: %2").arg(path, db_.errorMessage())};
  } else if (version > StoreSchema::currentVersion) {
    result = {OpenStatus::TooNew,
              QStringLiteral("%1 was written by a newer version of Discary (catalogue version %2); this version reads "
                             "up to catalogue version %3.")
                  .arg(path)
                  .arg(version)
                  .arg(StoreSchema::currentVersion)};
  } else if (version == 0) {
    SqliteStatement tables(db_.handle(), QStringLiteral("SELECT count(*) FROM sqlite_master"));
    if (tables.step() != SQLITE_ROW) {
      result = {OpenStatus::NotACatalogue, QStringLiteral("%1 is not a Discary catalogue.").arg(path)};
    } else if (tables.int64(0) > 0) {
      result = {OpenStatus::NotACatalogue, QStringLiteral("%1 is an SQLite file but not a Discary catalogue.").arg(path)};
    } else {
      SqliteTransaction t(db_);
      bool ok = t.isOpen();
      for (const QString& sql : StoreSchema::createStatements()) ok = ok && db_.exec(sql);
      ok = ok && db_.exec(QStringLiteral("PRAGMA user_version=%1").arg(StoreSchema::currentVersion)) && t.commit();
      if (!ok) result = {OpenStatus::CannotOpen, QStringLiteral("Cannot create %1: %2").arg(path, db_.errorMessage())};
    }
  } else if (version < StoreSchema::currentVersion) {
    result = upgrade(version);
  }
  if (result.ok()) {
    db_.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    db_.exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
    db_.exec(QStringLiteral("PRAGMA mmap_size=1073741824"));
    // Finding an entry by its title without reading them all (entriesTitled) needs these; not part
    // of the file's layout: made by the first open that lacks them, whatever the version.
    db_.exec(QStringLiteral("CREATE INDEX IF NOT EXISTS entries_title ON entries(title COLLATE NOCASE)"));
    db_.exec(QStringLiteral("CREATE INDEX IF NOT EXISTS entries_unusual_title ON entries(title) WHERE %1").arg(unusualTitle));
    SqliteStatement indexed(db_.handle(), QStringLiteral("SELECT 1 FROM sqlite_master WHERE name='entries_unusual_title'"));
    unusualTitlesIndexed_ = indexed.step() == SQLITE_ROW;
    // One snapshot: every entry read is as of the change number read with it.
    const bool began = db_.exec(QStringLiteral("BEGIN"));
    seenRevision_ = metaNumber(revisionKey);
    allLoaded_ = loading == Loading::AllEntries;
    const bool loaded = (allLoaded_ ? loadEntries() : prepareRelationshipQueries()) && loadCollections();
    if (began) db_.exec(QStringLiteral("COMMIT"));
    if (!loaded)
      result = {OpenStatus::Damaged, QStringLiteral("%1 could not be read: %2").arg(path, db_.errorMessage())};
    for (Entry* e : entries_) e->setRevision(seenRevision_);
    dataVersion_ = dataVersion();
  }
  if (!result.ok()) db_.close();
  return result;
}

Store::OpenResult Store::upgrade(qint64 version) {
  const StoreUpgrader::Result result = StoreUpgrader(db_, path_, policy_).upgrade(version);
  OpenResult opened;
  switch (result.outcome) {
    case StoreUpgrader::Outcome::Done: return {};
    case StoreUpgrader::Outcome::TooOld:
      opened = {OpenStatus::TooOld, QStringLiteral("%1 is a catalogue of version %2, which this Discary cannot read.")
                                        .arg(path_)
                                        .arg(result.version)};
      break;
    case StoreUpgrader::Outcome::Damaged:
      opened = {OpenStatus::Damaged, QStringLiteral("%1 is damaged and was not converted.").arg(path_)};
      break;
    case StoreUpgrader::Outcome::BackupFailed:
      opened = {OpenStatus::MigrationFailed,
                QStringLiteral("Cannot back up %1 before converting it: %2").arg(path_, result.error)};
      break;
    case StoreUpgrader::Outcome::StepFailed:
      opened = {OpenStatus::MigrationFailed,
                result.version == version
                    ? QStringLiteral("%1 could not be converted to the current version and was left as it was: %2")
                          .arg(path_, result.error)
                    : QStringLiteral("%1 could not be converted past version %2 and was left at that version: %3")
                          .arg(path_)
                          .arg(result.version)
                          .arg(result.error)};
      break;
  }
  // Earlier steps stay done; say where the file as it was first found is kept.
  if (result.version != version)
    opened.message += QStringLiteral(" Its version-%1 form is kept as %2.")
                          .arg(version)
                          .arg(StoreUpgrader::backupPath(path_, version));
  return opened;
}

bool Store::loadEntries() {
  SqliteStatement q(db_.handle(),
                    QStringLiteral("SELECT uid,%1 FROM entries ORDER BY uid").arg(StoreSchema::columnList(EntitySchema::cd())));
  if (!q.isValid()) return false;
  int rc;
  while ((rc = q.step()) == SQLITE_ROW) {
    auto entry = std::make_unique<Entry>(q.int64(0), this);
    loadRow(q, *entry, 1);
    entries_.push_back(entry.get());
    byUID_.emplace(entry->uid(), std::move(entry));
  }
  return rc == SQLITE_DONE && prepareRelationshipQueries();
}

bool Store::prepareRelationshipQueries() {
  trackQuery_ = std::make_unique<SqliteStatement>(
      db_.handle(), QStringLiteral("SELECT %1 FROM tracks WHERE entry_uid=? ORDER BY id")
                        .arg(StoreSchema::columnList(EntitySchema::track())));
  linkQuery_ = std::make_unique<SqliteStatement>(
      db_.handle(),
      QStringLiteral("SELECT %1 FROM links WHERE entry_uid=? ORDER BY id").arg(StoreSchema::columnList(EntitySchema::link())));
  return trackQuery_->isValid() && linkQuery_->isValid();
}

Entry* Store::readEntry(qint64 uid) {
  if (allLoaded_ || !isOpen() || deleted_.contains(uid)) return nullptr;
  if (!entryQuery_)
    entryQuery_ = std::make_unique<SqliteStatement>(
        db_.handle(), QStringLiteral("SELECT coalesce((SELECT revision FROM entry_revisions WHERE uid=?1),0),%1 "
                                     "FROM entries WHERE uid=?1")
                          .arg(StoreSchema::columnList(EntitySchema::cd())));
  entryQuery_->bind(1, uid);
  Entry* read = nullptr;
  if (entryQuery_->step() == SQLITE_ROW) {
    auto entry = std::make_unique<Entry>(uid, this);
    loadRow(*entryQuery_, *entry, 1);
    // The change number of the save that wrote the row: refresh() then skips what it already holds.
    entry->setRevision(entryQuery_->int64(0));
    read = entry.get();
    byUID_.emplace(uid, std::move(entry));
    listEntry(read);
  }
  entryQuery_->reset();
  return read;
}

void Store::loadRemainingEntries() {
  allLoaded_ = true;
  if (!isOpen()) return;
  readInOneSnapshot([this] {
    const qint64 revision = metaNumber(revisionKey);
    SqliteStatement q(db_.handle(), QStringLiteral("SELECT uid,%1 FROM entries ORDER BY uid")
                                        .arg(StoreSchema::columnList(EntitySchema::cd())));
    while (q.step() == SQLITE_ROW) {
      const qint64 uid = q.int64(0);
      // Those in memory may hold unsaved changes; those deleted and not saved yet stay deleted.
      if (byUID_.count(uid) || deleted_.contains(uid)) continue;
      auto entry = std::make_unique<Entry>(uid, this);
      loadRow(q, *entry, 1);
      entry->setRevision(revision);
      byUID_.emplace(uid, std::move(entry));
    }
  });
  entries_.clear();
  entries_.reserve(byUID_.size());
  for (const auto& [uid, entry] : byUID_) entries_.push_back(entry.get());
  std::sort(entries_.begin(), entries_.end(), [](const Entry* a, const Entry* b) { return a->uid() < b->uid(); });
  // Members were read without looking their entries up: drop any the file has no entry for.
  for (Collection* c : collections_) {
    std::erase_if(c->members_, [this](qint64 uid) { return !byUID_.count(uid); });
    for (auto it = c->memberSet_.begin(); it != c->memberSet_.end();)
      it = byUID_.count(*it) ? std::next(it) : c->memberSet_.erase(it);
  }
}

const std::vector<Entry*>& Store::entries() const {
  // Reading the rest fills a cache: the catalogue as seen from outside stays the same.
  if (!allLoaded_) const_cast<Store*>(this)->loadRemainingEntries();
  return entries_;
}

void Store::listEntry(Entry* entry) {
  // Fresh uids are the highest; others go to their place.
  if (entries_.empty() || entries_.back()->uid() < entry->uid())
    entries_.push_back(entry);
  else
    entries_.insert(std::lower_bound(entries_.begin(), entries_.end(), entry->uid(),
                                     [](const Entry* e, qint64 u) { return e->uid() < u; }),
                    entry);
}

std::vector<Entry*> Store::entriesTitled(const QString& title, Qt::CaseSensitivity cs) {
  std::vector<Entry*> found;
  auto matches = [&](const QString& text) { return text.compare(title, cs) == 0; };
  if (allLoaded_ || !isOpen()) {
    for (Entry* e : entries_)
      if (matches(e->stringValue(CdKeys::title))) found.push_back(e);
    return found;
  }
  // Entries in memory are judged by their titles there, which may not be saved yet.
  std::vector<qint64> uids;
  for (const auto& [uid, e] : byUID_)
    if (matches(e->stringValue(CdKeys::title))) uids.push_back(uid);
  // The file's candidates, through the indexes on title: a superset the comparison above then
  // narrows. SQLite folds the case of ASCII letters only, and Qt folds some other letters to ASCII
  // ones (the Kelvin sign to k): ignoring case, the titles outside printable ASCII are candidates
  // too, and those equal to the folded text. An empty text matches the entries without a title.
  QString sql = QStringLiteral("SELECT uid,title FROM entries WHERE title=?1 COLLATE NOCASE OR title=?2 COLLATE NOCASE");
  if (title.isEmpty()) sql += QStringLiteral(" OR title IS NULL");
  // Left to itself, SQLite scans every title for these.
  if (cs == Qt::CaseInsensitive)
    sql += QStringLiteral(" UNION SELECT uid,title FROM entries %1 WHERE %2")
               .arg(unusualTitlesIndexed_ ? QStringLiteral("INDEXED BY entries_unusual_title") : QString(), unusualTitle);
  SqliteStatement q(db_.handle(), sql);
  q.bind(1, title);
  q.bind(2, title.toCaseFolded());
  while (q.step() == SQLITE_ROW)
    if (!byUID_.count(q.int64(0)) && !deleted_.contains(q.int64(0)) && matches(q.text(1))) uids.push_back(q.int64(0));
  std::sort(uids.begin(), uids.end());
  uids.erase(std::unique(uids.begin(), uids.end()), uids.end());
  for (qint64 uid : uids)
    if (Entry* e = entryWithUID(uid)) found.push_back(e);
  return found;
}

bool Store::loadCollections(OutsideChanges* changes) {
  SqliteStatement q(db_.handle(), QStringLiteral("SELECT id,name FROM collections ORDER BY position,id"));
  std::vector<Collection*> order;
  while (q.step() == SQLITE_ROW) {
    auto it = std::find_if(ownedCollections_.begin(), ownedCollections_.end(),
                           [&](const auto& c) { return c->id() == q.int64(0); });
    if (it == ownedCollections_.end()) {
      ownedCollections_.push_back(std::make_unique<Collection>(q.int64(0), q.text(1)));
      it = ownedCollections_.end() - 1;
    }
    (*it)->name_ = q.text(1);
    (*it)->members_.clear();
    (*it)->memberSet_.clear();
    order.push_back(it->get());
  }
  // Collections another process deleted stay alive for whoever still points at one.
  for (auto it = ownedCollections_.begin(); it != ownedCollections_.end();) {
    if (std::find(order.begin(), order.end(), it->get()) != order.end()) {
      ++it;
      continue;
    }
    if (changes) changes->removedCollections.push_back(it->get());
    collectionsDeletedElsewhere_.push_back(std::move(*it));
    it = ownedCollections_.erase(it);
  }
  collections_ = std::move(order);
  SqliteStatement m(db_.handle(),
                    QStringLiteral("SELECT collection_id,entry_uid FROM collection_entries ORDER BY collection_id,position"));
  Collection* current = nullptr;
  while (m.step() == SQLITE_ROW) {
    if (!current || current->id() != m.int64(0)) {
      auto it = std::find_if(collections_.begin(), collections_.end(), [&](Collection* c) { return c->id() == m.int64(0); });
      current = it == collections_.end() ? nullptr : *it;
    }
    // Opened on demand, members are taken as the file lists them (checked when all are read).
    const bool exists = allLoaded_ ? byUID_.count(m.int64(1)) > 0 : !deleted_.contains(m.int64(1));
    if (current && exists && !current->contains(m.int64(1))) {
      current->members_.push_back(m.int64(1));
      current->memberSet_.insert(m.int64(1));
    }
  }
  return m.isValid() && q.isValid();
}

qint64 Store::dataVersion() {
  // Moves only when another connection commits: this one's own saves leave it alone.
  SqliteStatement q(db_.handle(), QStringLiteral("PRAGMA data_version"));
  return q.step() == SQLITE_ROW ? q.int64(0) : -1;
}

qint64 Store::metaNumber(const QString& key) {
  SqliteStatement q(db_.handle(), QStringLiteral("SELECT value FROM meta WHERE key=?"));
  q.bind(1, key);
  return q.step() == SQLITE_ROW ? q.int64(0) : 0;
}

bool Store::setMetaNumber(const QString& key, qint64 value) {
  SqliteStatement q(db_.handle(), QStringLiteral("INSERT OR REPLACE INTO meta(key,value) VALUES(?,?)"));
  q.bind(1, key);
  q.bind(2, value);
  return q.run();
}

Entry* Store::entryWithUID(qint64 uid) const {
  auto it = byUID_.find(uid);
  if (it != byUID_.end()) return it->second.get();
  return allLoaded_ ? nullptr : const_cast<Store*>(this)->readEntry(uid);
}

qint64 Store::nextUID() {
  if (uidBlockNext_ >= uidBlockEnd_) {
    qint64 start = 1;
    {
      SqliteTransaction t(db_);
      SqliteStatement read(db_.handle(), QStringLiteral("SELECT max(coalesce((SELECT value FROM meta WHERE key='nextUID'),1),"
                                                        "coalesce((SELECT max(uid)+1 FROM entries),1),"
                                                        "coalesce((SELECT max(id)+1 FROM collections),1))"));
      if (read.step() == SQLITE_ROW) start = std::max<qint64>(1, read.int64(0));
      read.reset();
      SqliteStatement write(db_.handle(), QStringLiteral("INSERT OR REPLACE INTO meta(key,value) VALUES('nextUID',?)"));
      write.bind(1, start + uidBlockSize);
      if (!t.isOpen() || !write.run() || !t.commit()) {
        // No file to reserve in (or it is locked): stay unique within this process at least.
        start = std::max(start, uidBlockEnd_);
      }
    }
    start = std::max(start, uidBlockEnd_);
    uidBlockNext_ = start;
    uidBlockEnd_ = start + uidBlockSize;
  }
  return uidBlockNext_++;
}

Entry* Store::insertEntry() { return insertEntry(nextUID()); }

Entry* Store::insertEntry(qint64 uid) {
  if (entryWithUID(uid)) return nullptr;
  auto entry = std::make_unique<Entry>(uid, this);
  entry->adoptLoadedRelationships({}, {});
  Entry* raw = entry.get();
  listEntry(raw);
  byUID_.emplace(raw->uid(), std::move(entry));
  changed_.insert(raw->uid());
  relationshipsChanged_.insert(raw->uid());
  inserted_.insert(raw->uid());
  notify(raw, {});
  return raw;
}

void Store::deleteEntry(Entry* entry) {
  if (!entry) return;
  const qint64 uid = entry->uid();
  for (Collection* c : collections_) removeEntryFromCollection(entry, c);
  entries_.erase(std::remove(entries_.begin(), entries_.end(), entry), entries_.end());
  changed_.remove(uid);
  relationshipsChanged_.remove(uid);
  changedAttributes_.remove(uid);
  if (!inserted_.remove(uid)) deleted_.insert(uid);
  notify(nullptr, {});
  byUID_.erase(uid);
}

std::unique_ptr<Track> Store::newTrack() { return std::make_unique<Track>(); }

std::unique_ptr<Link> Store::newLink() { return std::make_unique<Link>(); }

void Store::entryDidChange(Entry& entry, const QString& key, bool notifyListeners) {
  changed_.insert(entry.uid());
  if (key == ModelKeys::tracksSet || key == ModelKeys::linksSet)
    relationshipsChanged_.insert(entry.uid());
  else if (const int index = entry.schema().indexOf(key); index >= 0)
    changedAttributes_[entry.uid()].insert(index);
  if (notifyListeners) notify(&entry, key);
}

void Store::loadRelationships(Entry& entry) {
  if (!trackQuery_ || deleted_.contains(entry.uid())) return;
  auto tracks = readObjects<Track>(*trackQuery_, entry.uid());
  auto links = readObjects<Link>(*linkQuery_, entry.uid());
  entry.adoptLoadedRelationships(std::move(tracks), std::move(links));
}

bool Store::forEachStoredRow(const Entry& entry, Relationship relationship,
                             const std::function<void(const StoredRow&)>& visit) {
  if (entry.relationshipsLoaded()) return false;
  if (!isOpen() || deleted_.contains(entry.uid())) return true;
  const bool tracks = relationship == Relationship::Tracks;
  const EntitySchema& schema = tracks ? EntitySchema::track() : EntitySchema::link();
  auto& query = tracks ? trackRowsQuery_ : linkRowsQuery_;
  if (!query)
    // Ties and missing positions keep the order of insertion, as in the entry's sorted sets.
    query = std::make_unique<SqliteStatement>(
        db_.handle(), QStringLiteral("SELECT %1 FROM %2 WHERE entry_uid=? ORDER BY coalesce(position,0),id")
                          .arg(StoreSchema::columnList(schema), tracks ? QStringLiteral("tracks") : QStringLiteral("links")));
  query->bind(1, entry.uid());
  const StoredRow row(*query, schema);
  while (query->step() == SQLITE_ROW) visit(row);
  query->reset();
  return true;
}

void Store::readInOneSnapshot(const std::function<void()>& work) {
  const bool began = isOpen() && db_.exec(QStringLiteral("BEGIN"));
  work();
  if (began) db_.exec(QStringLiteral("COMMIT"));
}

Entry* Store::entryWithLink(const QString& url) {
  // Unsaved links live only in memory; saved ones are found through the index on url.
  for (qint64 uid : relationshipsChanged_) {
    Entry* e = entryWithUID(uid);
    if (!e) continue;
    for (const auto& link : e->linksSet())
      if (link->stringValue(QStringLiteral("url")) == url) return e;
  }
  SqliteStatement q(db_.handle(), QStringLiteral("SELECT entry_uid FROM links WHERE url=?"));
  q.bind(1, url);
  while (q.step() == SQLITE_ROW) {
    Entry* e = entryWithUID(q.int64(0));
    if (e && !relationshipsChanged_.contains(e->uid())) return e;
  }
  return nullptr;
}

QSet<qint64> Store::entriesWithTrackMatching(const QStringList& trackKeys, const QString& text) {
  QSet<qint64> found;
  QStringList conditions;
  for (const QString& key : trackKeys) {
    if (EntitySchema::track().indexOf(key) < 0) continue;
    conditions << StoreSchema::quoted(key) + QStringLiteral(" LIKE ?1 ESCAPE '\\'");
    for (qint64 uid : relationshipsChanged_) {
      Entry* e = entryWithUID(uid);
      if (!e) continue;
      for (const auto& t : e->tracksSet())
        if (t->stringValue(key).contains(text, Qt::CaseInsensitive)) found.insert(uid);
    }
  }
  if (conditions.isEmpty()) return found;
  QString pattern = text;
  pattern.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('%'), QStringLiteral("\\%"))
      .replace(QLatin1Char('_'), QStringLiteral("\\_"));
  SqliteStatement q(db_.handle(), QStringLiteral("SELECT DISTINCT entry_uid FROM tracks WHERE %1").arg(conditions.join(" OR ")));
  q.bind(1, QLatin1Char('%') + pattern + QLatin1Char('%'));
  while (q.step() == SQLITE_ROW)
    if (!relationshipsChanged_.contains(q.int64(0))) found.insert(q.int64(0));
  return found;
}

QSet<qint64> Store::entriesWithLinkMatching(const QString& text) {
  QSet<qint64> found;
  for (Entry* e : entries()) {
    for (const auto& link : e->linksSet()) {
      if (link->stringValue(QStringLiteral("name")).contains(text, Qt::CaseInsensitive) ||
          link->stringValue(QStringLiteral("url")).contains(text, Qt::CaseInsensitive))
        found.insert(e->uid());
    }
  }
  return found;
}

bool Store::hasCollectionChanges() const {
  return !createdCollections_.isEmpty() || !renamedCollections_.isEmpty() || !deletedCollections_.empty() ||
         !membershipsAdded_.isEmpty() || !membershipsRemoved_.isEmpty();
}

bool Store::hasChanges() const { return !changed_.isEmpty() || !deleted_.isEmpty() || hasCollectionChanges(); }

void Store::deferCheckpoints() {
  if (isOpen()) sqlite3_wal_hook(db_.handle(), &Store::walCommitted, this);
}

int Store::walCommitted(void* store, sqlite3* db, const char*, int pages) {
  auto* self = static_cast<Store*>(store);
  self->walPages_ = pages;
  self->savedSinceIdleCall_ = true;
  constexpr int mostPagesLeft = 10000;
  if (pages > mostPagesLeft) {
    sqlite3_wal_checkpoint_v2(db, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    self->walPages_ = 0;
  }
  return SQLITE_OK;
}

void Store::checkpointWhenIdle() {
  if (std::exchange(savedSinceIdleCall_, false) || walPages_ == 0 || !isOpen()) return;
  sqlite3_wal_checkpoint_v2(db_.handle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
  walPages_ = 0;
}

bool Store::save(QString* error) {
  if (!hasChanges()) return true;
  auto fail = [&](const QString& what) {
    if (error) *error = what + QStringLiteral(": ") + db_.errorMessage();
    return false;
  };
  if (!isOpen()) return fail(QStringLiteral("The catalogue is not open"));
  SqliteTransaction transaction(db_);
  if (!transaction.isOpen()) return fail(QStringLiteral("The catalogue is busy"));
  const qint64 revision = metaNumber(revisionKey) + 1;
  if (!setMetaNumber(revisionKey, revision)) return fail(QStringLiteral("Cannot write the catalogue"));
  EntryWriter writer(db_.handle());
  SqliteStatement mark(db_.handle(),
                       QStringLiteral("INSERT OR REPLACE INTO entry_revisions(uid,revision,deleted) VALUES(?,?,?)"));
  SqliteStatement savedRevision(db_.handle(), QStringLiteral("SELECT revision FROM entry_revisions WHERE uid=?"));
  if (!writer.isValid() || !mark.isValid() || !savedRevision.isValid())
    return fail(QStringLiteral("Cannot write the catalogue"));
  auto markEntry = [&](qint64 uid, bool deleted) {
    mark.bind(1, uid);
    mark.bind(2, revision);
    mark.bind(3, qint64(deleted));
    return mark.run();
  };
  for (qint64 uid : deleted_)
    if (!writer.remove(uid) || !markEntry(uid, true)) return fail(QStringLiteral("Cannot delete an entry"));
  std::vector<Entry*> written, lost, outdated;
  for (qint64 uid : changed_) {
    Entry* e = entryWithUID(uid);
    if (!e) continue;
    if (inserted_.contains(uid)) {
      if (!writer.writeAttributes(*e)) return fail(QStringLiteral("Cannot save an entry"));
    } else {
      savedRevision.bind(1, uid);
      const qint64 saved = savedRevision.step() == SQLITE_ROW ? savedRevision.int64(0) : 0;
      savedRevision.reset();
      const QSet<int> keys = changedAttributes_.value(uid);
      std::vector<int> indexes(keys.begin(), keys.end());
      std::sort(indexes.begin(), indexes.end());
      const int updated = writer.updateAttributes(*e, indexes);
      if (updated < 0) return fail(QStringLiteral("Cannot save an entry"));
      if (updated == 0) {  // deleted elsewhere: a stale copy must not bring it back
        lost.push_back(e);
        continue;
      }
      if (saved > e->revision()) outdated.push_back(e);
    }
    if (relationshipsChanged_.contains(uid) && !writer.writeRelationships(*e))
      return fail(QStringLiteral("Cannot save the tracks of an entry"));
    if (!markEntry(uid, false)) return fail(QStringLiteral("Cannot save an entry"));
    written.push_back(e);
  }
  if (hasCollectionChanges() && !setMetaNumber(collectionsRevisionKey, revision))
    return fail(QStringLiteral("Cannot save a collection"));
  SqliteStatement insertCollection(db_.handle(),
                                   QStringLiteral("INSERT OR REPLACE INTO collections(id,name,position) VALUES(?,?,?)"));
  for (int i = 0; i < int(collections_.size()); ++i) {
    Collection* c = collections_[i];
    if (!createdCollections_.contains(c) && !renamedCollections_.contains(c)) continue;
    insertCollection.bind(1, c->id());
    insertCollection.bind(2, c->name());
    insertCollection.bind(3, qint64(i));
    if (!insertCollection.run()) return fail(QStringLiteral("Cannot save a collection"));
  }
  SqliteStatement dropCollection(db_.handle(), QStringLiteral("DELETE FROM collections WHERE id=?"));
  SqliteStatement dropMembers(db_.handle(), QStringLiteral("DELETE FROM collection_entries WHERE collection_id=?"));
  for (const auto& c : deletedCollections_) {
    dropCollection.bind(1, c->id());
    dropMembers.bind(1, c->id());
    if (!dropCollection.run() || !dropMembers.run()) return fail(QStringLiteral("Cannot delete a collection"));
  }
  // Only entries and collections the file still holds get members.
  SqliteStatement addMember(db_.handle(),
                            QStringLiteral("INSERT OR IGNORE INTO collection_entries(collection_id,entry_uid,position) "
                                           "SELECT ?1,?2,?3 WHERE EXISTS(SELECT 1 FROM entries WHERE uid=?2) "
                                           "AND EXISTS(SELECT 1 FROM collections WHERE id=?1)"));
  SqliteStatement countMembers(db_.handle(), QStringLiteral("SELECT count(*) FROM collection_entries WHERE collection_id=?"));
  SqliteStatement removeMember(db_.handle(), QStringLiteral("DELETE FROM collection_entries WHERE collection_id=? AND entry_uid=?"));
  for (const auto& [collection, uid] : membershipsRemoved_) {
    removeMember.bind(1, collection);
    removeMember.bind(2, uid);
    if (!removeMember.run()) return fail(QStringLiteral("Cannot save a collection"));
  }
  // New members in the order they were added, each collection counted once: counting for every
  // row made adding n members to one collection O(n²).
  for (Collection* c : membershipsAdded_.isEmpty() ? std::vector<Collection*>() : collections_) {
    qint64 position = -1;
    for (qint64 uid : c->members_) {
      if (!membershipsAdded_.contains({c->id(), uid})) continue;
      if (position < 0) {
        countMembers.bind(1, c->id());
        position = countMembers.step() == SQLITE_ROW ? countMembers.int64(0) : 0;
        countMembers.reset();
      }
      addMember.bind(1, c->id());
      addMember.bind(2, uid);
      addMember.bind(3, position++);
      if (!addMember.run()) return fail(QStringLiteral("Cannot save a collection"));
    }
  }
  if (!transaction.commit()) return fail(QStringLiteral("Cannot save the catalogue"));
  // With no other process's commit since the last look, there is nothing between it and this save.
  if (dataVersion() == dataVersion_)
    seenRevision_ = revision;
  else
    ownRevisions_.insert(revision);
  for (Entry* e : written) e->setRevision(revision);
  changed_.clear();
  changedAttributes_.clear();
  relationshipsChanged_.clear();
  deleted_.clear();
  inserted_.clear();
  createdCollections_.clear();
  renamedCollections_.clear();
  deletedCollections_.clear();
  membershipsAdded_.clear();
  membershipsRemoved_.clear();
  // Another process wrote to these since they were read: the row now holds its changes and ours.
  for (Entry* e : outdated) reloadEntry(*e);
  if (lost.empty()) return true;
  QStringList titles;
  for (Entry* e : lost) {
    titles << QStringLiteral("\u201C%1\u201D").arg(e->stringValue(QStringLiteral("title")));
    forgetDeletedElsewhere(e);
  }
  notify(nullptr, {});
  if (error)
    *error = QStringLiteral("%1 was deleted by another program meanwhile; the changes to it were not saved.")
                 .arg(titles.join(QStringLiteral(", ")));
  return false;
}

void Store::mergeSavedRow(Entry& entry, const SqliteStatement& row, int firstColumn) {
  const auto& attributes = entry.schema().attributes();
  const QSet<int> mine = changedAttributes_.value(entry.uid());
  for (int i = 0; i < int(attributes.size()); ++i) {
    if (mine.contains(i)) continue;
    const bool saved = !row.isNull(i + firstColumn);
    if (saved || entry.valueAt(i))
      entry.loadValueAt(i, saved ? SqlValue::read(row, i + firstColumn, attributes[i].kind) : QVariant());
  }
}

void Store::reloadEntry(Entry& entry) {
  SqliteStatement q(
      db_.handle(),
      QStringLiteral("SELECT %1 FROM entries WHERE uid=?").arg(StoreSchema::columnList(EntitySchema::cd())));
  q.bind(1, entry.uid());
  if (q.step() == SQLITE_ROW) mergeSavedRow(entry, q, 0);
  reloadRelationships(entry);
}

template <typename T>
static bool sameObjects(const std::vector<std::unique_ptr<T>>& a, const std::vector<std::unique_ptr<T>>& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    for (int k = 0; k < int(a[i]->schema().attributes().size()); ++k) {
      const QVariant *x = a[i]->valueAt(k), *y = b[i]->valueAt(k);
      if (bool(x) != bool(y) || (x && *x != *y)) return false;
    }
  return true;
}

bool Store::reloadRelationships(Entry& entry) {
  if (!entry.relationshipsLoaded() || relationshipsChanged_.contains(entry.uid()) || !trackQuery_) return false;
  auto tracks = readObjects<Track>(*trackQuery_, entry.uid());
  auto links = readObjects<Link>(*linkQuery_, entry.uid());
  if (sameObjects(tracks, entry.tracksSet()) && sameObjects(links, entry.linksSet())) return false;
  entry.adoptLoadedRelationships(std::move(tracks), std::move(links));
  return true;
}

void Store::forgetDeletedElsewhere(Entry* entry) {
  const qint64 uid = entry->uid();
  for (Collection* c : collections_) {
    if (!c->contains(uid)) continue;
    c->members_.erase(std::remove(c->members_.begin(), c->members_.end(), uid), c->members_.end());
    c->memberSet_.remove(uid);
    membershipsAdded_.remove({c->id(), uid});
  }
  entries_.erase(std::remove(entries_.begin(), entries_.end(), entry), entries_.end());
  changed_.remove(uid);
  changedAttributes_.remove(uid);
  relationshipsChanged_.remove(uid);
  auto it = byUID_.find(uid);
  deletedElsewhere_.push_back(std::move(it->second));
  byUID_.erase(it);
}

Store::OutsideChanges Store::refresh() {
  OutsideChanges changes;
  if (!isOpen() || path_ == QLatin1String(":memory:")) return changes;
  const qint64 now = dataVersion();
  if (now == dataVersion_ && !collectionsOutdated_) return changes;
  dataVersion_ = now;
  if (!db_.exec(QStringLiteral("BEGIN"))) return changes;
  const qint64 revision = metaNumber(revisionKey);
  QStringList columns;
  for (const auto& a : EntitySchema::cd().attributes()) columns << QStringLiteral("e.") + StoreSchema::quoted(a.key);
  SqliteStatement q(db_.handle(),
                    QStringLiteral("SELECT r.uid,r.revision,r.deleted OR e.uid IS NULL,%1 FROM entry_revisions r "
                                   "LEFT JOIN entries e ON e.uid=r.uid WHERE r.revision>? ORDER BY r.uid")
                        .arg(columns.join(QLatin1Char(','))));
  q.bind(1, seenRevision_);
  while (revision > seenRevision_ && q.step() == SQLITE_ROW) {
    const qint64 uid = q.int64(0), saved = q.int64(1);
    if (ownRevisions_.contains(saved) || deleted_.contains(uid)) continue;
    const auto held = byUID_.find(uid);
    Entry* e = held == byUID_.end() ? nullptr : held->second.get();
    if (q.int64(2)) {
      if (e && !inserted_.contains(uid)) {
        forgetDeletedElsewhere(e);
        changes.removed.push_back(e);
      }
    } else if (!e) {
      if (!allLoaded_) continue;  // read when first asked for
      auto added = std::make_unique<Entry>(uid, this);
      loadRow(q, *added, 3);
      added->setRevision(saved);
      e = added.get();
      listEntry(e);
      byUID_.emplace(uid, std::move(added));
      changes.added.push_back(e);
    } else if (saved > e->revision()) {
      mergeSavedRow(*e, q, 3);
      e->setRevision(saved);
      if (reloadRelationships(*e)) changes.relationshipsReplaced.push_back(e);
      changes.changed.push_back(e);
    }
  }
  q.reset();
  // Collections are few: read them whole when any save since the last look changed them, ours
  // included, since a number alone cannot tell whether another process's change came before it.
  if (metaNumber(collectionsRevisionKey) > seenRevision_ || collectionsOutdated_) {
    collectionsOutdated_ = hasCollectionChanges();  // not over unsaved changes of our own
    if (!collectionsOutdated_) {
      loadCollections(&changes);
      changes.collections = true;
    }
  }
  db_.exec(QStringLiteral("COMMIT"));
  seenRevision_ = std::max(seenRevision_, revision);
  for (auto it = ownRevisions_.begin(); it != ownRevisions_.end();) {
    if (*it <= seenRevision_)
      it = ownRevisions_.erase(it);
    else
      ++it;
  }
  if (!changes.isEmpty()) notify(nullptr, {});
  return changes;
}

Collection* Store::collectionNamed(const QString& name) const {
  for (Collection* c : collections_)
    if (c->name() == name) return c;
  return nullptr;
}

Collection* Store::createCollection(const QString& name) {
  ownedCollections_.push_back(std::make_unique<Collection>(nextUID(), name));
  Collection* c = ownedCollections_.back().get();
  collections_.push_back(c);
  createdCollections_.insert(c);
  notify(nullptr, ModelKeys::collections);
  return c;
}

bool Store::renameCollection(Collection* c, const QString& name) {
  if (!c || name.trimmed().isEmpty() || (collectionNamed(name) && collectionNamed(name) != c)) return false;
  c->name_ = name;
  renamedCollections_.insert(c);
  notify(nullptr, ModelKeys::collections);
  return true;
}

void Store::deleteCollection(Collection* c) {
  auto it = std::find_if(ownedCollections_.begin(), ownedCollections_.end(), [&](const auto& p) { return p.get() == c; });
  if (it == ownedCollections_.end()) return;
  collections_.erase(std::remove(collections_.begin(), collections_.end(), c), collections_.end());
  createdCollections_.remove(c);
  renamedCollections_.remove(c);
  deletedCollections_.push_back(std::move(*it));
  ownedCollections_.erase(it);
  notify(nullptr, ModelKeys::collections);
}

void Store::addEntryToCollection(Entry* entry, Collection* c) {
  if (!entry || !c || !c->isUser() || c->contains(entry->uid())) return;
  c->members_.push_back(entry->uid());
  c->memberSet_.insert(entry->uid());
  membershipsRemoved_.remove({c->id(), entry->uid()});
  membershipsAdded_.insert({c->id(), entry->uid()});
  notify(entry, ModelKeys::collections);
}

void Store::removeEntryFromCollection(Entry* entry, Collection* c) {
  if (!entry || !c || !c->contains(entry->uid())) return;
  c->members_.erase(std::remove(c->members_.begin(), c->members_.end(), entry->uid()), c->members_.end());
  c->memberSet_.remove(entry->uid());
  membershipsAdded_.remove({c->id(), entry->uid()});
  membershipsRemoved_.insert({c->id(), entry->uid()});
  notify(entry, ModelKeys::collections);
}

QStringList Store::collectionNamesOf(const Entry& entry) const {
  QStringList names;
  for (Collection* c : collections_)
    if (c->contains(entry.uid())) names << c->name();
  return names;
}

QString Store::coverPathOf(qint64 uid) const {
  if (path_.isEmpty() || path_ == QLatin1String(":memory:")) return {};
  return QFileInfo(path_).absolutePath() + QStringLiteral("/Covers/%1.jpg").arg(uid);
}

QVariant Store::derivedValue(const Entry& entry, const QString& key) const {
  if (key == QLatin1String("collectionNames")) return collectionNamesOf(entry).join(QStringLiteral(", "));
  if (key == QLatin1String("hasCoverImage")) {
    const QString cover = coverPathOf(entry.uid());
    return !cover.isEmpty() && QFile::exists(cover);
  }
  if (key == QLatin1String("statusImage")) return entry.value(QStringLiteral("status")).toLongLong();
  return {};
}

void Store::addChangeListener(std::function<void(Entry*, const QString&)> listener) {
  listeners_.push_back(std::move(listener));
}

void Store::notify(Entry* entry, const QString& key) {
  for (auto& l : listeners_) l(entry, key);
}
