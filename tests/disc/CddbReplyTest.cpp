#include "CddbReply.h"
#include "WebSearchPage.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

// A record as a server sends it: the read status line, CR LF line ends, the closing ".".
QByteArray readReply(const char* file) {
  QFile f(QStringLiteral(DISCARY_TEST_DATA "/disc/") + QLatin1String(file));
  if (!f.open(QIODevice::ReadOnly)) return {};
  QByteArray body = "210 misc 00000000 CD database entry follows (until terminating `.')\n" + f.readAll();
  if (!body.endsWith('\n')) body += '\n';
  body += ".\n";
  return body.replace("\n", "\r\n");
}

QStringList trackValues(const QVariantMap& result, const char* key) {
  QStringList values;
  for (const QVariant& track : result.value(QStringLiteral("tracks")).toList()) {
    values << track.toMap().value(QLatin1String(key)).toString();
  }
  return values;
}

}  // namespace

TEST(CddbQuery, readsExactInexactAndMissingMatches) {
  auto exact = CddbReply::parseQuery("200 rock 940aac0d Some Artist / Some Title\r\n");
  EXPECT_EQ(exact.keys, QStringList{"rock+940aac0d"});
  EXPECT_EQ(exact.titles, QStringList{"Some Title\r\n"});

  auto inexact = CddbReply::parseQuery(
      "211 Found inexact matches, list follows (until terminating `.')\r\n"
      "rock 940aac0d Sun/Moon / Tides\r\nmisc 940aac0e No Slash Here\r\njazz 940aac0f Artist /\r\n.\r\n");
  EXPECT_EQ(inexact.keys, (QStringList{"rock+940aac0d", "misc+940aac0e", "jazz+940aac0f"}));
  // Two characters after the first "/", line end kept; with nothing after the "/", the line.
  EXPECT_EQ(inexact.titles, (QStringList{"oon / Tides\r", "misc 940aac0e No Slash Here\r", "jazz 940aac0f Artist /\r"}));

  EXPECT_TRUE(CddbReply::parseQuery("202 No match found\r\n").keys.isEmpty());
  EXPECT_TRUE(CddbReply::parseQuery("200 rock\r\n").keys.isEmpty());
  EXPECT_TRUE(CddbReply::parseQuery("200 rock 940aac0d no slash\r\n").keys.isEmpty());
  EXPECT_TRUE(CddbReply::parseQuery("").keys.isEmpty());
  EXPECT_TRUE(CddbReply::parseQuery("<html>500 Internal Server Error</html>").keys.isEmpty());
}

TEST(CddbRead, turnsRealRecordsIntoResultDictionaries) {
  const QVariantMap chagall = CddbReply::parseRead(readReply("cddb-file_9a0bed0d.xmcd"));
  EXPECT_EQ(chagall.value("discID").toString(), QStringLiteral("9a0bed0d"));
  EXPECT_EQ(chagall.value("title").toString(), QStringLiteral("Chagall Guevara"));
  EXPECT_EQ(chagall.value("artist").toString(), QStringLiteral("Chagall Guevara"));
  EXPECT_EQ(chagall.value("release").toString(), QString());
  EXPECT_FALSE(chagall.contains("genre"));
  EXPECT_EQ(chagall.value("summary").toString(), QString());
  const QStringList names = trackValues(chagall, "name");
  ASSERT_EQ(names.size(), 13);
  EXPECT_EQ(names.first(), QStringLiteral("Murder In The Big House"));
  EXPECT_EQ(names.last(), QStringLiteral("If It All Comes True"));
  EXPECT_FALSE(chagall.value("tracks").toList().first().toMap().contains("artist"));
  // Offsets go out in hexadecimal and come back as decimal: 183 is "b7" (0), 17295 is "438f"
  // (438), so track 1 lasts 438 / 75 = 5 seconds.
  EXPECT_EQ(trackValues(chagall, "duration").first(), QStringLiteral("0:05"));
  EXPECT_TRUE(chagall.contains("duration"));

  const QVariantMap clueless = CddbReply::parseRead(readReply("cddb-file_be0c140e.xmcd"));
  EXPECT_EQ(clueless.value("discID").toString(), QStringLiteral("af10420e,be0c140e"));
  EXPECT_EQ(clueless.value("artist").toString(), QStringLiteral("Various"));
  const QStringList artists = trackValues(clueless, "artist");
  EXPECT_TRUE(artists.contains(QString()));  // the one title without an artist
  EXPECT_EQ(artists.first(), QStringLiteral("The Muffs"));
  EXPECT_EQ(trackValues(clueless, "name").first(), QStringLiteral("Kids In America"));

  // Continued track titles join; a first offset of 0 marks the record bad: no album duration.
  const QVariantMap multiline = CddbReply::parseRead(readReply("libcddb_12345678_multiline.xmcd"));
  EXPECT_FALSE(multiline.contains("duration"));
  EXPECT_FALSE(trackValues(multiline, "duration").isEmpty());

  const QVariantMap ska = CddbReply::parseRead(readReply("net_cddb_d50dd30f_various_no-final-newline.xmcd"));
  EXPECT_EQ(ska.value("summary").toString(), QStringLiteral("YEAR: 1997"));
  EXPECT_FALSE(ska.value("tracks").toList().first().toMap().contains("artist"));

  const QVariantMap utf8 = CddbReply::parseRead(readReply("libcddb_12340000_utf8.xmcd"));
  EXPECT_TRUE(utf8.value("title").toString().contains(QChar(0xEF)));
}

TEST(CddbRead, followsTheTrackTitleContinuationRules) {
  const QByteArray reply =
      "210 rock 12345678\r\nDISCID=12345678\r\nDTITLE=A / B\r\n"
      "TTITLE0=One\r\nTTITLE0= more\r\nTTITLE1=X / Two\r\nTTITLE1=Three\r\nEXTD= note \r\nEXTD=second\r\n.\r\n";
  const QVariantMap result = CddbReply::parseRead(reply);
  EXPECT_EQ(trackValues(result, "name"), (QStringList{"One more", "Two", "Three"}));
  EXPECT_EQ(trackValues(result, "artist"), (QStringList{"", "X", ""}));
  EXPECT_EQ(result.value("summary").toString(), QStringLiteral("note"));
}

TEST(CddbRead, survivesHostileReplies) {
  EXPECT_TRUE(CddbReply::parseRead("").isEmpty());
  EXPECT_TRUE(CddbReply::parseRead("401 rock 12345678 No such CD entry.\r\n").isEmpty());
  EXPECT_TRUE(CddbReply::parseRead(QByteArray(1 << 16, '\0')).isEmpty());

  // Every truncation of a real record parses to something, never past the end.
  const QByteArray full = readReply("cddb-file_ee074b12.xmcd");
  for (qsizetype cut = 3; cut < full.size(); cut += 5) CddbReply::parseRead(full.left(cut));

  // Thousands of offset lines with absurd numbers, and a length that overflows.
  QByteArray absurd = "210 rock 1\r\n# Track frame offsets:\r\n";
  for (int i = 0; i < 20000; ++i) absurd += "#\t99999999999999999999" + QByteArray::number(i) + "\r\n";
  absurd += "#\r\n# Disc length: 99999999999 seconds\r\nDTITLE=x\r\nTTITLE0=a\r\nTTITLE1=b\r\nTTITLE";
  const QVariantMap result = CddbReply::parseRead(absurd);
  EXPECT_EQ(result.value("title").toString(), QStringLiteral("x"));
  EXPECT_EQ(trackValues(result, "name").mid(0, 2), (QStringList{"a", "b"}));

  // Binary noise after a valid status.
  QByteArray noise = "210 ";
  for (int i = 0; i < 100000; ++i) noise += char((i * 7919) % 256);
  CddbReply::parseRead(noise);
  CddbReply::parseQuery("211 x\n" + noise);
}

TEST(WebSearchPage, scrapesResultItemsAndSkipsBrokenOnes) {
  const QByteArray page =
      "<html><div><a href=\"/freedb_search.php#1\">x</a> <span title=\"Artist / Album\">"
      "<a href=\"http://host/freedb/rock/940aac0d\">Album</a></span></div>"
      "<a href=\"/freedb_search.php#2\"><a href=\"http://host/freedb/misc/1\">no title</a></div>"
      "<a href=\"/freedb_search.php#3\"><b title=\"Caf\xe9\"><a href=\"/freedb/jazz/2\">t</a></b></div>"
      "<a href=\"/freedb_search.php#4\"><a title=\"never closed";
  const auto matches = WebSearchPage::parse(page);
  EXPECT_EQ(matches.titles, (QStringList{"Artist:Album", QStringLiteral("Caf\u00e9")}));
  EXPECT_EQ(matches.keys, (QStringList{"rock+940aac0d", "jazz+2"}));
  EXPECT_TRUE(WebSearchPage::parse(QByteArray(100000, '<')).keys.isEmpty());

  EXPECT_EQ(WebSearchPage::formBody(QStringLiteral("a  b&c")), QByteArray("page=1&words=a++b&c&allcats=YES&grouping=none"));
  EXPECT_EQ(WebSearchPage::keyOfResultPageAddress(QStringLiteral("http://h/freedb_search_fmt.php?cat=rock&id=940aac0d")),
            QStringLiteral("rock+940aac0d"));
  EXPECT_FALSE(WebSearchPage::keyOfResultPageAddress(QStringLiteral("http://h/freedb_search_fmt.php?cat=")));
  EXPECT_FALSE(WebSearchPage::keyOfResultPageAddress(QStringLiteral("rock music")));
}
