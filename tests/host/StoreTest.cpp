#include "Entry.h"
#include "SqliteDatabase.h"
#include "SqliteStatement.h"
#include "EntrySnapshot.h"
#include "Store.h"
#include "StoreSchema.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

QByteArray fileHash(const QString& path) {
  QFile f(path);
  f.open(QIODevice::ReadOnly);
  return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

// Every table's columns (name, type, not null, default, key) and every index, as SQLite reports
// them: two files with the same layout answer the same.
QStringList layoutOf(const QString& path) {
  SqliteDatabase db;
  if (!db.open(path, SQLITE_OPEN_READONLY)) return {"cannot open"};
  QStringList layout;
  SqliteStatement tables(db.handle(), "SELECT type,name,tbl_name FROM sqlite_master ORDER BY type,name");
  while (tables.step() == SQLITE_ROW) {
    const QString name = tables.text(1);
    layout << tables.text(0) + ' ' + name + " on " + tables.text(2);
    const QString pragma = tables.text(0) == "table" ? "table_info" : "index_xinfo";
    SqliteStatement columns(db.handle(), QStringLiteral("SELECT * FROM pragma_%1('%2')").arg(pragma, name));
    while (columns.step() == SQLITE_ROW) {
      QStringList cells;
      for (int c = 0; c < columns.columnCount(); ++c) cells << (columns.isNull(c) ? "NULL" : columns.text(c));
      layout << "  " + cells.join('|');
    }
  }
  return layout;
}

// A catalogue as version 5 wrote it, in the write-ahead log mode it was kept in.
void writeVersion5(const QString& path, const QStringList& extraStatements = {}) {
  SqliteDatabase db;
  ASSERT_TRUE(db.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
  ASSERT_TRUE(db.exec("PRAGMA journal_mode=WAL"));
  QStringList statements = StoreSchema::version5CreateStatements();
  statements << extraStatements
             << "INSERT INTO entries(uid,title,artist,releaseDate,myRating,customCheckbox1,price,status,localeLanguage) "
                "VALUES(1,'Kind of Blue','Miles Davis',-347155200000,9,1,'12.50',2,'en')"
             << "INSERT INTO entries(uid,title,discID) VALUES(2,'Ella Swings','6a09f20a')"
             << "INSERT INTO tracks(id,entry_uid,name,position,duration,composer) VALUES(7,1,'So What',0,'9:22','Davis')"
             << "INSERT INTO tracks(id,entry_uid,name,position,duration) VALUES(8,1,'Freddie Freeloader',1,'9:46')"
             << "INSERT INTO links(id,entry_uid,name,url,type,position) VALUES(3,1,'Notes','https://example.org/kob','review',0)"
             << "INSERT INTO collections(id,name,position) VALUES(20,'Jazz',0),(21,'Vocal',1)"
             << "INSERT INTO collection_entries(collection_id,entry_uid,position) VALUES(20,1,0),(20,2,1),(21,2,0)"
             << "INSERT INTO meta(key,value) VALUES('nextUID',3000)"
             << "PRAGMA user_version=5";
  for (const QString& sql : statements) ASSERT_TRUE(db.exec(sql)) << qPrintable(sql) << qPrintable(db.errorMessage());
}

qint64 versionOf(const QString& path) {
  SqliteDatabase db;
  return db.open(path, SQLITE_OPEN_READONLY) ? db.userVersion() : -1;
}

class StoreTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  QString path() const { return dir.filePath("Discary.sqlite"); }
};

TEST_F(StoreTest, SavedEntriesTracksLinksAndCollectionsComeBack) {
  qint64 uid = 0;
  {
    Store store;
    ASSERT_TRUE(store.open(path()).ok());
    Entry* e = store.insertEntry();
    uid = e->uid();
    EXPECT_TRUE(e->setValue("title", "Blue Train"));
    EXPECT_TRUE(e->setValue("releaseDate", QDateTime(QDate(1958, 1, 1), QTime(12, 0), Qt::UTC)));
    EXPECT_TRUE(e->setValue("myRating", 4));
    EXPECT_TRUE(e->setValue("customCheckbox1", "yes"));
    EXPECT_TRUE(e->setValue("price", "twelve"));  // letters in a price are kept as the text they are
    EXPECT_FALSE(e->setValue("myRating", "lots"));
    EXPECT_FALSE(e->setValue("nonsense", "x"));
    for (int i = 0; i < 3; ++i) {
      auto t = Store::newTrack();
      t->setValue("name", QStringLiteral("Track %1").arg(i));
      t->setValue("position", 2 - i);
      e->addTrack(std::move(t));
    }
    auto link = Store::newLink();
    link->setValue("url", "https://example.org/blue");
    e->addLink(std::move(link));
    Collection* jazz = store.createCollection("Jazz");
    store.addEntryToCollection(e, jazz);
    QString error;
    ASSERT_TRUE(store.save(&error)) << qPrintable(error);
    EXPECT_FALSE(store.hasChanges());
  }
  Store store;
  ASSERT_TRUE(store.open(path()).ok());
  ASSERT_EQ(store.entries().size(), 1u);
  Entry* e = store.entryWithUID(uid);
  ASSERT_NE(e, nullptr);
  EXPECT_EQ(e->value("title").toString(), "Blue Train");
  EXPECT_EQ(e->value("releaseDate").toDateTime().date().year(), 1958);
  EXPECT_EQ(e->value("myRating").toLongLong(), 4);
  EXPECT_EQ(e->value("customCheckbox1").toBool(), true);
  EXPECT_EQ(e->value("price").toString(), "twelve");
  EXPECT_FALSE(e->relationshipsLoaded());
  const auto tracks = e->tracksSortedByPosition();
  ASSERT_EQ(tracks.size(), 3u);
  EXPECT_EQ(tracks.front()->value("name").toString(), "Track 2");
  EXPECT_EQ(store.entryWithLink("https://example.org/blue"), e);
  EXPECT_EQ(store.entryWithLink("https://example.org/blu"), nullptr);
  EXPECT_EQ(store.collectionNamesOf(*e), QStringList{"Jazz"});
  EXPECT_EQ(e->value("collectionNames").toString(), "Jazz");
  EXPECT_EQ(store.entriesWithTrackMatching({"name"}, "TRACK 1"), QSet<qint64>{uid});
}

TEST_F(StoreTest, OpenedOnDemandEntriesAreReadWhenAskedForAndFoundByTitle) {
  qint64 blue = 0, blue2 = 0, kelvin = 0, cedilla = 0;
  {
    Store store;
    ASSERT_TRUE(store.open(path()).ok());
    auto add = [&](const QString& title) {
      Entry* e = store.insertEntry();
      e->setValue("title", title);
      return e->uid();
    };
    blue = add("Blue");
    blue2 = add("Blue");
    kelvin = add(QString(QChar(0x212A)) + "ind");  // the Kelvin sign folds to k
    cedilla = add(QString::fromUtf8("Ça ira"));
    add("Other");
    store.insertEntry();  // no title
    store.addEntryToCollection(store.entryWithUID(blue), store.createCollection("Jazz"));
    ASSERT_TRUE(store.save());
  }
  Store store;
  ASSERT_TRUE(store.open(path(), Store::Loading::OnDemand).ok());
  EXPECT_FALSE(store.entriesLoaded());
  const auto uids = [](const std::vector<Entry*>& entries) {
    std::vector<qint64> u;
    for (Entry* e : entries) u.push_back(e->uid());
    return u;
  };
  Entry* first = store.entryWithUID(blue);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->value("title").toString(), "Blue");
  EXPECT_EQ(store.collectionNamesOf(*first), QStringList{"Jazz"});
  EXPECT_EQ(store.entryWithUID(999999), nullptr);
  EXPECT_EQ(uids(store.entriesTitled("Blue", Qt::CaseSensitive)), (std::vector<qint64>{blue, blue2}));
  EXPECT_TRUE(store.entriesTitled("blue", Qt::CaseSensitive).empty());
  EXPECT_EQ(uids(store.entriesTitled("bLUE", Qt::CaseInsensitive)), (std::vector<qint64>{blue, blue2}));
  EXPECT_EQ(uids(store.entriesTitled("KIND", Qt::CaseInsensitive)), std::vector<qint64>{kelvin});
  EXPECT_EQ(uids(store.entriesTitled(QString::fromUtf8("ÇA IRA"), Qt::CaseInsensitive)), std::vector<qint64>{cedilla});
  EXPECT_EQ(store.entriesTitled("", Qt::CaseSensitive).size(), 1u);
  EXPECT_TRUE(store.entriesTitled("Nothing", Qt::CaseInsensitive).empty());
  EXPECT_FALSE(store.entriesLoaded());

  // Unsaved titles, deletions and new entries count as they stand in memory.
  first->setValue("title", "Red");
  store.deleteEntry(store.entryWithUID(blue2));
  EXPECT_EQ(store.entryWithUID(blue2), nullptr);
  Entry* added = store.insertEntry();
  added->setValue("title", "Blue");
  EXPECT_EQ(uids(store.entriesTitled("Blue", Qt::CaseSensitive)), std::vector<qint64>{added->uid()});
  EXPECT_EQ(uids(store.entriesTitled("Red", Qt::CaseSensitive)), std::vector<qint64>{blue});

  // Asking for all reads the rest around those in memory.
  EXPECT_EQ(store.entries().size(), 6u);
  EXPECT_TRUE(store.entriesLoaded());
  EXPECT_EQ(store.entryWithUID(blue), first);
  EXPECT_EQ(first->value("title").toString(), "Red");
  ASSERT_TRUE(store.save());

  Store reopened;
  ASSERT_TRUE(reopened.open(path()).ok());
  EXPECT_EQ(reopened.entries().size(), 6u);
  EXPECT_EQ(reopened.entryWithUID(blue)->value("title").toString(), "Red");
  EXPECT_EQ(reopened.entryWithUID(blue2), nullptr);
  EXPECT_EQ(reopened.collectionNamesOf(*reopened.entryWithUID(blue)), QStringList{"Jazz"});
}

TEST_F(StoreTest, OpenedOnDemandARefreshMergesOnlyTheEntriesInMemory) {
  Store writer;
  ASSERT_TRUE(writer.open(path()).ok());
  Entry* kept = writer.insertEntry();
  kept->setValue("title", "Kept");
  Entry* other = writer.insertEntry();
  other->setValue("title", "Other");
  ASSERT_TRUE(writer.save());

  Store reader;
  ASSERT_TRUE(reader.open(path(), Store::Loading::OnDemand).ok());
  Entry* read = reader.entryWithUID(kept->uid());
  ASSERT_NE(read, nullptr);
  kept->setValue("label", "Blue Note");
  other->setValue("label", "Impulse!");
  writer.insertEntry()->setValue("title", "New");
  ASSERT_TRUE(writer.save());
  const Store::OutsideChanges changes = reader.refresh();
  EXPECT_EQ(changes.changed, std::vector<Entry*>{read});
  EXPECT_TRUE(changes.added.empty());
  EXPECT_EQ(read->value("label").toString(), "Blue Note");
  EXPECT_EQ(reader.entryWithUID(other->uid())->value("label").toString(), "Impulse!");
  EXPECT_EQ(reader.entries().size(), 3u);
}

TEST_F(StoreTest, DeletingRemovesTracksAndMembershipsAndUidsAreNotReused) {
  Store store;
  ASSERT_TRUE(store.open(path()).ok());
  Entry* e = store.insertEntry();
  const qint64 first = e->uid();
  e->addTrack(Store::newTrack());
  store.addEntryToCollection(e, store.createCollection("Mine"));
  ASSERT_TRUE(store.save());
  store.deleteEntry(e);
  ASSERT_TRUE(store.save());
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &db), SQLITE_OK);
  for (const char* sql : {"SELECT count(*) FROM tracks", "SELECT count(*) FROM collection_entries", "SELECT count(*) FROM entries"}) {
    sqlite3_stmt* s = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &s, nullptr);
    ASSERT_EQ(sqlite3_step(s), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(s, 0), 0) << sql;
    sqlite3_finalize(s);
  }
  sqlite3_close(db);
  Entry* later = store.insertEntry();
  EXPECT_GT(later->uid(), first);

  // A deleted entry's uid can be given back (an undone delete), once, in uid order.
  EXPECT_EQ(store.insertEntry(later->uid()), nullptr);
  Entry* back = store.insertEntry(first);
  ASSERT_NE(back, nullptr);
  back->setValue("title", "Back");
  EXPECT_EQ(store.entries().front(), back);
  ASSERT_TRUE(store.save());
  Store reopened;
  ASSERT_TRUE(reopened.open(path()).ok());
  ASSERT_NE(reopened.entryWithUID(first), nullptr);
  EXPECT_EQ(reopened.entryWithUID(first)->stringValue("title"), "Back");
}

TEST_F(StoreTest, ASnapshotPutsAnEntryBackAsItWasAndNamesWhatDiffers) {
  Store store;
  ASSERT_TRUE(store.open(path()).ok());
  Entry* e = store.insertEntry();
  e->setValue("title", "Giant Steps");
  e->setValue("myRating", 8);
  auto track = Store::newTrack();
  track->setValue("name", "Naima");
  e->addTrack(std::move(track));
  ASSERT_TRUE(store.save());
  const EntrySnapshot before = EntrySnapshot::of(store, *e, true);
  EXPECT_EQ(before.cover(), QByteArray());  // kept, and there was none

  e->setValue("title", "Giant Steps (Deluxe)");
  e->setValue("myRating", QVariant());
  e->setValue("label", "Atlantic");
  e->removeTrack(e->tracksSet().front().get());
  const EntrySnapshot after = EntrySnapshot::of(store, *e, false);
  EXPECT_EQ(before.differences(after), (QStringList{"title", "label", "myRating", "tracksSet"}));
  EXPECT_FALSE(after.cover().has_value());

  before.applyTo(*e);
  EXPECT_TRUE(before.differences(EntrySnapshot::of(store, *e, false)).isEmpty());
  ASSERT_TRUE(store.save());
  Store reopened;
  ASSERT_TRUE(reopened.open(path()).ok());
  Entry* saved = reopened.entryWithUID(e->uid());
  EXPECT_EQ(saved->stringValue("title"), "Giant Steps");
  EXPECT_EQ(saved->value("label"), QVariant());
  EXPECT_EQ(saved->value("myRating").toLongLong(), 8);
  ASSERT_EQ(saved->tracksSet().size(), 1u);
  EXPECT_EQ(saved->tracksSet().front()->stringValue("name"), "Naima");

  // Putting back what is there already changes nothing to save.
  before.applyTo(*e);
  EXPECT_FALSE(store.hasChanges());
}

TEST_F(StoreTest, TwoProcessesSharingAFileKeepEachOthersEntries) {
  Store a, b;
  ASSERT_TRUE(a.open(path()).ok());
  ASSERT_TRUE(b.open(path()).ok());
  QSet<qint64> uids;
  for (int i = 0; i < 50; ++i) {
    Entry* x = a.insertEntry();
    x->setValue("title", QStringLiteral("a%1").arg(i));
    Entry* y = b.insertEntry();
    y->setValue("title", QStringLiteral("b%1").arg(i));
    uids << x->uid() << y->uid();
    ASSERT_TRUE(a.save());
    ASSERT_TRUE(b.save());
  }
  EXPECT_EQ(uids.size(), 100);
  Store reader;
  ASSERT_TRUE(reader.open(path()).ok());
  EXPECT_EQ(reader.entries().size(), 100u);
}

TEST_F(StoreTest, DeferredCheckpointsLoseNothingInACrashAndFoldTheLogInWhenIdle) {
  Store store;
  ASSERT_TRUE(store.open(path()).ok());
  store.deferCheckpoints();
  for (int i = 0; i < 40; ++i) {
    store.insertEntry()->setValue("title", QStringLiteral("t%1").arg(i));
    ASSERT_TRUE(store.save());
  }
  // What a crash now leaves behind: the file with its log.
  const QString crashed = dir.filePath("crashed.sqlite"), folded = dir.filePath("folded.sqlite");
  ASSERT_TRUE(QFile::copy(path(), crashed));
  ASSERT_TRUE(QFile::copy(path() + "-wal", crashed + "-wal"));
  store.checkpointWhenIdle();  // a save came since the last look: not idle yet
  store.checkpointWhenIdle();
  ASSERT_TRUE(QFile::copy(path(), folded));  // the file alone, no log
  for (const QString& copy : {crashed, folded}) {
    Store reader;
    ASSERT_TRUE(reader.open(copy).ok()) << qPrintable(copy);
    EXPECT_EQ(reader.entries().size(), 40u) << qPrintable(copy);
  }
}

TEST_F(StoreTest, EditsOfOneEntryFromTwoProcessesKeepEachOthersFieldsAndTheLaterSaveWinsAField) {
  Store a, b;
  ASSERT_TRUE(a.open(path()).ok());
  Entry* mine = a.insertEntry();
  mine->setValue("title", "Kind of Blue");
  mine->setValue("artist", "Miles Davis");
  mine->addTrack(Store::newTrack())->setValue("name", "So What");
  ASSERT_TRUE(a.save());
  ASSERT_TRUE(b.open(path()).ok());
  Entry* theirs = b.entryWithUID(mine->uid());
  ASSERT_EQ(theirs->tracksSet().size(), 1u);
  EXPECT_TRUE(a.refresh().isEmpty());  // its own save is nothing new to it

  mine->setValue("genre", "Jazz");
  theirs->setValue("label", "Columbia");
  ASSERT_TRUE(a.save());
  ASSERT_TRUE(b.save());
  EXPECT_EQ(theirs->stringValue("genre"), "Jazz");  // read back with the save that came after it
  Store::OutsideChanges seen = a.refresh();
  ASSERT_EQ(seen.changed, std::vector<Entry*>{mine});
  EXPECT_EQ(mine->stringValue("label"), "Columbia");
  EXPECT_EQ(mine->stringValue("genre"), "Jazz");

  // The same field: the later save wins, in the file and, at the next look, in the other process.
  mine->setValue("artist", "Miles Davis Sextet");
  ASSERT_TRUE(a.save());
  theirs->setValue("artist", "The Miles Davis Sextet");
  ASSERT_TRUE(b.save());
  a.refresh();
  EXPECT_EQ(mine->stringValue("artist"), "The Miles Davis Sextet");

  // A value changed here and not saved yet stays over the saved one, and is saved after it.
  mine->setValue("comments", "mine");
  theirs->setValue("comments", "theirs");
  theirs->setValue("summary", "Recorded in 1959");
  theirs->addTrack(Store::newTrack())->setValue("name", "Freddie Freeloader");
  ASSERT_TRUE(b.save());
  seen = a.refresh();
  EXPECT_EQ(seen.relationshipsReplaced, std::vector<Entry*>{mine});
  EXPECT_EQ(mine->tracksSet().size(), 2u);
  EXPECT_EQ(mine->stringValue("comments"), "mine");
  EXPECT_EQ(mine->stringValue("summary"), "Recorded in 1959");
  ASSERT_TRUE(a.save());
  Store reader;
  ASSERT_TRUE(reader.open(path()).ok());
  EXPECT_EQ(reader.entryWithUID(mine->uid())->stringValue("comments"), "mine");
  EXPECT_EQ(reader.entryWithUID(mine->uid())->stringValue("summary"), "Recorded in 1959");
  EXPECT_EQ(reader.entryWithUID(mine->uid())->tracksSet().size(), 2u);
}

TEST_F(StoreTest, AnEntryDeletedByOneProcessIsNeverWrittenBackByAnother) {
  Store a, b;
  ASSERT_TRUE(a.open(path()).ok());
  Collection* jazz = a.createCollection("Jazz");
  qint64 gone = 0, kept = 0;
  for (const char* title : {"Blue Train", "Kind of Blue"}) {
    Entry* e = a.insertEntry();
    e->setValue("title", title);
    a.addEntryToCollection(e, jazz);
    (gone ? kept : gone) = e->uid();
  }
  ASSERT_TRUE(a.save());
  ASSERT_TRUE(b.open(path()).ok());

  b.deleteEntry(b.entryWithUID(gone));
  Entry* added = b.insertEntry();
  added->setValue("title", "Giant Steps");
  b.addEntryToCollection(added, b.createCollection("Atlantic"));
  ASSERT_TRUE(b.save());

  // A stale copy: its change is refused, and so is putting it in a collection.
  Entry* stale = a.entryWithUID(gone);
  stale->setValue("comments", "still here?");
  a.addEntryToCollection(stale, a.createCollection("Favourites"));
  a.entryWithUID(kept)->setValue("comments", "still here");
  QString error;
  EXPECT_FALSE(a.save(&error));
  EXPECT_TRUE(error.contains("\u201CBlue Train\u201D was deleted by another program")) << qPrintable(error);
  EXPECT_EQ(a.entryWithUID(gone), nullptr);
  EXPECT_EQ(stale->stringValue("title"), "Blue Train");  // kept alive for whoever holds it
  EXPECT_EQ(jazz->memberUIDs(), std::vector<qint64>{kept});

  Store::OutsideChanges seen = a.refresh();
  ASSERT_EQ(seen.added.size(), 1u);
  EXPECT_EQ(seen.added[0]->stringValue("title"), "Giant Steps");
  EXPECT_TRUE(seen.collections);
  EXPECT_EQ(a.collectionNamesOf(*seen.added[0]), QStringList{"Atlantic"});
  EXPECT_TRUE(a.save());
  EXPECT_TRUE(a.refresh().isEmpty());

  seen = b.refresh();
  EXPECT_EQ(b.entryWithUID(kept)->stringValue("comments"), "still here");
  Entry* held = b.entryWithUID(kept);
  a.deleteEntry(a.entryWithUID(kept));
  a.deleteCollection(a.collectionNamed("Atlantic"));
  ASSERT_TRUE(a.save());
  seen = b.refresh();
  EXPECT_EQ(seen.removed, std::vector<Entry*>{held});
  ASSERT_EQ(seen.removedCollections.size(), 1u);
  EXPECT_EQ(seen.removedCollections[0]->name(), "Atlantic");
  EXPECT_EQ(b.entries().size(), 1u);
  EXPECT_TRUE(b.collectionNamed("Jazz")->memberUIDs().empty());

  Store reader;
  ASSERT_TRUE(reader.open(path()).ok());
  EXPECT_EQ(reader.entries().size(), 1u);
  EXPECT_EQ(reader.entryWithUID(gone), nullptr);
  EXPECT_TRUE(reader.collectionNamed("Jazz")->memberUIDs().empty());
  EXPECT_TRUE(reader.collectionNamed("Favourites")->memberUIDs().empty());
}

TEST_F(StoreTest, AVersion5CatalogueIsUpgradedWholeToTheLayoutOfANewOne) {
  writeVersion5(path());
  {
    Store store;
    const auto result = store.open(path());
    ASSERT_TRUE(result.ok()) << qPrintable(result.message);
    ASSERT_EQ(store.entries().size(), 2u);
    Entry* blue = store.entryWithUID(1);
    Entry* ella = store.entryWithUID(2);
    ASSERT_TRUE(blue && ella);
    EXPECT_EQ(blue->value("title").toString(), "Kind of Blue");
    EXPECT_EQ(blue->value("artist").toString(), "Miles Davis");
    EXPECT_EQ(blue->value("releaseDate").toDateTime(), QDateTime(QDate(1959, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(blue->value("myRating").toLongLong(), 9);
    EXPECT_EQ(blue->value("customCheckbox1").toBool(), true);
    EXPECT_EQ(blue->value("price").toString(), "12.50");
    EXPECT_EQ(blue->value("status").toLongLong(), 2);
    EXPECT_EQ(blue->value("localeLanguage").toString(), "en");
    EXPECT_EQ(ella->value("discID").toString(), "6a09f20a");
    for (const char* added : {"releaseID", "musicBrainzDiscID", "barcodeSource"})
      EXPECT_FALSE(blue->value(added).isValid()) << added;
    const auto tracks = blue->tracksSortedByPosition();
    ASSERT_EQ(tracks.size(), 2u);
    EXPECT_EQ(tracks[0]->value("name").toString(), "So What");
    EXPECT_EQ(tracks[0]->value("composer").toString(), "Davis");
    EXPECT_EQ(tracks[1]->value("duration").toString(), "9:46");
    EXPECT_EQ(store.entryWithLink("https://example.org/kob"), blue);
    EXPECT_EQ(store.collectionNamesOf(*ella), (QStringList{"Jazz", "Vocal"}));
    EXPECT_GE(store.insertEntry()->uid(), 3000);  // the reserved uids stay reserved

    EXPECT_TRUE(ella->setValue("releaseID", "1c5e5b2c-9f7b-4c2b-a2a4-0c5f0e8b7d11"));
    EXPECT_TRUE(ella->setValue("barcodeSource", "sleeve"));
    ASSERT_TRUE(store.save());
  }
  EXPECT_EQ(versionOf(path()), 8);
  EXPECT_EQ(versionOf(path() + ".version5"), 5);
  EXPECT_EQ(versionOf(path() + ".version6"), 6);
  EXPECT_EQ(versionOf(path() + ".version7"), 7);
  {
    Store again;
    ASSERT_TRUE(again.open(path()).ok());
    EXPECT_EQ(again.entryWithUID(2)->value("releaseID").toString(), "1c5e5b2c-9f7b-4c2b-a2a4-0c5f0e8b7d11");
    EXPECT_EQ(again.entryWithUID(2)->value("barcodeSource").toString(), "sleeve");
    EXPECT_EQ(again.entries().size(), 3u);
  }

  const QString fresh = dir.filePath("Fresh.sqlite");
  {
    Store store;
    ASSERT_TRUE(store.open(fresh).ok());
  }
  const QStringList upgraded = layoutOf(path()), created = layoutOf(fresh);
  EXPECT_EQ(upgraded, created) << qPrintable(upgraded.join('\n')) << "\n---\n" << qPrintable(created.join('\n'));
  EXPECT_TRUE(created.contains("index links_url on links"));
  EXPECT_TRUE(created.contains("index entry_revisions_revision on entry_revisions"));

  // A file as version 6 shipped takes the one step to the same layout.
  const QString six = dir.filePath("Six.sqlite");
  {
    SqliteDatabase db;
    ASSERT_TRUE(db.open(six, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
    for (const QString& sql : StoreSchema::version6CreateStatements() +
                                  QStringList{"INSERT INTO entries(uid,title,barcodeSource) VALUES(5,'Six','sleeve')",
                                              "PRAGMA user_version=6"})
      ASSERT_TRUE(db.exec(sql)) << qPrintable(sql);
  }
  {
    Store store;
    ASSERT_TRUE(store.open(six).ok());
    EXPECT_EQ(store.entryWithUID(5)->stringValue("barcodeSource"), "sleeve");
  }
  EXPECT_EQ(layoutOf(six), created);
  EXPECT_EQ(versionOf(six + ".version6"), 6);

  // And one as version 7 shipped gains the copy's conditions and its release on the database.
  const QString seven = dir.filePath("Seven.sqlite");
  {
    SqliteDatabase db;
    ASSERT_TRUE(db.open(seven, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
    for (const QString& sql : StoreSchema::version7CreateStatements() +
                                  QStringList{"INSERT INTO entries(uid,title,releaseID) VALUES(7,'Seven','mb-7')",
                                              "PRAGMA user_version=7"})
      ASSERT_TRUE(db.exec(sql)) << qPrintable(sql);
  }
  {
    Store store;
    ASSERT_TRUE(store.open(seven).ok());
    Entry* entry = store.entryWithUID(7);
    EXPECT_EQ(entry->stringValue("releaseID"), "mb-7");
    EXPECT_FALSE(entry->value("mediaCondition").isValid());
    EXPECT_TRUE(entry->setValue("mediaCondition", "Very Good Plus (VG+)"));
    EXPECT_TRUE(entry->setValue("discogsReleaseID", "4620147"));
    ASSERT_TRUE(store.save());
  }
  EXPECT_EQ(layoutOf(seven), created);
  EXPECT_EQ(versionOf(seven), 8);
  EXPECT_EQ(versionOf(seven + ".version7"), 7);
  {
    Store store;
    ASSERT_TRUE(store.open(seven).ok());
    EXPECT_EQ(store.entryWithUID(7)->stringValue("mediaCondition"), "Very Good Plus (VG+)");
    EXPECT_EQ(store.entryWithUID(7)->stringValue("discogsReleaseID"), "4620147");
  }
}

TEST_F(StoreTest, AnUpgradeThatCannotBeMadeLosesNothing) {
  // A file that already has a column of a name version 6 adds: the step fails and is undone.
  writeVersion5(path(), {"ALTER TABLE entries ADD COLUMN musicBrainzDiscID TEXT"});
  const QByteArray before = fileHash(path());
  Store store;
  const auto result = store.open(path());
  EXPECT_EQ(result.status, Store::OpenStatus::MigrationFailed);
  EXPECT_TRUE(result.message.contains("left as it was")) << qPrintable(result.message);
  EXPECT_TRUE(result.message.contains("musicBrainzDiscID")) << qPrintable(result.message);
  EXPECT_FALSE(store.isOpen());
  EXPECT_EQ(fileHash(path()), before);
  EXPECT_EQ(versionOf(path()), 5);

  // A file whose pages are broken is not touched, nor copied.
  const QString broken = dir.filePath("Broken.sqlite");
  QStringList many;
  for (int i = 0; i < 300; ++i)
    many << QStringLiteral("INSERT INTO entries(uid,title) VALUES(%1,'%2')").arg(100 + i).arg(QString(200, QChar('a' + i % 26)));
  writeVersion5(broken, many);
  {
    SqliteDatabase db;  // folds the log into the file, so the damage below is what a reader sees
    ASSERT_TRUE(db.open(broken, SQLITE_OPEN_READWRITE));
    ASSERT_TRUE(db.exec("PRAGMA wal_checkpoint(TRUNCATE)"));
    ASSERT_TRUE(db.exec("PRAGMA journal_mode=DELETE"));
  }
  {
    QFile f(broken);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    ASSERT_GT(f.size(), 16 * 4096);
    f.seek(f.size() - 3 * 4096);
    f.write(QByteArray(4096, '\xff'));
  }
  const QByteArray damaged = fileHash(broken);
  Store second;
  const auto refused = second.open(broken);
  EXPECT_EQ(refused.status, Store::OpenStatus::Damaged) << qPrintable(refused.message);
  EXPECT_TRUE(refused.message.contains("damaged")) << qPrintable(refused.message);
  EXPECT_EQ(fileHash(broken), damaged);
  EXPECT_FALSE(QFile::exists(broken + ".version5"));
}

TEST_F(StoreTest, FilesThatAreNotCataloguesAreRefusedAndLeftAlone) {
  const QString text = dir.filePath("notes.sqlite");
  {
    QFile f(text);
    f.open(QIODevice::WriteOnly);
    f.write("These are my notes, not a database.\n");
  }
  const QString foreign = dir.filePath("other.sqlite");
  const QString newer = dir.filePath("newer.sqlite");
  sqlite3* db = nullptr;
  sqlite3_open(foreign.toUtf8().constData(), &db);
  sqlite3_exec(db, "CREATE TABLE songs(x)", nullptr, nullptr, nullptr);
  sqlite3_close(db);
  sqlite3_open(newer.toUtf8().constData(), &db);
  sqlite3_exec(db, "CREATE TABLE entries(uid); PRAGMA user_version=9", nullptr, nullptr, nullptr);
  sqlite3_close(db);

  const struct {
    QString path;
    Store::OpenStatus status;
  } cases[] = {{text, Store::OpenStatus::NotACatalogue},
               {foreign, Store::OpenStatus::NotACatalogue},
               {newer, Store::OpenStatus::TooNew},
               {dir.path(), Store::OpenStatus::CannotOpen}};
  for (const auto& c : cases) {
    const QByteArray before = QFileInfo(c.path).isFile() ? fileHash(c.path) : QByteArray();
    Store store;
    const auto result = store.open(c.path);
    EXPECT_EQ(result.status, c.status) << qPrintable(c.path);
    EXPECT_FALSE(result.message.isEmpty());
    EXPECT_FALSE(store.isOpen());
    if (!before.isEmpty()) {
      EXPECT_EQ(fileHash(c.path), before) << qPrintable(c.path);
    }
    if (c.path == newer) {
      EXPECT_TRUE(
          result.message.endsWith("was written by a newer version of Discary (catalogue version 9); this "
                                  "version reads up to catalogue version 8."))
          << qPrintable(result.message);
    }
  }
  EXPECT_TRUE(QDir(dir.path()).entryList({"*.version*"}).isEmpty());
}

TEST_F(StoreTest, ReadOnlyCatalogueIsRefusedUntouched) {
  {
    Store store;
    ASSERT_TRUE(store.open(path()).ok());
    store.insertEntry()->setValue("title", "Kept");
    ASSERT_TRUE(store.save());
  }
  QFile::setPermissions(path(), QFileDevice::ReadOwner | QFileDevice::ReadUser);
  if (QFileInfo(path()).isWritable()) GTEST_SKIP() << "running as a user who can write anything";
  const QByteArray before = fileHash(path());
  Store store;
  EXPECT_EQ(store.open(path()).status, Store::OpenStatus::ReadOnly);
  EXPECT_EQ(fileHash(path()), before);
}

TEST(EntryTest, UnknownKeysAreReportedAndDerivedValuesAnswer) {
  Entry e(7);
  EXPECT_FALSE(e.value("notAKey").isValid());
  EXPECT_FALSE(e.setValue("uid", 9));
  EXPECT_EQ(e.value("uid").toLongLong(), 7);
  e.setValue("myRating", 3);
  EXPECT_TRUE(e.value("rated").toBool());
  EXPECT_TRUE(e.setValue("releaseDate", ""));
  EXPECT_FALSE(e.value("releaseDate").isValid());
  EXPECT_EQ(e.countOfSet("tracksSet"), 0);
}

}  // namespace
