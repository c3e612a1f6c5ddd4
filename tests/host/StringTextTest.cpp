#include <gtest/gtest.h>

#include <ostream>

#include "StringText.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {

using namespace StringText;

TEST(StringText, FindsTextBetweenMarkers) {
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

}  // namespace
