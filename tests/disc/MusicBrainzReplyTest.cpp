#include "CannedMusicBrainzServer.h"
#include "MusicBrainzReply.h"

#include <QDateTime>
#include <gtest/gtest.h>

namespace {

QByteArray file(const char* name) { return CannedMusicBrainzServer::file(QString::fromLatin1(name)); }

QStringList trackNames(const QVariantMap& result) {
  QStringList names;
  for (const QVariant& track : result.value("tracks").toList()) names << track.toMap().value("name").toString();
  return names;
}

TEST(MusicBrainzReplyTest, aReleaseBecomesTheDictionaryOfTheMediumHoldingTheDisc) {
  const auto releases = MusicBrainzReply::discReleases(file("discid_aHTAZe_two-media.json"), "aHTAZe.MDUz3OgyV0zQLSQiO.Js-", 11);
  ASSERT_EQ(releases.keys, QStringList{"c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f"});
  EXPECT_EQ(releases.titles, QStringList{"The Sample Ensemble: Written Answers (1991, US)"});
  const QVariantMap result = releases.results.first();
  EXPECT_EQ(result.value("title").toString(), "Written Answers");
  EXPECT_EQ(result.value("artist").toString(), "The Sample Ensemble");
  EXPECT_EQ(result.value("release").toString(), "1991");
  EXPECT_EQ(result.value("releaseDate").toDateTime().date(), QDate(1991, 3, 12));
  EXPECT_EQ(result.value("genre").toString(), "rock");  // the genre counted most
  EXPECT_EQ(result.value("label").toString(), "Example Records");
  EXPECT_EQ(result.value("catalogNumber").toString(), "EX-1001");
  EXPECT_EQ(result.value("upc").toString(), "0123456789012");
  EXPECT_EQ(result.value("barcodeSource").toString(), "MusicBrainz");
  EXPECT_EQ(result.value("releaseID").toString(), "c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f");
  EXPECT_EQ(result.value("musicBrainzDiscID").toString(), "aHTAZe.MDUz3OgyV0zQLSQiO.Js-");
  EXPECT_EQ(result.value("discs").toString(), "2");
  EXPECT_EQ(result.value("format").toString(), "CD");
  // The second medium holds the disc, so its eleven tracks are the entry's.
  const QVariantList tracks = result.value("tracks").toList();
  ASSERT_EQ(tracks.size(), 11);
  EXPECT_EQ(tracks.first().toMap(), (QVariantMap{{"name", "Second Song 1"}, {"duration", "3:05"}}));
  EXPECT_EQ(tracks.at(3).toMap().value("artist").toString(), "The Sample Ensemble feat. Guest Singer");
  EXPECT_EQ(result.value("duration").toString(), "38:39");

  // Without the disc's identifier the track count decides, and failing that the first medium.
  const auto byCount = MusicBrainzReply::discReleases(file("discid_aHTAZe_two-media.json"), {}, 10);
  EXPECT_EQ(trackNames(byCount.results.first()).first(), "First Song 1");
  EXPECT_EQ(trackNames(byCount.results.first()).size(), 10);
  EXPECT_EQ(trackNames(MusicBrainzReply::discReleases(file("discid_aHTAZe_two-media.json"), {}, 7).results.first()).size(), 10);
  // The release lookup of a search result gives the same dictionary.
  EXPECT_EQ(MusicBrainzReply::release(file("release_c0f1e2d3_lookup.json"), "aHTAZe.MDUz3OgyV0zQLSQiO.Js-", 11), result);
}

TEST(MusicBrainzReplyTest, readsTheServicesOwnAnswersForAKnownAndAnUnknownDisc) {
  // The web service's own test answer: the second of two media holds the disc; no track lists.
  const auto direct = MusicBrainzReply::discReleases(file("ws2-discid-direct_IeldkVfIh1wep_M8CMuDvA0nQ7Q-.json"),
                                                     "IeldkVfIh1wep_M8CMuDvA0nQ7Q-", 9);
  ASSERT_EQ(direct.results.size(), 1);
  const QVariantMap aerial = direct.results.first();
  EXPECT_EQ(aerial.value("title").toString(), "Aerial");
  EXPECT_EQ(aerial.value("release").toString(), "2007");
  EXPECT_FALSE(aerial.contains("artist"));  // no artist credits were asked for
  EXPECT_FALSE(aerial.contains("upc"));     // a null barcode
  EXPECT_FALSE(aerial.contains("tracks"));
  EXPECT_EQ(direct.titles, QStringList{"Aerial (2007)"});

  const auto byToc = MusicBrainzReply::discReleases(file("ws2-discid-toc_1-9-189343.json"), "aa11.sPglQ1x0cybDcDi0OsZw9Q-", 9);
  EXPECT_EQ(byToc.keys, (QStringList{"9b3d9383-3d2a-417f-bfbb-56f7c15f075b", "f205627f-b70a-409d-adbe-66289b614e80"}));
  EXPECT_EQ(byToc.results.first().value("genre").toString(), "musical");
  EXPECT_FALSE(byToc.results.last().contains("genre"));

  const auto search = MusicBrainzReply::searchResults(file("release-search_written-answers.json"));
  EXPECT_EQ(search.titles, (QStringList{"The Sample Ensemble: Written Answers (1991, US)",
                                        "The Sample Ensemble: Written Answers (1991, XE)"}));
  EXPECT_EQ(search.keys.size(), 2);
  EXPECT_TRUE(search.results.first().isEmpty());  // a search names releases; the pick fetches one
}

TEST(MusicBrainzReplyTest, hostileAnswersGiveNoResultsAndNeverCrash) {
  for (const QByteArray& reply :
       {QByteArray(), QByteArray("not json"), QByteArray("[1,2]"), QByteArray("{\"releases\": 7}"),
        QByteArray("{\"releases\": [7, null, \"x\", {\"title\": \"no id\"}]}"), QByteArray(100000, '['),
        QByteArray("{\"releases\": [{\"id\": \"a\"") /* truncated */}) {
    EXPECT_TRUE(MusicBrainzReply::discReleases(reply, "x", 3).keys.isEmpty()) << reply.left(40).constData();
    EXPECT_TRUE(MusicBrainzReply::searchResults(reply).keys.isEmpty());
    EXPECT_TRUE(MusicBrainzReply::release(reply, "x", 3).isEmpty());
  }
  // Wrong types and absurd numbers are left out, not trusted; a flood of tracks is capped.
  QByteArray tracks;
  for (int i = 0; i < 5000; ++i) tracks += "{\"title\": 5, \"length\": " + QByteArray(i % 2 ? "-1e300" : "1e300") + "},";
  tracks.chop(1);
  const QVariantMap odd = MusicBrainzReply::release(
      "{\"id\": \"r\", \"title\": [\"x\"], \"date\": \"soon\", \"barcode\": 12, \"label-info\": [null], \"genres\": {},"
      " \"artist-credit\": [{\"joinphrase\": 3}], \"media\": [{\"discs\": 1, \"tracks\": [" + tracks + "]}]}",
      "x", 0);
  EXPECT_EQ(odd.value("releaseID").toString(), "r");
  EXPECT_EQ(odd.value("title").toString(), QString());
  EXPECT_FALSE(odd.contains("releaseDate"));
  EXPECT_FALSE(odd.contains("upc"));
  EXPECT_FALSE(odd.contains("duration"));
  EXPECT_EQ(odd.value("tracks").toList().size(), 999);

  EXPECT_EQ(MusicBrainzReply::errorMessage("{\"error\": \"Not Found\"}"), "Not Found");
  EXPECT_EQ(MusicBrainzReply::errorMessage("<html>502</html>"), QString());
}

}  // namespace
