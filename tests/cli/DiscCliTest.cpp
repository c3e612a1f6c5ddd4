#include "CannedCddbServer.h"
#include "CannedHttpServer.h"
#include "CannedMusicBrainzServer.h"
#include "CliRunner.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

const QString data = QStringLiteral(DISCARY_TEST_DATA "/disc/");

using Outcome = CliRunner::Outcome;

class DiscCliTest : public ::testing::Test {
 protected:
  CannedCddbServer server;
  QTemporaryDir dir;
  CliRunner cli{dir.path()};

  void SetUp() override {
    server.queryReply = "211 inexact\nrock 9a0bed0d Chagall Guevara / Chagall Guevara\nmisc 9a0bed0d Other / Other\n.\n";
    server.readCategories = {"rock"};
    // CDDB alone, as before MusicBrainz; the tests of the default sources unset this.
    ASSERT_EQ(discary({"settings", "set", "Lookup Sources", "[\"CDDB\"]"}).status, 0);
  }
  Outcome discary(const QStringList& args) { return cli.run(args); }
  QString toc(const char* name) const { return data + QLatin1String(name); }
};

TEST_F(DiscCliTest, discidReadsTheSharedTableOfContentsFiles) {
  const Outcome plain = discary({"--json", "discid", "--toc", toc("derived_6a09f20a_10tracks.TOC.plist")});
  ASSERT_EQ(plain.status, 0) << plain.err.constData();
  const QJsonObject id = plain.object();
  EXPECT_EQ(id["discID"].toString(), "6a09f20a");
  EXPECT_EQ(id["musicBrainzDiscID"].toString(), "2_MewMz8utJB_yLXrY72m9teo_A-");
  EXPECT_EQ(id["totalTracks"].toInt(), 10);
  EXPECT_EQ(id["totalSeconds"].toInt(), 2546);
  EXPECT_TRUE(id["offsets"].toString().startsWith("150+16638+"));
  EXPECT_EQ(id["durations"].toArray().size(), 10);
  EXPECT_EQ(id["lookupDurations"].toArray().size(), 11);
  EXPECT_EQ(id["lookupDurations"].toArray().first().toString(), "0:00");
  EXPECT_EQ(discary({"--json", "discid", "--toc", toc("derived_c60af50d_enhanced-cd-2-sessions.TOC.plist")}).object()["discID"],
            "b40a310c");

  QTemporaryDir volume;
  QFile::copy(toc("derived_9d09130b_11tracks.TOC.plist"), volume.filePath(".TOC.plist"));
  EXPECT_TRUE(discary({"discid", "--volume", volume.path()}).out.startsWith("9d09130b\nMusicBrainz: aHTAZe.MDUz3OgyV0zQLSQiO.Js-\n"));

  EXPECT_EQ(discary({"discid", "--toc", dir.filePath("missing")}).status, 1);
  EXPECT_EQ(discary({"discid", "--toc", data + "cddb-file_9a0bed0d.xmcd"}).status, 1);
  EXPECT_EQ(discary({"discid", "--toc", "a", "--volume", "b"}).status, 2);
  EXPECT_EQ(discary({"discid", "--toc"}).status, 2);
}

TEST_F(DiscCliTest, lookupQueriesAndReadsThroughTheServerOfTheRun) {
  const Outcome several = discary({"--json", "--server", server.address(), "lookup", "--toc",
                                   toc("derived_9d09130b_11tracks.TOC.plist")});
  EXPECT_EQ(several.status, 0) << several.err.constData();
  EXPECT_EQ(several.object()["keys"].toArray(), (QJsonArray{"rock+9a0bed0d", "misc+9a0bed0d"}));
  EXPECT_FALSE(several.object().contains("result"));

  const Outcome picked = discary({"--json", "--server", server.address(), "lookup", "--toc",
                                  toc("derived_9d09130b_11tracks.TOC.plist"), "--pick", "1"});
  EXPECT_EQ(picked.object()["result"].toObject()["title"].toString(), "Chagall Guevara");
  EXPECT_EQ(picked.object()["result"].toObject()["tracks"].toArray().size(), 13);
  EXPECT_EQ(discary({"--server", server.address(), "lookup", "--toc", toc("derived_9d09130b_11tracks.TOC.plist"),
                     "--pick", "3"}).status, 1);

  const Outcome read = discary({"--json", "--server", server.address(), "cddb", "read", "rock", "9a0bed0d"});
  EXPECT_EQ(read.object()["artist"].toString(), "Chagall Guevara");
  EXPECT_EQ(discary({"--server", server.address(), "cddb", "read", "jazz", "9a0bed0d"}).status, 1);
  const Outcome probe = discary({"--json", "--server", server.address(), "cddb", "probe", "9a0bed0d"});
  EXPECT_EQ(probe.object()["titles"].toArray(), QJsonArray{"rock"});
  EXPECT_EQ(discary({"cddb", "fetch"}).status, 2);

  const Outcome search = discary({"--json", "--server", server.address(), "websearch", "--artist", "Chagall", "--title", "G"});
  EXPECT_EQ(search.object()["titles"].toArray(), QJsonArray{"Chagall Guevara:Chagall Guevara"});
  EXPECT_EQ(server.requests().last().body, "page=1&words=Chagall+G&allcats=YES&grouping=none");
  EXPECT_EQ(discary({"websearch"}).status, 2);
}

TEST_F(DiscCliTest, scanAddsTheEntryAndAServerThatNeverAnswersFailsWithinTheTimeOut) {
  QTemporaryDir volume;
  QFile::copy(toc("derived_9d09130b_11tracks.TOC.plist"), volume.filePath(".TOC.plist"));
  server.queryReply = "200 rock 9a0bed0d Chagall Guevara / Chagall Guevara\n";
  const Outcome scanned = discary({"--json", "--server", server.address(), "scan", "--volume", volume.path()});
  ASSERT_EQ(scanned.status, 0) << scanned.err.constData();
  EXPECT_EQ(scanned.object()["title"].toString(), "Chagall Guevara");
  EXPECT_EQ(scanned.object()["tracks"].toArray().size(), 13);

  CannedHttpServer silent([](const CannedHttpServer::Request&) { return std::optional<QByteArray>(); });
  ASSERT_EQ(discary({"settings", "set", "CDDB Timeout", "1"}).status, 0);
  const Outcome unanswered = discary({"--json", "--server", silent.address(), "lookup", "--toc",
                                      toc("derived_9d09130b_11tracks.TOC.plist")});
  EXPECT_EQ(unanswered.status, 1);
  EXPECT_EQ(unanswered.object()["titles"].toArray(), QJsonArray());
}

TEST_F(DiscCliTest, theDefaultSourcesAskMusicBrainzFirstAndEachCanBeChosenAlone) {
  CannedMusicBrainzServer musicBrainz;
  ASSERT_EQ(discary({"settings", "unset", "Lookup Sources"}).status, 0);
  const QStringList services{"--server", server.address(), "--musicbrainz-server", musicBrainz.root(), "--cover-server",
                             musicBrainz.root()};
  const QStringList lookup{"lookup", "--toc", toc("derived_9d09130b_11tracks.TOC.plist")};
  const Outcome found = discary(QStringList{"--json"} + services + lookup);
  ASSERT_EQ(found.status, 0) << found.err.constData();
  EXPECT_EQ(found.object()["keys"].toArray(), QJsonArray{"c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f"});
  const QJsonObject result = found.object()["result"].toObject();
  EXPECT_EQ(result["label"].toString(), "Example Records");
  EXPECT_EQ(result["upc"].toString(), "0123456789012");
  EXPECT_EQ(result["musicBrainzDiscID"].toString(), "aHTAZe.MDUz3OgyV0zQLSQiO.Js-");
  EXPECT_EQ(result["coverImage"].toObject()["width"].toInt(), 300);
  EXPECT_TRUE(server.requests().isEmpty());

  const Outcome cddb = discary(QStringList{"--json"} + services + lookup + QStringList{"--source", "cddb"});
  EXPECT_EQ(cddb.object()["keys"].toArray(), (QJsonArray{"rock+9a0bed0d", "misc+9a0bed0d"}));
  EXPECT_EQ(musicBrainz.requests().size(), 2);  // the disc lookup and its cover, from the first run only
  EXPECT_EQ(discary(services + lookup + QStringList{"--source", "gnudb"}).status, 2);

  // MusicBrainz refuses: said on stderr, then CDDB answers.
  musicBrainz.slowDowns = 2;
  const Outcome refused = discary(QStringList{"--json"} + services + lookup);
  EXPECT_EQ(refused.status, 0);
  EXPECT_TRUE(refused.err.contains("MusicBrainz: HTTP status 503")) << refused.err.constData();
  EXPECT_EQ(refused.object()["keys"].toArray().size(), 2);

  const Outcome search = discary({"--json", "--musicbrainz-server", musicBrainz.root(), "websearch", "--site", "musicbrainz",
                                  "--barcode", "0123456789012"});
  EXPECT_EQ(search.object()["titles"].toArray().size(), 2);
  EXPECT_TRUE(QUrl::fromPercentEncoding(musicBrainz.requests().last().path).contains("barcode:\"0123456789012\""));
  EXPECT_EQ(discary({"websearch", "--barcode", "1"}).status, 2);  // freedb has no barcodes
  // A code whose check digit is wrong is not sent; one written in groups is sent as its digits.
  const qsizetype asked = musicBrainz.requests().size();
  const Outcome mistyped = discary({"--musicbrainz-server", musicBrainz.root(), "websearch", "--site", "musicbrainz",
                                    "--barcode", "0123456789013"});
  EXPECT_EQ(mistyped.status, 2);
  EXPECT_TRUE(mistyped.err.contains("check digit is 3, the other digits call for 2")) << mistyped.err.constData();
  EXPECT_EQ(musicBrainz.requests().size(), asked);
  const Outcome grouped = discary({"--json", "--musicbrainz-server", musicBrainz.root(), "websearch", "--site",
                                   "musicbrainz", "--barcode", "0 12345 67890 12"});
  EXPECT_EQ(grouped.status, 0) << grouped.err.constData();
  EXPECT_TRUE(QUrl::fromPercentEncoding(musicBrainz.requests().last().path).contains("barcode:\"0123456789012\""));
  EXPECT_EQ(discary({"websearch", "--site", "elsewhere", "--keyword", "x"}).status, 2);

  // The scan adds the entry with its cover, saved: another command reads it back.
  QTemporaryDir volume;
  QFile::copy(toc("derived_9d09130b_11tracks.TOC.plist"), volume.filePath(".TOC.plist"));
  const Outcome scanned = discary(QStringList{"--json"} + services + QStringList{"scan", "--volume", volume.path()});
  ASSERT_EQ(scanned.status, 0) << scanned.err.constData();
  const Outcome listed = discary({"--json", "list"});
  const QJsonObject entry = listed.json().toArray().first().toObject();
  EXPECT_EQ(entry["title"].toString(), "Written Answers");
  EXPECT_EQ(entry["label"].toString(), "Example Records");
  EXPECT_EQ(entry["releaseID"].toString(), "c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f");
  EXPECT_EQ(entry["tracks"].toArray().size(), 11);
  EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("c/Covers/%1.jpg").arg(entry["uid"].toInteger()))));
}

}  // namespace
