#include <gtest/gtest.h>

#include <ostream>

#include "NaturalDate.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

static void PrintTo(const QDateTime& date, std::ostream* out) {
  *out << date.toString(Qt::ISODateWithMs).toStdString();
}

namespace {

using namespace NaturalDate;

QDateTime utc(int year, int month, int day, int hour = 12, int minute = 0, int second = 0, int millisecond = 0) {
  return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}

TEST(NaturalDate, ReadsDateForms) {
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
    const std::optional<QDateTime> date = myDateWithNaturalLanguageString(QString::fromUtf8(c.text));
    ASSERT_TRUE(date.has_value()) << c.text;
    EXPECT_EQ(*date, c.expected) << c.text;
    EXPECT_EQ(date->timeSpec(), Qt::UTC) << c.text;
  }
}

TEST(NaturalDate, RejectsImpossibleAndAmbiguousText) {
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

TEST(NaturalDate, WritesIsoText) {
  EXPECT_EQ(isoDateString(utc(1999, 7, 1)), "1999-07-01T12:00:00Z");
  EXPECT_EQ(isoDateString(utc(1999, 7, 1, 12, 0, 0, 250)), "1999-07-01T12:00:00.250Z");
  EXPECT_EQ(isoDateString(utc(1, 1, 1, 0, 0, 0, 5)), "0001-01-01T00:00:00.005Z");
  const QDateTime ahead(QDate(1999, 7, 1), QTime(1, 30), Qt::OffsetFromUTC, 2 * 3600);
  EXPECT_EQ(isoDateString(ahead), "1999-06-30T23:30:00Z");
  EXPECT_EQ(isoDateString(QDateTime()), "");

  for (const QDateTime& date : {utc(1999, 7, 1), utc(2024, 2, 29, 23, 59, 59, 999), utc(9999, 12, 31)}) {
    EXPECT_EQ(myDateWithNaturalLanguageString(isoDateString(date)), date);
  }
}

}  // namespace
