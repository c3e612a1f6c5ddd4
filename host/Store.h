#pragma once

#include "Collection.h"
#include "ObjectContext.h"
#include "SqliteDatabase.h"

#include <QHash>
#include <QSet>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

class Entry;
class EntityMigrationPolicy;
class Link;
class SqliteStatement;
class StoredRow;
class Track;
struct sqlite3;

// The catalogue store: one SQLite file holding entries, their tracks and links, and collections.
// Entries are kept in memory once opened; tracks and links are read the first time an entry's
// sets are asked for. save() writes the attributes, tracks and links changed since the last save
// in one transaction, so a crash leaves the file as of the last completed save. Other processes
// may share the file: every save takes the next of the file's change numbers, and refresh() reads
// what they saved since the last look.
class Store : public ObjectContext {
 public:
  // Every entry read at open (a window, a command over the whole list), or each when first asked
  // for (a command on one entry): entries() then reads the rest the first time it is called.
  enum class Loading { AllEntries, OnDemand };
  enum class OpenStatus { Ok, NotACatalogue, TooNew, TooOld, ReadOnly, Busy, Damaged, MigrationFailed, CannotOpen };
  struct OpenResult {
    OpenStatus status = OpenStatus::Ok;
    QString message;
    bool ok() const { return status == OpenStatus::Ok; }
  };

  Store();
  ~Store() override;

  // The policy the conversion from version 4 runs for each entry ("CD").
  void setMigrationPolicy(std::shared_ptr<EntityMigrationPolicy> policy);
  // Opens or creates the file (":memory:" for a store that is never written). A store of an
  // older version is upgraded step by step first (StoreUpgrader); a failed step leaves the file as
  // that step found it, and the store is not opened.
  OpenResult open(const QString& path, Loading loading = Loading::AllEntries);
  bool isOpen() const { return db_.handle() != nullptr; }
  const QString& path() const { return path_; }

  // A new entry ("CD") with a fresh uid; it is written at the next save.
  Entry* insertEntry();
  // An empty entry under a uid no entry holds, such as one deleted earlier (an undone delete);
  // nullptr when the uid is taken.
  Entry* insertEntry(qint64 uid);
  void deleteEntry(Entry* entry);
  static std::unique_ptr<Track> newTrack();
  static std::unique_ptr<Link> newLink();

  // Every entry, in the order of their uids; opened on demand, the first call reads them all.
  const std::vector<Entry*>& entries() const;
  // Whether entries() holds every entry without reading more.
  bool entriesLoaded() const { return allLoaded_; }
  // Reads the entry when it is not in memory yet (opened on demand).
  Entry* entryWithUID(qint64 uid) const;
  // The entries whose title equals the text (ignoring case, as QString::compare does, when asked),
  // in the order of their uids, found with SQL instead of reading every entry.
  std::vector<Entry*> entriesTitled(const QString& title, Qt::CaseSensitivity cs);
  // The entry that holds a link whose "url" equals the text exactly.
  Entry* entryWithLink(const QString& url);
  // Uids of the entries that have a track whose attribute contains the text, ignoring case.
  QSet<qint64> entriesWithTrackMatching(const QStringList& trackKeys, const QString& text);
  QSet<qint64> entriesWithLinkMatching(const QString& text);
  // Visits an entry's saved tracks or links in position order without building objects, so that
  // printing a whole catalogue stays small. False, visiting nothing, when the entry's sets are
  // already in memory: read them from the entry then, as they may hold unsaved changes.
  enum class Relationship { Tracks, Links };
  bool forEachStoredRow(const Entry& entry, Relationship relationship, const std::function<void(const StoredRow&)>& visit);
  // Runs work inside one read transaction: many reads share one file lock and see one state.
  void readInOneSnapshot(const std::function<void()>& work);

  // Unique across processes sharing the file: uids are reserved from the file in blocks.
  qint64 nextUID();
  bool hasChanges() const;
  // Writes only the attributes this process changed, so another process's changes to other
  // attributes of the same entry stay; of the same attribute, this (the later) save wins. An entry
  // that another process deleted meanwhile is not written back: it leaves the store, and save
  // returns false naming it, after writing everything else.
  bool save(QString* error = nullptr);

  // Folding the write-ahead log into the file (a checkpoint) makes the save that passes 1,000 log
  // pages take 10-20 ms. A window defers it to checkpointWhenIdle(), which it calls a few times a
  // second: it checkpoints once a call finds no save since the previous one. A log that grows past
  // 10,000 pages (a long import) is still folded at once.
  void deferCheckpoints();
  void checkpointWhenIdle();

  // What other processes sharing the file saved since the last look.
  struct OutsideChanges {
    std::vector<Entry*> added, changed;
    // Deleted elsewhere: gone from entries() and the collections, but kept alive for whoever
    // still holds them (an open editor).
    std::vector<Entry*> removed;
    // Changed entries whose tracks or links in memory were replaced by the saved ones.
    std::vector<Entry*> relationshipsReplaced;
    // The user collections or their members changed; collections gone are kept alive likewise.
    bool collections = false;
    std::vector<Collection*> removedCollections;
    bool isEmpty() const { return added.empty() && changed.empty() && removed.empty() && !collections; }
  };
  // One pragma read when no other process wrote since the last call. Otherwise reads only the
  // entries saved since, and merges them: saved values replace those in memory except the ones
  // this process changed and has not saved yet.
  OutsideChanges refresh();

  // Collections, user ones in their order; the borrowed and wish-list ones are not listed here.
  const std::vector<Collection*>& collections() const { return collections_; }
  Collection* collectionNamed(const QString& name) const;
  Collection* createCollection(const QString& name);
  bool renameCollection(Collection* collection, const QString& name);
  void deleteCollection(Collection* collection);
  void addEntryToCollection(Entry* entry, Collection* collection);
  void removeEntryFromCollection(Entry* entry, Collection* collection);
  QStringList collectionNamesOf(const Entry& entry) const;
  // Where the entry's cover picture is kept, "Covers/<uid>.jpg" in the data folder; empty for a
  // store that has no folder.
  QString coverPathOf(qint64 uid) const;

  // Called after every notifying change of an entry or of the collections.
  void addChangeListener(std::function<void(Entry* entry, const QString& key)> listener);

  // ObjectContext
  void entryDidChange(Entry& entry, const QString& key, bool notify) override;
  void loadRelationships(Entry& entry) override;
  QVariant derivedValue(const Entry& entry, const QString& key) const override;

 private:
  OpenResult prepareFile(const QString& path);
  OpenResult upgrade(qint64 version);
  bool loadEntries();
  // Opened on demand: the entry read from the file, or nullptr when the file has none.
  Entry* readEntry(qint64 uid);
  void loadRemainingEntries();
  bool prepareRelationshipQueries();
  void listEntry(Entry* entry);
  // Reads the collections and their members; on a later call, in place, keeping the objects.
  bool loadCollections(OutsideChanges* changes = nullptr);
  void notify(Entry* entry, const QString& key);
  qint64 dataVersion();
  static int walCommitted(void* store, sqlite3* db, const char* name, int pages);
  qint64 metaNumber(const QString& key);
  bool setMetaNumber(const QString& key, qint64 value);
  // The entry's saved attributes from a row holding them from firstColumn on, except those this
  // process changed and has not saved.
  void mergeSavedRow(Entry& entry, const SqliteStatement& row, int firstColumn);
  // Reads an entry's row again, after another process wrote to it too.
  void reloadEntry(Entry& entry);
  // Replaces loaded, unchanged tracks and links when the saved ones differ; true when it did.
  bool reloadRelationships(Entry& entry);
  // An entry deleted by another process leaves the lists; the object stays alive.
  void forgetDeletedElsewhere(Entry* entry);
  bool hasCollectionChanges() const;

  SqliteDatabase db_;
  std::unique_ptr<SqliteStatement> trackQuery_, linkQuery_, trackRowsQuery_, linkRowsQuery_;
  QString path_;
  std::shared_ptr<EntityMigrationPolicy> policy_;
  std::vector<Entry*> entries_;
  bool allLoaded_ = true, unusualTitlesIndexed_ = false;
  std::unique_ptr<SqliteStatement> entryQuery_;
  std::unordered_map<qint64, std::unique_ptr<Entry>> byUID_;
  QSet<qint64> changed_, relationshipsChanged_, deleted_, inserted_;
  QHash<qint64, QSet<int>> changedAttributes_;  // schema indexes, by uid
  // Change numbers: the newest this process has read, and those of its own saves since.
  qint64 seenRevision_ = 0, dataVersion_ = -1;
  QSet<qint64> ownRevisions_;
  bool collectionsOutdated_ = false;
  // Log pages not yet folded in, and whether a save came since the last idle call.
  int walPages_ = 0;
  bool savedSinceIdleCall_ = false;
  std::vector<std::unique_ptr<Entry>> deletedElsewhere_;
  std::vector<std::unique_ptr<Collection>> collectionsDeletedElsewhere_;
  std::vector<Collection*> collections_;
  std::vector<std::unique_ptr<Collection>> ownedCollections_, deletedCollections_;
  QSet<Collection*> createdCollections_, renamedCollections_;
  QSet<QPair<qint64, qint64>> membershipsAdded_, membershipsRemoved_;  // (collection id, uid)
  qint64 uidBlockNext_ = 0, uidBlockEnd_ = 0;
  std::vector<std::function<void(Entry*, const QString&)>> listeners_;
};
