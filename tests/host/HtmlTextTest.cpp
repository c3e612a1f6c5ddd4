#include <gtest/gtest.h>

#include <ostream>

#include "HtmlText.h"

static void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {

using namespace HtmlText;

TEST(HtmlText, DecodesReferences) {
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
      {"&#0; &#1; &#xD800; &#x110000; &#; &#x; &#12a; &#129;", "&#0; &#1; &#xD800; &#x110000; &#; &#x; &#12a; &#129;"},
      {"&&amp;;", "&&;"},
      {"", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(stringByReplacingHTMLEncoding(QString::fromUtf8(c.text)), QString::fromUtf8(c.decoded)) << c.text;
  }
}

TEST(HtmlText, EncodingIsUndoneByDecoding) {
  EXPECT_EQ(encodeForHTML(QStringLiteral("<a href=\"x\">Tom's & Jerry's</a>")),
            "&lt;a href=&quot;x&quot;&gt;Tom&#39;s &amp; Jerry&#39;s&lt;/a&gt;");
  EXPECT_EQ(encodeForHTML(QStringLiteral("plain é")), "plain é");
  for (const char* text : {"&amp;", "a<b>&c\"'", "&#233; &eacute;", "&&&;;", ""}) {
    const QString original = QString::fromUtf8(text);
    EXPECT_EQ(stringByReplacingHTMLEncoding(encodeForHTML(original)), original) << text;
  }
}

}  // namespace
