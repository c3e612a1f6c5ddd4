#include "CannedCddbServer.h"
#include "CannedHttpServer.h"
#include "CddbReply.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "Freedb.h"
#include "MyController.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "StringTable.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString data = QStringLiteral(DISCARY_TEST_DATA "/disc/");

class FreedbTest : public ::testing::Test {
 protected:
  CannedCddbServer server;
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  StringTable strings;
  Freedb freedb{platform, windowSystem, strings};

  void SetUp() override {
    freedb.setOptions({server.address(), QStringLiteral("discary"), QStringLiteral("localhost"), 5});
    freedb.setTocSource({data + "derived_9d09130b_11tracks.TOC.plist", {}, {}});
  }
};

TEST_F(FreedbTest, queriesTheDiscAndReadsTheChosenRecord) {
  const auto titles = freedb.getDiscID();
  ASSERT_TRUE(titles);
  EXPECT_EQ(*titles, QStringList{"Chagall Guevara\r\n"});
  EXPECT_EQ(freedb.queryResults(), QStringList{"rock+9a0bed0d"});
  EXPECT_EQ(server.requests().first().body,
            "cmd=cddb+query+9d09130b+11+150+14097+27391+43983+65786+84877+99399+113226+132452+146426+163829+2323"
            "&hello=discary+localhost+discary+1.0&proto=6");
  EXPECT_EQ(freedb.durationsArray()->size(), 12);
  EXPECT_TRUE(freedb.lastError().isEmpty());

  const QVariantMap result = freedb.resultNumber(0);
  EXPECT_EQ(result.value("title").toString(), QStringLiteral("Chagall Guevara"));
  EXPECT_EQ(result.value("tracks").toList().size(), 13);
  EXPECT_EQ(server.requests().last().body, "cmd=cddb+read+rock+9a0bed0d&hello=discary+localhost+discary+1.0&proto=6");
  EXPECT_EQ(freedb.resultNumber(1), (QVariantMap{{"Title", "No Data Found on Freedb"}}));

  server.queryReply = "211 inexact\nrock 1 A / B\nmisc 2 C / D\njazz 3 E / F\n.\n";
  EXPECT_EQ(freedb.getDiscID()->size(), 3);
  server.queryReply = "202 No match found\n";
  EXPECT_EQ(freedb.getDiscID(), QStringList());
  EXPECT_TRUE(freedb.lastError().isEmpty());  // an answer: the server does not know the disc
  // A server that refuses the client name says why; that is no "no match".
  server.queryReply = "500 Unknown developer email\n";
  EXPECT_EQ(freedb.getDiscID(), QStringList());
  EXPECT_EQ(freedb.lastError(), QStringLiteral("500 Unknown developer email"));
  EXPECT_EQ(CddbReply::errorOfQuery("409 No handshake\r\n"), QStringLiteral("409 No handshake"));
  EXPECT_EQ(CddbReply::errorOfQuery("211 inexact\n"), QString());
  EXPECT_EQ(CddbReply::errorOfQuery("5000 words"), QString());
  EXPECT_EQ(CddbReply::errorOfQuery("530 Server error"), QStringLiteral("530 Server error"));  // no line end
  EXPECT_EQ(CddbReply::errorOfQuery(""), QString());
}

TEST_F(FreedbTest, probesEveryCategoryAndSearchesTheWebSite) {
  EXPECT_EQ(freedb.findPossibleDiscIDs("9a0bed0d"), 2);
  EXPECT_EQ(freedb.resultsTitles(), (QStringList{"rock", "misc"}));
  EXPECT_EQ(freedb.queryResults(), (QStringList{"rock+9a0bed0d", "misc+9a0bed0d"}));
  EXPECT_EQ(server.requests().size(), 10);

  server.searchPage = "<a href=\"/freedb_search.php#1\"><i title=\"Chagall / Guevara\"><a href=\"/freedb/rock/9a0bed0d\">"
               "</a></i></div>";
  freedb.searchFor({{"artist", "Chagall"}, {"title", "Guevara"}}, {});
  EXPECT_EQ(freedb.resultsTitles(), QStringList{"Chagall:Guevara"});
  EXPECT_EQ(server.requests().last().body, "page=1&words=Chagall+Guevara&allcats=YES&grouping=none");
  EXPECT_EQ(freedb.resultNumber(0).value("artist").toString(), QStringLiteral("Chagall Guevara"));

  // With a target: a pasted result-page address reports once at once, and again with the page.
  QList<int> reports;
  bool done = false;
  freedb.searchFor({{"keyword", QStringLiteral("http://%1/freedb_search_fmt.php?cat=misc&id=12345678").arg(server.address())}},
                   [&](int count, Freedb&) {
                     reports << count;
                     done = reports.size() == 2;
                   });
  EXPECT_EQ(reports, QList<int>{1});
  QElapsedTimer clock;
  clock.start();
  while (!done && clock.elapsed() < 10000) QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
  EXPECT_EQ(reports, (QList<int>{1, 2}));
  EXPECT_EQ(freedb.queryResults(), (QStringList{"misc+12345678", "rock+9a0bed0d"}));

  reports.clear();
  freedb.searchFor({}, [&](int count, Freedb&) { reports << count; });
  EXPECT_EQ(reports, QList<int>{0});
}

TEST_F(FreedbTest, hostileServersGiveNoMatchWithinTheTimeOut) {
  enum class Mode { silent, closeEarly, huge, error, binary } mode = Mode::silent;
  CannedHttpServer hostile([&mode](const CannedHttpServer::Request&) -> std::optional<QByteArray> {
    switch (mode) {
      case Mode::silent: return std::nullopt;
      case Mode::closeEarly: return QByteArray("HTTP/1.0 200 OK\r\nContent-Length: 5000\r\n\r\n200 rock 1 A / B");
      case Mode::huge: return CannedHttpServer::ok("200 rock 1 A / B\n" + QByteArray(5 * 1024 * 1024, 'x'));
      case Mode::error: return "HTTP/1.0 500 Oops\r\nContent-Length: 17\r\n\r\n200 rock 1 A / B\n";
      case Mode::binary: return CannedHttpServer::ok(QByteArray(70000, '\x80'));
    }
    return std::nullopt;
  });
  freedb.setOptions({hostile.address(), {}, {}, 0.3});
  for (Mode m : {Mode::silent, Mode::closeEarly, Mode::huge, Mode::error, Mode::binary}) {
    mode = m;
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(freedb.getDiscID(), QStringList()) << int(m);
    // Bytes that are no reply are an answer without a match; the rest are failures to say.
    EXPECT_EQ(freedb.lastError().isEmpty(), m == Mode::binary) << int(m) << qPrintable(freedb.lastError());
    EXPECT_LT(clock.elapsed(), 10000);  // a generous bound: the time-out is 0.3 seconds
    EXPECT_TRUE(freedb.readKey("rock+1").isEmpty());
  }
  mode = Mode::silent;
  EXPECT_EQ(freedb.findPossibleDiscIDs("1"), 0);
  // Nobody listening, and a server text that is no address.
  freedb.setOptions({QStringLiteral("127.0.0.1:1"), {}, {}, 1});
  EXPECT_EQ(freedb.getDiscID(), QStringList());
  freedb.setOptions({QStringLiteral("bad host/?#"), {}, {}, 1});
  EXPECT_EQ(freedb.getDiscID(), QStringList());
  EXPECT_TRUE(windowSystem.alerts.isEmpty());
}

TEST_F(FreedbTest, withoutADiscShowsTheNoCdSheetOnceDurationsAreGone) {
  freedb.setTocSource({});
  EXPECT_FALSE(freedb.getTrackDurations());
  EXPECT_EQ(windowSystem.alerts, QStringList{"Action Required"});
  EXPECT_FALSE(freedb.getDiscID());
  EXPECT_EQ(windowSystem.alerts.size(), 2);
  EXPECT_TRUE(server.requests().isEmpty());
  // The durations of the latest look at a disc come back, without a sheet.
  freedb.setTocSource({data + "derived_9d09130b_11tracks.TOC.plist", {}, {}});
  freedb.discID();
  freedb.setTocSource({});
  EXPECT_EQ(freedb.getTrackDurations()->size(), 12);
  EXPECT_EQ(windowSystem.alerts.size(), 2);
}

TEST_F(FreedbTest, findsTheFirstVolumeWithATableOfContentsAndEjectsIt) {
  QTemporaryDir first, second, third;
  QFile::copy(data + "derived_6a09f20a_10tracks.TOC.plist", second.filePath(".TOC.plist"));
  QFile::copy(data + "derived_9d09130b_11tracks.TOC.plist", third.filePath(".TOC.plist"));
  platform.volumes = {first.path(), second.path(), third.path()};
  freedb.setTocSource({});
  EXPECT_EQ(freedb.discID(), QStringLiteral("6a09f20a"));
  freedb.ejectCD();
  EXPECT_EQ(platform.ejected, QStringList{second.path()});
  EXPECT_EQ(platform.volumes, (QStringList{first.path(), third.path()}));
  platform.volumes = {first.path(), second.path(), third.path()};  // put back
  // An unreadable file on the first volume with one ends the search there.
  QFile broken(second.filePath(".TOC.plist"));
  broken.open(QIODevice::WriteOnly | QIODevice::Truncate);
  broken.write("not a property list");
  broken.close();
  EXPECT_FALSE(freedb.discID());
  // No volume has one: the drive is read.
  platform.volumes = {first.path()};
  platform.drive = TableOfContents{191100, {150, 16638, 36822, 53548, 67697, 86438, 108987, 128071, 147058, 168229}}.dictionary();
  EXPECT_EQ(freedb.discID(), QStringLiteral("6a09f20a"));
}

}  // namespace
