#include "CannedHttpServer.h"
#include "CannedMusicBrainzServer.h"
#include "MusicBrainz.h"
#include "RequestPacer.h"
#include "TableOfContents.h"

#include <QImage>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

// The 11-track disc of derived_9d09130b_11tracks.TOC.plist.
const TableOfContents disc{174405, {150, 14097, 27391, 43983, 65786, 84877, 99399, 113226, 132452, 146426, 163829}};
const QString discID = QString::fromLatin1(CannedMusicBrainzServer::knownDiscID);

class MusicBrainzTest : public ::testing::Test {
 protected:
  CannedMusicBrainzServer server;
  MusicBrainz site;

  void SetUp() override { site.setOptions({server.root(), server.root() + "/", QStringLiteral("me@example.org"), 5}); }
  QByteArray lastPath() const { return server.requests().last().path; }
};

TEST_F(MusicBrainzTest, findsTheDiscByItsIdentifierAndFetchesTheChosenReleasesCover) {
  EXPECT_EQ(site.lookup(disc, discID, "9d09130b"), QStringList{"The Sample Ensemble: Written Answers (1991, US)"});
  ASSERT_EQ(server.requests().size(), 1);
  const CannedHttpServer::Request request = server.requests().first();
  EXPECT_EQ(request.path, "/ws/2/discid/" + discID.toLatin1() + "?inc=artist-credits+recordings+labels+genres&fmt=json");
  EXPECT_TRUE(request.header.contains("User-Agent: Discary/" DISCARY_VERSION " ( me@example.org )\r\n")) << request.header.constData();
  EXPECT_EQ(site.resultKeys(), QStringList{"c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f"});

  const QVariantMap result = site.resultNumber(0);
  EXPECT_EQ(result.value("title").toString(), "Written Answers");
  EXPECT_EQ(result.value("discID").toString(), "9d09130b");
  EXPECT_EQ(result.value("tracks").toList().size(), 11);
  EXPECT_EQ(result.value("coverImage").value<QImage>().size(), QSize(300, 300));
  EXPECT_EQ(lastPath(), "/release/c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f/front-500");
  EXPECT_TRUE(site.resultNumber(1).isEmpty());

  // No cover, or a cover that is no picture, is no error: the result comes without one.
  server.cover = "<html>not an image</html>";
  EXPECT_FALSE(site.resultNumber(0).contains("coverImage"));
  server.cover.clear();
  EXPECT_EQ(site.resultNumber(0).value("title").toString(), "Written Answers");
  EXPECT_FALSE(site.resultNumber(0).contains("coverImage"));
}

TEST_F(MusicBrainzTest, anUnknownIdentifierIsLookedUpByTheTrackLengths) {
  server.discReplies.clear();
  server.tocReply = CannedMusicBrainzServer::file("ws2-discid-toc_1-9-189343.json");
  EXPECT_EQ(site.lookup(disc, discID, "9d09130b").size(), 2);
  EXPECT_TRUE(site.lastError().isEmpty());
  ASSERT_EQ(server.requests().size(), 2);
  EXPECT_TRUE(lastPath().startsWith("/ws/2/discid/-?toc=1+11+174405+150+14097+27391+43983+65786+84877+99399+113226+132452+"
                                    "146426+163829&cdstubs=no&inc="));
  // Unknown everywhere: an answer, not an error.
  server.tocReply.clear();
  EXPECT_TRUE(site.lookup(disc, discID, "9d09130b").isEmpty());
  EXPECT_TRUE(site.lastError().isEmpty());
}

TEST_F(MusicBrainzTest, slowDownIsObeyedOnceAndOtherFailuresAreSaidInWords) {
  server.slowDowns = 1;
  EXPECT_EQ(site.lookup(disc, discID, "9d09130b").size(), 1);
  EXPECT_EQ(server.requests().size(), 2);
  server.slowDowns = 2;
  EXPECT_TRUE(site.lookup(disc, discID, "9d09130b").isEmpty());
  EXPECT_EQ(site.lastError(), "HTTP status 503: Your requests are exceeding the allowable rate limit.");
  server.slowDowns = 0;

  server.discReplies[CannedMusicBrainzServer::knownDiscID] = QByteArray(5 * 1024 * 1024, ' ');
  EXPECT_TRUE(site.lookup(disc, discID, "9d09130b").isEmpty());
  EXPECT_EQ(site.lastError(), "the answer is larger than 4 MB");
  server.discReplies[CannedMusicBrainzServer::knownDiscID] = "{\"releases\": [{\"id\": ";  // malformed: no match
  EXPECT_TRUE(site.lookup(disc, discID, "9d09130b").isEmpty());

  CannedHttpServer silent([](const CannedHttpServer::Request&) { return std::optional<QByteArray>(); });
  site.setOptions({QStringLiteral("http://") + silent.address(), {}, {}, 0.3});
  EXPECT_TRUE(site.lookup(disc, discID, "9d09130b").isEmpty());
  EXPECT_FALSE(site.lastError().isEmpty());
  site.setOptions({QStringLiteral("ftp://nowhere"), {}, {}, 1});
  EXPECT_TRUE(site.lookup(disc, discID, "9d09130b").isEmpty());
  EXPECT_EQ(site.lastError(), "the server address 'ftp://nowhere' is no web address");
}

TEST_F(MusicBrainzTest, searchesReleasesByWordsAndFetchesThePickedOne) {
  int reported = -1;
  site.searchFor({{"artist", "The \"Sample\" Ensemble"}, {"title", "Written"}}, [&](int count, MusicBrainz&) { reported = count; });
  EXPECT_EQ(reported, 2);
  EXPECT_EQ(QUrl::fromPercentEncoding(lastPath()),
            "/ws/2/release/?query=artist:\"The \\\"Sample\\\" Ensemble\" AND release:\"Written\"&limit=25&fmt=json");
  site.searchFor({{"keyword", "AC/DC: live!"}}, {});
  EXPECT_EQ(QUrl::fromPercentEncoding(lastPath()), "/ws/2/release/?query=AC\\/DC\\: live\\!&limit=25&fmt=json");
  site.searchFor({{"upc", "0123456789012"}, {"catalogNumber", "EX-1001"}}, {});
  EXPECT_TRUE(QUrl::fromPercentEncoding(lastPath()).contains("barcode:\"0123456789012\" AND catno:\"EX-1001\""));
  EXPECT_EQ(site.resultsTitles().size(), 2);
  const QVariantMap picked = site.resultNumber(0);
  EXPECT_EQ(server.requests().at(server.requests().size() - 2).path,
            "/ws/2/release/c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f?inc=artist-credits+recordings+labels+genres&fmt=json");
  EXPECT_EQ(picked.value("label").toString(), "Example Records");
  EXPECT_EQ(picked.value("tracks").toList().size(), 10);  // no disc to choose by: the first medium

  site.searchFor({}, [&](int count, MusicBrainz&) { reported = count; });
  EXPECT_EQ(reported, 0);
}

TEST(RequestPacerTest, requestsWaitTheirTurnASecondApart) {
  RequestPacer pacer(1000);
  EXPECT_EQ(pacer.turnAt(5000), 0);
  EXPECT_EQ(pacer.turnAt(5200), 800);   // queued behind the first
  EXPECT_EQ(pacer.turnAt(5300), 1700);  // and behind that one
  EXPECT_EQ(pacer.turnAt(9000), 0);     // long after: at once
}

}  // namespace
