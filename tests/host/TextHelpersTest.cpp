#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <limits>
#include <ostream>

#include "TextHelpers.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

static void PrintTo(const QDateTime& date, std::ostream* out) {
    *out << date.toString(Qt::ISODateWithMs).toStdString();
}

namespace {

using namespace TextHelpers;

QDateTime utc(int year, int month, int day, int hour = 12, int minute = 0, int second = 0,
              int millisecond = 0) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}

TEST(TextHelpersTime, FormatsAndReadsDurations) {
    EXPECT_EQ(timeStringWithSeconds(0), "0:00");
    EXPECT_EQ(timeStringWithSeconds(9), "0:09");
    EXPECT_EQ(timeStringWithSeconds(225), "3:45");
    EXPECT_EQ(timeStringWithSeconds(4325), "72:05");
    EXPECT_EQ(timeStringWithSeconds(-5), "0:00");

    const struct {
        const char* text;
        qint64 seconds;
    } cases[] = {
        {"72:05", 4325}, {"1:02:03", 3723}, {"3:45", 225}, {"245", 245},   {"  3:45\t", 225},
        {"3:4", 184},    {"1:75", 135},     {"3:", 180},   {":45", 45},    {"3:45.75", 225},
        {"", 0},         {"   ", 0},        {"abc", 0},    {"3:45abc", 0}, {"-3:00", 0},
        {"1:2:3:4", 0},  {":", 0},          {"3:45.x", 0}, {"3 : 45", 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(secondsAsTimeString(QString::fromUtf8(c.text)), c.seconds) << c.text;
    }
}

TEST(TextHelpersTime, FormattingAndReadingAreInverses) {
    for (qint64 seconds = 0; seconds < 20000; ++seconds) {
        ASSERT_EQ(secondsAsTimeString(timeStringWithSeconds(seconds)), seconds);
    }
    const qint64 max = std::numeric_limits<qint64>::max();
    for (const qint64 seconds : {qint64(1) << 40, max / 60 * 60, max - 1, max}) {
        EXPECT_EQ(secondsAsTimeString(timeStringWithSeconds(seconds)), seconds) << seconds;
    }
}

TEST(TextHelpersNumbers, ReadsMoneyAndDecimalText) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"$12.50", 12.5},
        {"1,299.00", 1299},
        {"1.299,00", 1299},
        {"12,50", 12.5},
        {"12,5", 12.5},
        {"1,299", 1299},
        {"0,125", 0.125},
        {"1,299,000", 1299000},
        {"1.299.000", 1299000},
        {"-3", -3},
        {"-$3.25", -3.25},
        {"$-3.25", -3.25},
        {"€ 9,99", 9.99},
        {"9,99 €", 9.99},
        {"Price: 7.5", 7.5},
        {".5", 0.5},
        {"costs 12.", 12},
        {"12, 13", 12},
        {"1'299.50", 1299.5},
        {"1 299,50", 1299.5},
        {"2 12", 2},
        {"abc", 0},
        {"", 0},
        {"-", 0},
        {"-0", 0},
        {"Track 2 - 3", 2},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(myFloatValue(QString::fromUtf8(c.text)), c.value) << c.text;
    }
    EXPECT_FALSE(std::signbit(myFloatValue(QStringLiteral("-0.00"))));
    // The same number as written, for sums that must be exact.
    EXPECT_EQ(decimalText(QStringLiteral("-$1,299.00")), "-1299.00");
    EXPECT_EQ(decimalText(QStringLiteral("12,50 \u20AC")), "12.50");
    EXPECT_EQ(decimalText(QStringLiteral("costs .5")), ".5");
    EXPECT_EQ(decimalText(QStringLiteral("abc")), "");
}

TEST(TextHelpersNumbers, ReadsLeadingIntegers) {
    const qint64 max = std::numeric_limits<qint64>::max();
    const qint64 min = std::numeric_limits<qint64>::min();
    const struct {
        const char* text;
        qint64 value;
    } cases[] = {
        {"12 tracks", 12},
        {"2/3", 2},
        {" -4", -4},
        {"+7", 7},
        {"x", 0},
        {"", 0},
        {"- 4", 0},
        {"x12", 0},
        {"9223372036854775807", max},
        {"9223372036854775808", max},
        {"-9223372036854775808", min},
        {"-9223372036854775809", min},
        {"99999999999999999999999999", max},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(myIntValue(QString::fromUtf8(c.text)), c.value) << c.text;
    }
}

TEST(TextHelpersMarkers, FindsTextBetweenMarkers) {
    const QString html = QStringLiteral("<b>one</b> and <b>two</b><b></b> <b>open");
    EXPECT_EQ(stringBetween(html, "<b>", "</b>"), QStringLiteral("one"));
    EXPECT_EQ(stringBetween(html, "and ", "<"), QStringLiteral(""));
    EXPECT_EQ(stringBetween(html, "<i>", "</b>"), std::nullopt);
    EXPECT_EQ(stringBetween(html, "open", "</b>"), std::nullopt);
    // The end marker is searched after the start marker, not before it.
    EXPECT_EQ(stringBetween(QStringLiteral("]x[y]"), "[", "]"), QStringLiteral("y"));

    EXPECT_EQ(stringsBetween(html, "<b>", "</b>"), QStringList({"one", "two", ""}));
    EXPECT_EQ(stringsBetween(QStringLiteral("aXbXcX"), "X", "X"), QStringList({"b"}));
    EXPECT_TRUE(stringsBetween(html, "<i>", "</i>").isEmpty());
    EXPECT_TRUE(stringsBetween(html, "", "</b>").isEmpty());
    EXPECT_TRUE(stringsBetween(html, "<b>", "").isEmpty());

    EXPECT_EQ(stringByRemovingLeadingAndTrailingSpaces(QStringLiteral(" \t a b\n\u00A0")), "a b");
    EXPECT_TRUE(isNotEmpty(QStringLiteral(" ")));
    EXPECT_FALSE(isNotEmpty(QString()));
}

TEST(TextHelpersHtml, DecodesReferences) {
    const struct {
        const char* text;
        const char* decoded;
    } cases[] = {
        {"Simon &amp; Garfunkel", "Simon & Garfunkel"},
        {"&lt;b&gt; &quot;x&quot; &apos;y&apos;", "<b> \"x\" 'y'"},
        {"Caf&eacute; &Eacute;t&eacute;&nbsp;&yuml;", "Café Été\u00A0ÿ"},
        {"&#233;&#xE9;&#XE9;&#x1F3B5;", "ééé🎵"},
        {"It&#146;s &#150; &hellip;", "It’s – …"},
        {"&amp;lt;", "&lt;"},
        {"AT&T & co; &unknown; &EACUTE; &amp", "AT&T & co; &unknown; &EACUTE; &amp"},
        {"&#0; &#1; &#xD800; &#x110000; &#; &#x; &#12a; &#129;",
         "&#0; &#1; &#xD800; &#x110000; &#; &#x; &#12a; &#129;"},
        {"&&amp;;", "&&;"},
        {"", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(stringByReplacingHTMLEncoding(QString::fromUtf8(c.text)),
                  QString::fromUtf8(c.decoded))
            << c.text;
    }
}

TEST(TextHelpersHtml, EncodingIsUndoneByDecoding) {
    EXPECT_EQ(encodeForHTML(QStringLiteral("<a href=\"x\">Tom's & Jerry's</a>")),
              "&lt;a href=&quot;x&quot;&gt;Tom&#39;s &amp; Jerry&#39;s&lt;/a&gt;");
    EXPECT_EQ(encodeForHTML(QStringLiteral("plain é")), "plain é");
    for (const char* text : {"&amp;", "a<b>&c\"'", "&#233; &eacute;", "&&&;;", ""}) {
        const QString original = QString::fromUtf8(text);
        EXPECT_EQ(stringByReplacingHTMLEncoding(encodeForHTML(original)), original) << text;
    }
}

TEST(TextHelpersPaths, ResolvesSymbolicLinks) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString realDir = QFileInfo(dir.path()).canonicalFilePath();
    const QString target = realDir + QStringLiteral("/music.flac");
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const QString link = realDir + QStringLiteral("/link.flac");
    const QString linkToLink = realDir + QStringLiteral("/link2.flac");
    ASSERT_TRUE(QFile::link(target, link));
    ASSERT_TRUE(QFile::link(link, linkToLink));

    EXPECT_EQ(stringByResolvingAliasInPath(target), target);
    EXPECT_EQ(stringByResolvingAliasInPath(linkToLink), target);

    const QString missing = realDir + QStringLiteral("/missing.flac");
    EXPECT_EQ(stringByResolvingAliasInPath(missing), missing);
    const QString dangling = realDir + QStringLiteral("/dangling.flac");
    ASSERT_TRUE(QFile::link(missing, dangling));
    EXPECT_EQ(stringByResolvingAliasInPath(dangling), dangling);
    EXPECT_EQ(stringByResolvingAliasInPath(QString()), QString());
}

TEST(TextHelpersDates, ReadsDateForms) {
    const struct {
        const char* text;
        QDateTime expected;
    } cases[] = {
        {"1999", utc(1999, 7, 1)},
        {" 1999 ", utc(1999, 7, 1)},
        {"0001", utc(1, 7, 1)},
        {"1999-03-04", utc(1999, 3, 4)},
        {"1999-3-4", utc(1999, 3, 4)},
        {"1999-03", utc(1999, 3, 1)},
        {"1999-03-04T10:00:00Z", utc(1999, 3, 4, 10)},
        {"1999-03-04T10:00Z", utc(1999, 3, 4, 10)},
        {"1999-03-04 10:20:30", utc(1999, 3, 4, 10, 20, 30)},
        {"1999-03-04T10:20:30.25Z", utc(1999, 3, 4, 10, 20, 30, 250)},
        {"1999-03-04T10:20:30.123456Z", utc(1999, 3, 4, 10, 20, 30, 123)},
        {"1999-03-04T10:00:00+02:00", utc(1999, 3, 4, 8)},
        {"1999-03-04T23:30:00-0130", utc(1999, 3, 5, 1)},
        {"01/31/1999", utc(1999, 1, 31)},
        {"03/04/1999", utc(1999, 3, 4)},
        {"31/01/1999", utc(1999, 1, 31)},
        {"01/01/1001", utc(1001, 1, 1)},
        {"3/4/99", utc(1999, 3, 4)},
        {"3/4/05", utc(2005, 3, 4)},
        {"3-4-1999", utc(1999, 3, 4)},
        {"1999/03/04", utc(1999, 3, 4)},
        {"4.3.1999", utc(1999, 3, 4)},
        {"4. 3. 1999", utc(1999, 3, 4)},
        {"03/1999", utc(1999, 3, 1)},
        {"March 4, 1999", utc(1999, 3, 4)},
        {"march 4 1999", utc(1999, 3, 4)},
        {"4 Mar 1999", utc(1999, 3, 4)},
        {"4-Mar-1999", utc(1999, 3, 4)},
        {"4th of March, 1999", utc(1999, 3, 4)},
        {"Thursday, March 4th, 1999", utc(1999, 3, 4)},
        {"Sept. 21, 1999", utc(1999, 9, 21)},
        {"March 1999", utc(1999, 3, 1)},
        {"1999 Mar 4", utc(1999, 3, 4)},
        {"Dec 31, 9999", utc(9999, 12, 31)},
    };
    for (const auto& c : cases) {
        const std::optional<QDateTime> date =
            myDateWithNaturalLanguageString(QString::fromUtf8(c.text));
        ASSERT_TRUE(date.has_value()) << c.text;
        EXPECT_EQ(*date, c.expected) << c.text;
        EXPECT_EQ(date->timeSpec(), Qt::UTC) << c.text;
    }
}

TEST(TextHelpersDates, RejectsImpossibleAndAmbiguousText) {
    for (const char* text : {
             "",
             "   ",
             "0000",
             "10000",
             "99",
             "31/02/1999",
             "1999-02-30",
             "1999-13",
             "13/13/1999",
             "4.13.1999",
             "1/2/3",
             "1/2/999",
             "1999-03-04T24:00:00Z",
             "1999-03-04T10:60Z",
             "1999-03-04T10:00+24:00",
             "0001-01-01T00:00:00+01:00",
             "March 4",
             "March",
             "Smarch 4, 1999",
             "4th March 1999th",
             "March 32, 1999",
             "March 99",
             "1999 March",
             "yesterday",
             "1999-03-04x",
             "1999-03-04T10:00:00Zulu",
         }) {
        EXPECT_EQ(myDateWithNaturalLanguageString(QString::fromUtf8(text)), std::nullopt) << text;
    }
}

TEST(TextHelpersDates, WritesIsoText) {
    EXPECT_EQ(isoDateString(utc(1999, 7, 1)), "1999-07-01T12:00:00Z");
    EXPECT_EQ(isoDateString(utc(1999, 7, 1, 12, 0, 0, 250)), "1999-07-01T12:00:00.250Z");
    EXPECT_EQ(isoDateString(utc(1, 1, 1, 0, 0, 0, 5)), "0001-01-01T00:00:00.005Z");
    const QDateTime ahead(QDate(1999, 7, 1), QTime(1, 30), Qt::OffsetFromUTC, 2 * 3600);
    EXPECT_EQ(isoDateString(ahead), "1999-06-30T23:30:00Z");
    EXPECT_EQ(isoDateString(QDateTime()), "");

    for (const QDateTime& date :
         {utc(1999, 7, 1), utc(2024, 2, 29, 23, 59, 59, 999), utc(9999, 12, 31)}) {
        EXPECT_EQ(myDateWithNaturalLanguageString(isoDateString(date)), date);
    }
}

TEST(TextHelpersHostile, SurvivesGarbage) {
    const QString digits(1'000'000, QLatin1Char('9'));
    EXPECT_EQ(secondsAsTimeString(digits), std::numeric_limits<qint64>::max());
    EXPECT_EQ(secondsAsTimeString(digits + ':' + digits + ':' + digits),
              std::numeric_limits<qint64>::max());
    EXPECT_EQ(myIntValue(QLatin1Char('-') + digits), std::numeric_limits<qint64>::min());
    EXPECT_EQ(myFloatValue(digits), std::numeric_limits<double>::max());
    EXPECT_EQ(myFloatValue(QLatin1String("0.") + QString(1000, QLatin1Char('0')) + '1'), 0.0);
    EXPECT_EQ(myDateWithNaturalLanguageString(digits), std::nullopt);

    const QString ampersands(1'000'000, QLatin1Char('&'));
    EXPECT_EQ(stringByReplacingHTMLEncoding(ampersands), ampersands);
    const QString longReference = QLatin1String("&#") + digits + ';';
    EXPECT_EQ(stringByReplacingHTMLEncoding(longReference), longReference);
    for (const char* text :
         {"&#99999999999;", "&#x7FFFFFFF;", "&#xFFFFFFFFFFFFFFFFFFFF;", "&#-1;", "&#0;"}) {
        EXPECT_EQ(stringByReplacingHTMLEncoding(QString::fromUtf8(text)), QString::fromUtf8(text));
    }

    const QString unbalanced = QString(QStringLiteral("<b>")).repeated(100'000);
    EXPECT_EQ(stringBetween(unbalanced, "<b>", "</b>"), std::nullopt);
    EXPECT_TRUE(stringsBetween(unbalanced, "<b>", "</b>").isEmpty());
    EXPECT_EQ(stringsBetween(unbalanced, "<", ">").size(), 100'000);
    EXPECT_EQ(stringBetween(QStringLiteral("abc"), "", ""), QString());

    // Random text over the characters the parsers care about, plus arbitrary code units
    // (lone surrogates included).
    const QString alphabet = QStringLiteral("0123456789:.,;&#xX-+/$€ TZtz amp;March");
    QRandomGenerator random(1234);
    for (int round = 0; round < 3000; ++round) {
        QString text;
        const int length = int(random.bounded(40));
        for (int i = 0; i < length; ++i) {
            text += random.bounded(4) == 0 ? QChar(char16_t(random.bounded(0x10000)))
                                           : alphabet[random.bounded(int(alphabet.size()))];
        }
        secondsAsTimeString(text);
        myFloatValue(text);
        myIntValue(text);
        stringsBetween(text, QStringLiteral("&"), QStringLiteral(";"));
        const QString decoded = stringByReplacingHTMLEncoding(text);
        EXPECT_LE(decoded.size(), text.size());
        EXPECT_EQ(stringByReplacingHTMLEncoding(encodeForHTML(text)), text);
        if (const auto date = myDateWithNaturalLanguageString(text)) {
            EXPECT_TRUE(date->isValid()) << text.toStdString();
            EXPECT_GE(date->date().year(), 1);
            EXPECT_LE(date->date().year(), 9999);
        }
    }
}

}  // namespace
