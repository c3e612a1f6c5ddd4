#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "NumberText.h"

namespace {

using namespace NumberText;

TEST(NumberText, ReadsMoneyAndDecimalText) {
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

TEST(NumberText, ReadsLeadingIntegers) {
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

}  // namespace
