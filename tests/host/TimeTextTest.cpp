#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "TimeText.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {

using namespace TimeText;

TEST(TimeText, FormatsAndReadsDurations) {
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

TEST(TimeText, FormattingAndReadingAreInverses) {
  for (qint64 seconds = 0; seconds < 20000; ++seconds) {
    ASSERT_EQ(secondsAsTimeString(timeStringWithSeconds(seconds)), seconds);
  }
  const qint64 max = std::numeric_limits<qint64>::max();
  for (const qint64 seconds : {qint64(1) << 40, max / 60 * 60, max - 1, max}) {
    EXPECT_EQ(secondsAsTimeString(timeStringWithSeconds(seconds)), seconds) << seconds;
  }
}

}  // namespace
