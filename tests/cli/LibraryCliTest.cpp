#include "CliRunner.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString data = QStringLiteral(DISCARY_TEST_DATA);

class LibraryCliTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  CliRunner cli{dir.path()};
  using Outcome = CliRunner::Outcome;
  Outcome discary(const QStringList& args) { return cli.run(args); }
};

}  // namespace

TEST_F(LibraryCliTest, TagsPrintTrackDictionariesWithPathAndPictureSize) {
  const QString m4a = data + "/audio/music-metadata_issue-79.m4a";
  const Outcome o = discary({"--json", "tags", m4a, data + "/audio/mutagen_emptyfile.mp3"});
  ASSERT_EQ(o.status, 0) << o.err.constData();
  const QJsonArray tags = QJsonDocument::fromJson(o.out).array();
  ASSERT_EQ(tags.size(), 2);
  EXPECT_EQ(tags[0]["path"].toString(), m4a);
  EXPECT_EQ(tags[0]["Name"].toString(), "Uprising");
  EXPECT_EQ(tags[0]["Total Time"].toInt(), 302000);
  EXPECT_EQ(tags[0]["image"].toObject(), (QJsonObject{{"width", 136}, {"height", 135}}));
  EXPECT_EQ(tags[1].toObject().keys(), QStringList{"path"});

  const Outcome missing = discary({"tags", dir.filePath("nowhere.mp3")});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(discary({"tags"}).status, 2);
}

TEST_F(LibraryCliTest, LibraryPlaylistsAndImport) {
  const QString xml = data + "/library-xml/beets_itunes_library_unix.xml";
  const Outcome lists = discary({"--json", "library", "playlists", "--xml", xml});
  ASSERT_EQ(lists.status, 0) << lists.err.constData();
  const QJsonArray playlists = QJsonDocument::fromJson(lists.out).array();
  ASSERT_EQ(playlists.size(), 2);
  EXPECT_EQ(playlists[1]["name"].toString(), "Music");

  const Outcome imported = discary({"--json", "library", "import", "--xml", xml, "--playlist-index", "1"});
  ASSERT_EQ(imported.status, 0) << imported.err.constData();
  const QJsonObject result = QJsonDocument::fromJson(imported.out).object();
  EXPECT_TRUE(result["results"].toArray()[0].toObject()["ok"].toBool());
  EXPECT_EQ(result["entries"].toArray().size(), 1);
  EXPECT_EQ(result["collections"].toArray(), QJsonArray{"None"});

  EXPECT_EQ(discary({"library", "import", "--xml", xml}).status, 2);  // no playlist named
  EXPECT_EQ(discary({"library", "import", "--xml", xml, "--playlist-index", "9"}).status, 1);
  EXPECT_EQ(discary({"library", "playlists", "--xml", dir.filePath("none.xml")}).status, 1);
  EXPECT_EQ(discary({"library", "frobnicate"}).status, 2);
}

TEST_F(LibraryCliTest, ImportOfTheLibraryFileMakesACollectionNamedAfterIt) {
  const QString xml = dir.filePath("My Library.xml");
  ASSERT_TRUE(QFile::copy(data + "/library-xml/beets_itunes_library_unix.xml", xml));
  const Outcome imported = discary({"--json", "import", xml});
  ASSERT_EQ(imported.status, 0) << imported.err.constData();
  const QJsonObject result = QJsonDocument::fromJson(imported.out).object();
  EXPECT_EQ(result["collections"].toArray(), QJsonArray{"My Library"});
  const Outcome listed = discary({"--json", "list", "--collection", "My Library"});
  ASSERT_EQ(listed.status, 0) << listed.err.constData();
  const QJsonArray entries = QJsonDocument::fromJson(listed.out).array();
  ASSERT_EQ(entries.size(), 1);
  EXPECT_EQ(entries[0]["title"].toString(), "An Awesome Wave");
  EXPECT_EQ(entries[0]["uid"], result["entries"].toArray()[0]);
}

TEST_F(LibraryCliTest, TracksInTheRhythmboxLibraryArePlayLinksOnTheEntryPage) {
  QDir().mkpath(dir.filePath("data/rhythmbox"));
  ASSERT_TRUE(QFile::copy(data + "/players/rhythmdb.xml", dir.filePath("data/rhythmbox/rhythmdb.xml")));
  cli.environment = QProcessEnvironment::systemEnvironment();
  cli.environment.insert("XDG_DATA_HOME", dir.filePath("data"));
  cli.environment.insert("XDG_CONFIG_HOME", dir.filePath("config"));
  ASSERT_EQ(discary({"add", "title=Mingus Ah Um", "artist=Charles Mingus", "--track", "name=Fables of Faubus;duration=8:10",
                     "--track", "name=Pussy Cat Dues;duration=9:14"})
                .status,
            0);
  const Outcome page = discary({"show", "Mingus Ah Um", "--webview"});
  ASSERT_EQ(page.status, 0) << page.err.constData();
  EXPECT_TRUE(page.out.contains("<a href=\"folio://playTrackNamed=Fables%20of%20Faubus&amp;artist=") ||
              page.out.contains("<a href=\"folio://playTrackNamed=Fables%20of%20Faubus\">"))
      << page.out.constData();
  EXPECT_FALSE(page.out.contains("playTrackNamed=Pussy"));
  EXPECT_FALSE(discary({"show", "Mingus Ah Um", "--html"}).out.contains("folio://"));  // links only in the page view

  // A library chosen by the user replaces the player found.
  ASSERT_EQ(discary({"settings", "set", "Music Library", dir.filePath("elsewhere.db")}).status, 0);
  EXPECT_FALSE(discary({"show", "Mingus Ah Um", "--webview"}).out.contains("folio://"));
}
