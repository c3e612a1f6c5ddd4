#include "Entry.h"
#include "Store.h"

#include <QCryptographicHash>
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
  EXPECT_GT(store.insertEntry()->uid(), first);
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
  }
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
