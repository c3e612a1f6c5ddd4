#include "FakeWindowSystem.h"
#include "LinuxPlatform.h"
#include "MyController.h"
#include "PlayerDatabaseLibrary.h"
#include "PlayerLibraries.h"
#include "RhythmboxLibrary.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "SqliteDatabase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString rhythmdb = QStringLiteral(DISCARY_TEST_DATA "/players/rhythmdb.xml");

// Sets XDG_DATA_HOME and XDG_CONFIG_HOME to folders of the test for its lifetime.
class PlayerLibraryTest : public ::testing::Test {
 protected:
  QTemporaryDir home;
  QByteArray oldData = qgetenv("XDG_DATA_HOME"), oldConfig = qgetenv("XDG_CONFIG_HOME");
  void SetUp() override {
    qputenv("XDG_DATA_HOME", home.filePath("data").toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
  }
  void TearDown() override {
    restore("XDG_DATA_HOME", oldData);
    restore("XDG_CONFIG_HOME", oldConfig);
  }
  static void restore(const char* name, const QByteArray& value) {
    if (value.isNull())
      qunsetenv(name);
    else
      qputenv(name, value);
  }
  // A database made with the statements given, at path (its folders made too).
  static QString database(const QString& path, const QStringList& statements) {
    QDir().mkpath(QFileInfo(path).path());
    SqliteDatabase db;
    EXPECT_TRUE(db.open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
    for (const QString& sql : statements) EXPECT_TRUE(db.exec(sql)) << qPrintable(sql) << qPrintable(db.errorMessage());
    return path;
  }
  QString strawberry() const {
    return database(home.filePath("data/strawberry/strawberry/strawberry.db"),
                    {"CREATE TABLE songs (title TEXT, album TEXT, artist TEXT, albumartist TEXT, track INTEGER, disc INTEGER,"
                     " year INTEGER, genre TEXT, compilation_effective INTEGER, composer TEXT, length INTEGER, bitrate INTEGER,"
                     " samplerate INTEGER, url TEXT, unavailable INTEGER, rating REAL)",
                     "INSERT INTO songs VALUES ('So What', 'Kind of Blue', 'Miles Davis', '', 1, 1, 1959, 'Jazz', 0, '',"
                     " 562000000000, 320, 44100, 'file:///music/So%20What.flac', 0, 0.8)",
                     "INSERT INTO songs VALUES ('Blue in Green', 'Kind of Blue', 'Miles Davis', NULL, -1, 0, -1, NULL, 1,"
                     " NULL, -1, -1, -1, 'file:///music/Blue.flac', 0, -1)",
                     "INSERT INTO songs VALUES ('Gone', 'Kind of Blue', 'Miles Davis', '', 3, 1, 1959, '', 0, '', 1, 1, 1,"
                     " 'file:///music/gone.flac', 1, 0)"});
  }
  QString clementine() const {
    return database(home.filePath("config/Clementine/clementine.db"),
                    {"CREATE TABLE songs (title TEXT, album TEXT, artist TEXT, track INTEGER, bpm REAL, length INTEGER,"
                     " filename BLOB, effective_compilation INTEGER, unavailable INTEGER)",
                     "INSERT INTO songs VALUES ('Freddie Freeloader', 'Kind of Blue', 'Miles Davis', 2, 120.4,"
                     " 589000000000, CAST('file:///music/Freddie.flac' AS BLOB), 0, 0)",
                     "INSERT INTO songs VALUES ('Old', 'Old Album', 'Someone', 1, 0, 0, '/music/old one.mp3', 0, 0)"});
  }
};

TEST_F(PlayerLibraryTest, rhythmboxSongsBecomeTrackDictionaries) {
  const QVariantList tracks = RhythmboxLibrary::read(rhythmdb);
  ASSERT_EQ(tracks.size(), 2);  // no radio, podcast or hidden file
  const QVariantMap first = tracks[0].toMap();
  EXPECT_EQ(first["Name"].toString(), "Better Git It in Your Soul");
  EXPECT_EQ(first["Album"].toString(), "Mingus Ah Um");
  EXPECT_EQ(first["Album Artist"].toString(), "Charles Mingus");
  EXPECT_EQ(first["Total Time"].toLongLong(), 440000);
  EXPECT_EQ(first["Track Number"].toLongLong(), 1);
  EXPECT_EQ(first["Year"].toLongLong(), 1959);
  EXPECT_EQ(first["Rating"].toLongLong(), 80);
  EXPECT_EQ(first["Date Added"].toDateTime(), QDateTime::fromSecsSinceEpoch(1262304000, Qt::UTC));
  EXPECT_TRUE(first["Location"].toString().startsWith("file:///home/user/Music/Mingus%20Ah%20Um/01"));
  const QVariantMap second = tracks[1].toMap();
  // Out-of-range stars and dates are left out, not guessed.
  EXPECT_FALSE(second.contains("Rating"));
  EXPECT_FALSE(second.contains("Year"));
  EXPECT_EQ(second["Track Number"].toLongLong(), 3);
}

TEST_F(PlayerLibraryTest, aBrokenRhythmboxFileGivesWhatWasReadWhole) {
  QFile file(rhythmdb);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray whole = file.readAll();
  QTemporaryDir dir;
  auto written = [&](const QByteArray& bytes) {
    QFile out(dir.filePath("rhythmdb.xml"));
    out.open(QIODevice::WriteOnly | QIODevice::Truncate);
    out.write(bytes);
    out.close();
    return out.fileName();
  };
  // Cut in the middle of the second song: only the first is whole.
  const QVariantList cut = RhythmboxLibrary::read(written(whole.left(whole.indexOf("Fables of") + 4)));
  ASSERT_EQ(cut.size(), 1);
  EXPECT_EQ(cut[0].toMap()["Name"].toString(), "Better Git It in Your Soul");
  EXPECT_TRUE(RhythmboxLibrary::read(written("<plist><dict/></plist>")).isEmpty());
  EXPECT_TRUE(RhythmboxLibrary::read(written(QByteArray(4096, '\xff'))).isEmpty());
  EXPECT_TRUE(RhythmboxLibrary::read(written("<rhythmdb><entry type=\"song\"><title>" + QByteArray(100000, '<'))).isEmpty());
  EXPECT_TRUE(RhythmboxLibrary::read(dir.filePath("missing.xml")).isEmpty());
}

TEST_F(PlayerLibraryTest, strawberryAndClementineDatabasesAreReadReadOnly) {
  const QString path = strawberry();
  const QVariantList tracks = PlayerDatabaseLibrary::read(path);
  ASSERT_EQ(tracks.size(), 2);  // the unavailable file is left out
  const QVariantMap first = tracks[0].toMap();
  EXPECT_EQ(first["Name"].toString(), "So What");
  EXPECT_EQ(first["Total Time"].toLongLong(), 562000);
  EXPECT_EQ(first["Year"].toLongLong(), 1959);
  EXPECT_EQ(first["Rating"].toLongLong(), 80);
  EXPECT_EQ(first["Sample Rate"].toLongLong(), 44100);
  EXPECT_EQ(first["Location"].toString(), "file:///music/So%20What.flac");
  EXPECT_FALSE(first["Compilation"].toBool());
  EXPECT_FALSE(first.contains("Album Artist"));  // empty is absent
  // The player's "unset" values (-1, NULL) are absent, not numbers.
  const QVariantMap second = tracks[1].toMap();
  EXPECT_EQ(second.keys(), (QStringList{"Album", "Artist", "Compilation", "Location", "Name"}));
  EXPECT_TRUE(second["Compilation"].toBool());

  const QVariantList old = PlayerDatabaseLibrary::read(clementine());
  ASSERT_EQ(old.size(), 2);
  EXPECT_EQ(old[0].toMap()["Location"].toString(), "file:///music/Freddie.flac");
  EXPECT_EQ(old[0].toMap()["BPM"].toLongLong(), 120);
  EXPECT_EQ(old[0].toMap()["Total Time"].toLongLong(), 589000);
  EXPECT_EQ(old[1].toMap()["Location"].toString(), "file:///music/old%20one.mp3");

  // The player holding a write lock does not keep the library from being read, nor is the
  // database changed by the read.
  SqliteDatabase player;
  ASSERT_TRUE(player.open(path, SQLITE_OPEN_READWRITE));
  ASSERT_TRUE(player.exec("BEGIN IMMEDIATE"));
  ASSERT_TRUE(player.exec("INSERT INTO songs (title) VALUES ('Being written')"));
  EXPECT_EQ(PlayerDatabaseLibrary::read(path).size(), 2);
  ASSERT_TRUE(player.exec("COMMIT"));
  EXPECT_EQ(PlayerDatabaseLibrary::read(path).size(), 3);
}

TEST_F(PlayerLibraryTest, hostileDatabasesGiveNoTracks) {
  QTemporaryDir dir;
  EXPECT_TRUE(PlayerDatabaseLibrary::read(dir.filePath("missing.db")).isEmpty());
  EXPECT_FALSE(QFileInfo::exists(dir.filePath("missing.db")));  // never made by reading
  QFile notSqlite(dir.filePath("fake.db"));
  ASSERT_TRUE(notSqlite.open(QIODevice::WriteOnly));
  notSqlite.write("SQLite format 3" + QByteArray(200, '\0') + QByteArray(4000, 'x'));
  notSqlite.close();
  EXPECT_TRUE(PlayerDatabaseLibrary::read(notSqlite.fileName()).isEmpty());
  EXPECT_TRUE(PlayerLibraries::read(notSqlite.fileName()).isEmpty());
  EXPECT_TRUE(PlayerDatabaseLibrary::read(database(dir.filePath("other.db"), {"CREATE TABLE albums (x)"})).isEmpty());
  EXPECT_TRUE(PlayerDatabaseLibrary::read(database(dir.filePath("odd.db"), {"CREATE TABLE songs (foo, bar)",
                                                                               "INSERT INTO songs VALUES (1, 2)"}))
                  .isEmpty());
  // Values of the wrong type are read as what they are meant to be, or left out.
  const QVariantList odd = PlayerDatabaseLibrary::read(
      database(dir.filePath("types.db"), {"CREATE TABLE songs (title, track, length, rating)",
                                          "INSERT INTO songs VALUES (x'00ff', 'seven', 'long', 'high')"}));
  ASSERT_EQ(odd.size(), 1);
  EXPECT_EQ(odd[0].toMap().keys(), (QStringList{"Name", "Rating"}));
}

TEST_F(PlayerLibraryTest, theFirstPlayerFoundIsReadUnlessTheUserChoseALibrary) {
  EXPECT_TRUE(PlayerLibraries::find().isEmpty());
  const QString clementinePath = clementine();
  EXPECT_EQ(PlayerLibraries::find(), clementinePath);
  strawberry();
  const QString rhythmboxPath = home.filePath("data/rhythmbox/rhythmdb.xml");
  QDir().mkpath(QFileInfo(rhythmboxPath).path());
  ASSERT_TRUE(QFile::copy(rhythmdb, rhythmboxPath));
  EXPECT_EQ(PlayerLibraries::find(), rhythmboxPath);

  Settings settings(home.filePath("discary.conf"));
  FakeWindowSystem windowSystem;
  LinuxPlatform platform;
  MyController controller(settings, windowSystem, platform);
  auto namesOf = [](const QVariantList& tracks) {
    QStringList names;
    for (const QVariant& t : tracks) names << t.toMap().value("Name").toString();
    return names;
  };
  EXPECT_EQ(namesOf(controller.musicLibraryTracks({}, {})).first(), "Better Git It in Your Soul");
  EXPECT_EQ(namesOf(controller.musicLibraryTracks(clementinePath, {})).first(), "Freddie Freeloader");
  const QString xml = QStringLiteral(DISCARY_TEST_DATA "/library-xml/beets_itunes_library_unix.xml");
  const QStringList fromXml = namesOf(controller.musicLibraryTracks({}, xml));
  EXPECT_EQ(fromXml.size(), 3);
  EXPECT_EQ(namesOf(controller.musicLibraryTracks(xml, {})), fromXml);
  // A chosen file that is gone leaves the library empty rather than some other player's.
  EXPECT_TRUE(controller.musicLibraryTracks(home.filePath("gone.db"), {}).isEmpty());
}

}  // namespace
