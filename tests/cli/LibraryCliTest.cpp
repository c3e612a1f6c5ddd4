#include "CliRunner.h"

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
