#include "Disc4ToDisc5.h"
#include "Entry.h"
#include "MigrationManager.h"
#include "SqliteDatabase.h"
#include "SqliteStatement.h"
#include "Store.h"
#include "StoreSchema.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QByteArray fileHash(const QString& path) {
  QFile f(path);
  f.open(QIODevice::ReadOnly);
  return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

// The version a file says it is, read without opening it as a catalogue; -1 when unreadable.
qint64 versionOf(const QString& path) {
  SqliteDatabase db;
  return db.open(path, SQLITE_OPEN_READONLY) ? db.userVersion() : -1;
}

// A version-4 catalogue as the old program wrote it: dates in seconds since 2001.
void writeVersion4(const QString& path) {
  SqliteDatabase db;
  ASSERT_TRUE(db.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
  for (const QString& sql : StoreSchema::version4CreateStatements()) ASSERT_TRUE(db.exec(sql)) << qPrintable(db.errorMessage());
  const QStringList rows = {
      "INSERT INTO entries(uid,title,format,numberOfTracks,releaseDate,status) VALUES(1,'Abbey Road','LP',NULL,-978307200.0 + 0,1)",
      "INSERT INTO entries(uid,title,format,numberOfTracks) VALUES(2,'Empty Box','Cassette','7')",
      "INSERT INTO tracks(entry_uid,name,position,duration,artist) VALUES(1,'Come Together',0,'4:20','The Beatles')",
      "INSERT INTO tracks(entry_uid,name,position,duration) VALUES(1,'Something',1,'3:03')",
      "INSERT INTO tracks(entry_uid,name,position,duration) VALUES(1,'Maxwell',2,'3:27')",
      "INSERT INTO links(entry_uid,name,url,type) VALUES(1,'Review','https://example.org/r','review')",
      "INSERT INTO links(entry_uid,name,url,type) VALUES(1,'Site','https://example.org/s',NULL)",
      "INSERT INTO collections(id,name) VALUES(10,'Sixties')",
      "INSERT INTO collection_entries(collection_id,entry_uid) VALUES(10,1)",
      "PRAGMA user_version=4",
  };
  for (const QString& sql : rows) ASSERT_TRUE(db.exec(sql)) << qPrintable(sql) << qPrintable(db.errorMessage());
}

TEST(MigrationTest, Version4CatalogueGainsTrackCountsAndFormatAndKeepsItsData) {
  QTemporaryDir dir;
  const QString path = dir.filePath("Old.sqlite");
  writeVersion4(path);
  {
  Store store;
  store.setMigrationPolicy(std::make_shared<Disc4ToDisc5>());
  const auto result = store.open(path);
  ASSERT_TRUE(result.ok()) << qPrintable(result.message);
  EXPECT_TRUE(QFile::exists(path + ".version4"));

  Entry* abbey = store.entryWithUID(1);
  Entry* box = store.entryWithUID(2);
  ASSERT_TRUE(abbey && box);
  EXPECT_EQ(abbey->value("numberOfTracks").toString(), "3");
  EXPECT_EQ(abbey->value("format").toString(), "CD");  // overwritten whatever it was
  EXPECT_EQ(box->value("numberOfTracks").toString(), "7");  // no tracks: left as it was
  EXPECT_EQ(box->value("format").toString(), "CD");
  EXPECT_EQ(abbey->value("releaseDate").toDateTime(), QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC));
  EXPECT_EQ(abbey->value("status").toLongLong(), 1);
  const auto tracks = abbey->tracksSortedByPosition();
  ASSERT_EQ(tracks.size(), 3u);
  EXPECT_EQ(tracks[0]->value("artist").toString(), "The Beatles");
  const auto links = abbey->linksSortedByPosition();
  ASSERT_EQ(links.size(), 2u);
  EXPECT_EQ(links[1]->value("position").toLongLong(), 1);
  EXPECT_EQ(store.collectionNamesOf(*abbey), QStringList{"Sixties"});

  }
  // Through the whole chain, a copy kept before each step.
  EXPECT_EQ(versionOf(path), 8);
  EXPECT_EQ(versionOf(path + ".version5"), 5);
  EXPECT_EQ(versionOf(path + ".version6"), 6);
  EXPECT_EQ(versionOf(path + ".version7"), 7);
  // A second open finds the current version and changes nothing more.
  Store again;
  ASSERT_TRUE(again.open(path).ok());
  EXPECT_EQ(again.entries().size(), 2u);
}

TEST(MigrationTest, TheBackupHoldsWhatSatInTheWriteAheadLog) {
  QTemporaryDir dir;
  const QString path = dir.filePath("Old.sqlite");
  writeVersion4(path);
  // The old program's last save, still in the log: this connection stays open and never checkpoints.
  SqliteDatabase writer;
  ASSERT_TRUE(writer.open(path, SQLITE_OPEN_READWRITE));
  ASSERT_TRUE(writer.exec("PRAGMA journal_mode=WAL"));
  ASSERT_TRUE(writer.exec("PRAGMA wal_autocheckpoint=0"));
  ASSERT_TRUE(writer.exec("INSERT INTO entries(uid,title) VALUES(3,'Late Arrival')"));
  ASSERT_TRUE(writer.exec("INSERT INTO tracks(entry_uid,name) VALUES(3,'Last Track')"));
  {
    Store store;
    store.setMigrationPolicy(std::make_shared<Disc4ToDisc5>());
    ASSERT_TRUE(store.open(path).ok());
    EXPECT_NE(store.entryWithUID(3), nullptr);
  }
  SqliteDatabase backup;
  ASSERT_TRUE(backup.open(path + ".version4", SQLITE_OPEN_READWRITE));
  EXPECT_EQ(backup.userVersion(), 4);
  SqliteStatement rows(backup.handle(), "SELECT (SELECT group_concat(title) FROM (SELECT title FROM entries ORDER BY uid)),"
                                        " (SELECT count(*) FROM tracks)");
  ASSERT_EQ(rows.step(), SQLITE_ROW);
  EXPECT_EQ(rows.text(0), "Abbey Road,Empty Box,Late Arrival");
  EXPECT_EQ(rows.int64(1), 4);
}

TEST(MigrationTest, AFailedMigrationLeavesTheOldFileAsItWas) {
  QTemporaryDir dir;
  const QString path = dir.filePath("Broken.sqlite");
  writeVersion4(path);
  {
    SqliteDatabase db;
    ASSERT_TRUE(db.open(path, SQLITE_OPEN_READWRITE));
    ASSERT_TRUE(db.exec("DROP TABLE links"));
  }
  const QByteArray before = fileHash(path);
  Store store;
  store.setMigrationPolicy(std::make_shared<Disc4ToDisc5>());
  const auto result = store.open(path);
  EXPECT_EQ(result.status, Store::OpenStatus::MigrationFailed);
  EXPECT_FALSE(result.message.isEmpty());
  EXPECT_EQ(fileHash(path), before);

  // A backup that cannot be written stops the conversion before it starts.
  const QString unbackedPath = dir.filePath("Unbacked.sqlite");
  writeVersion4(unbackedPath);
  ASSERT_TRUE(QDir().mkpath(unbackedPath + ".version4/in the way"));
  const QByteArray unbacked = fileHash(unbackedPath);
  Store second;
  const auto refused = second.open(unbackedPath);
  EXPECT_EQ(refused.status, Store::OpenStatus::MigrationFailed);
  EXPECT_TRUE(refused.message.contains("back up")) << qPrintable(refused.message);
  EXPECT_EQ(fileHash(unbackedPath), unbacked);
  EXPECT_EQ(versionOf(unbackedPath), 4);
}

TEST(MigrationTest, AChainStoppedHalfWayKeepsTheStepsItMadeAndGoesOnLater) {
  QTemporaryDir dir;
  const QString path = dir.filePath("Old.sqlite");
  writeVersion4(path);
  // The copy before the second step cannot be written: the chain stops at version 5.
  ASSERT_TRUE(QDir().mkpath(path + ".version5/in the way"));
  {
    Store store;
    store.setMigrationPolicy(std::make_shared<Disc4ToDisc5>());
    const auto result = store.open(path);
    EXPECT_EQ(result.status, Store::OpenStatus::MigrationFailed);
    EXPECT_TRUE(result.message.contains("back up")) << qPrintable(result.message);
    EXPECT_TRUE(result.message.contains(path + ".version4")) << qPrintable(result.message);
    EXPECT_FALSE(store.isOpen());
  }
  EXPECT_EQ(versionOf(path), 5);
  ASSERT_TRUE(QDir(path + ".version5").removeRecursively());
  Store store;
  store.setMigrationPolicy(std::make_shared<Disc4ToDisc5>());
  const auto result = store.open(path);
  ASSERT_TRUE(result.ok()) << qPrintable(result.message);
  ASSERT_NE(store.entryWithUID(1), nullptr);
  EXPECT_EQ(store.entryWithUID(1)->value("numberOfTracks").toString(), "3");
  EXPECT_EQ(store.entryWithUID(1)->tracksSortedByPosition().size(), 3u);
  EXPECT_EQ(versionOf(path), 8);
}

TEST(MigrationTest, PolicyWritesNothingWhenTheInheritedStepFails) {
  QTemporaryDir dir;
  const QString path = dir.filePath("Old.sqlite");
  writeVersion4(path);
  SqliteDatabase db;
  ASSERT_TRUE(db.open(path, SQLITE_OPEN_READWRITE));
  MigrationManager manager(db, std::make_shared<Disc4ToDisc5>());
  Entry stranger(999);  // made from no source row
  stranger.setPrimitiveValue("format", "Vinyl");
  Disc4ToDisc5 policy;
  QString error;
  EXPECT_FALSE(policy.createRelationshipsForDestinationInstance(stranger, {"CDToCD", "CD", "CD"}, manager, &error));
  EXPECT_FALSE(error.isEmpty());
  EXPECT_EQ(stranger.value("format").toString(), "Vinyl");
  EXPECT_FALSE(stranger.value("numberOfTracks").isValid());
}

}  // namespace
