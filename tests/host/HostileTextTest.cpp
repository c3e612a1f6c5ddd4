#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <limits>
#include <ostream>

#include "HtmlText.h"
#include "NaturalDate.h"
#include "NumberText.h"
#include "StringText.h"
#include "TimeText.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {

// Every text reader fed huge, unbalanced and random input.
using namespace HtmlText;
using namespace NaturalDate;
using namespace NumberText;
using namespace StringText;
using namespace TimeText;

TEST(HostileText, SurvivesGarbage) {
  const QString digits(1'000'000, QLatin1Char('9'));
  EXPECT_EQ(secondsAsTimeString(digits), std::numeric_limits<qint64>::max());
  EXPECT_EQ(secondsAsTimeString(digits + ':' + digits + ':' + digits), std::numeric_limits<qint64>::max());
  EXPECT_EQ(myIntValue(QLatin1Char('-') + digits), std::numeric_limits<qint64>::min());
  EXPECT_EQ(myFloatValue(digits), std::numeric_limits<double>::max());
  EXPECT_EQ(myFloatValue(QLatin1String("0.") + QString(1000, QLatin1Char('0')) + '1'), 0.0);
  EXPECT_EQ(myDateWithNaturalLanguageString(digits), std::nullopt);

  const QString ampersands(1'000'000, QLatin1Char('&'));
  EXPECT_EQ(stringByReplacingHTMLEncoding(ampersands), ampersands);
  const QString longReference = QLatin1String("&#") + digits + ';';
  EXPECT_EQ(stringByReplacingHTMLEncoding(longReference), longReference);
  for (const char* text : {"&#99999999999;", "&#x7FFFFFFF;", "&#xFFFFFFFFFFFFFFFFFFFF;", "&#-1;", "&#0;"}) {
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
