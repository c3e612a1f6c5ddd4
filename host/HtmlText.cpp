#include "HtmlText.h"

#include <QHash>
#include <algorithm>
#include <iterator>

namespace HtmlText {

namespace {

const QHash<QString, char32_t>& namedReferences() {
  static const QHash<QString, char32_t> table = [] {
    QHash<QString, char32_t> names;
    // Latin-1 names in code point order, U+00A0 to U+00FF.
    // clang-format off
    static const char* const latin1[] = {
        "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",
        "uml",    "copy",   "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",
        "deg",    "plusmn", "sup2",   "sup3",   "acute",  "micro",  "para",   "middot",
        "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12", "frac34", "iquest",
        "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil",
        "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute", "Icirc",  "Iuml",
        "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",   "times",
        "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",  "szlig",
        "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil",
        "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",
        "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide",
        "oslash", "ugrave", "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml",
    };
    // clang-format on
    static_assert(std::size(latin1) == 0x100 - 0xA0);
    for (size_t i = 0; i < std::size(latin1); ++i) {
      names.insert(QLatin1String(latin1[i]), char32_t(0xA0 + i));
    }
    // Markup essentials plus the typographic marks that fill album notes from the web.
    static const struct {
      const char* name;
      char32_t codePoint;
    } others[] = {
        {"amp", '&'},       {"lt", '<'},        {"gt", '>'},       {"quot", '"'},       {"apos", '\''},
        {"ndash", 0x2013},  {"mdash", 0x2014},  {"lsquo", 0x2018}, {"rsquo", 0x2019},   {"sbquo", 0x201A},
        {"ldquo", 0x201C},  {"rdquo", 0x201D},  {"bdquo", 0x201E}, {"dagger", 0x2020},  {"Dagger", 0x2021},
        {"bull", 0x2022},   {"hellip", 0x2026}, {"prime", 0x2032}, {"Prime", 0x2033},   {"lsaquo", 0x2039},
        {"rsaquo", 0x203A}, {"euro", 0x20AC},   {"trade", 0x2122}, {"OElig", 0x0152},   {"oelig", 0x0153},
        {"Scaron", 0x0160}, {"scaron", 0x0161}, {"Yuml", 0x0178},  {"fnof", 0x0192},    {"circ", 0x02C6},
        {"tilde", 0x02DC},  {"sharp", 0x266F},  {"flat", 0x266D},  {"natural", 0x266E},
    };
    for (const auto& entry : others) {
      names.insert(QLatin1String(entry.name), entry.codePoint);
    }
    return names;
  }();
  return table;
}

// Numeric references in 0x80-0x9F mean Windows-1252 characters, as browsers read them;
// zero marks the C1 controls that have no such meaning.
constexpr char16_t kWindows1252[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// The character a numeric reference body ("#233", "#xE9") stands for, or 0 when it is not a
// usable character.
char32_t numericReference(QStringView body) {
  qsizetype i = 1;
  int base = 10;
  if (i < body.size() && (body[i] == QLatin1Char('x') || body[i] == QLatin1Char('X'))) {
    base = 16;
    ++i;
  }
  if (i == body.size()) {
    return 0;
  }
  char32_t value = 0;
  for (; i < body.size(); ++i) {
    const char16_t c = body[i].unicode();
    int digit;
    if (c >= '0' && c <= '9') {
      digit = c - '0';
    } else if (base == 16 && c >= 'a' && c <= 'f') {
      digit = c - 'a' + 10;
    } else if (base == 16 && c >= 'A' && c <= 'F') {
      digit = c - 'A' + 10;
    } else {
      return 0;
    }
    value = value * char32_t(base) + char32_t(digit);
    if (value > 0x10FFFF) {
      return 0;  // stop before the arithmetic can wrap
    }
  }
  if (value >= 0x80 && value <= 0x9F) {
    return kWindows1252[value - 0x80];
  }
  const bool allowedControl = value == '\t' || value == '\n' || value == '\r';
  if ((value < 0x20 && !allowedControl) || value == 0x7F) {
    return 0;
  }
  if (value >= 0xD800 && value <= 0xDFFF) {
    return 0;  // lone surrogates are not characters
  }
  return value;
}

}  // namespace

QString stringByReplacingHTMLEncoding(const QString& text) {
  if (!text.contains(QLatin1Char('&'))) {
    return text;
  }
  // Longest name or numeric body worth looking at; bounds the look-ahead on garbage.
  constexpr qsizetype kMaxBody = 32;
  const QChar* chars = text.constData();
  const qsizetype length = text.size();
  QString result;
  result.reserve(length);
  qsizetype i = 0;
  while (i < length) {
    if (chars[i] != QLatin1Char('&')) {
      result += chars[i++];
      continue;
    }
    qsizetype semicolon = -1;
    for (qsizetype j = i + 1; j < length && j - i - 1 <= kMaxBody; ++j) {
      const QChar c = chars[j];
      if (c == QLatin1Char(';')) {
        semicolon = j;
        break;
      }
      const bool asciiAlnum = c.unicode() < 0x80 && c.isLetterOrNumber();
      if (!asciiAlnum && !(j == i + 1 && c == QLatin1Char('#'))) {
        break;
      }
    }
    char32_t decoded = 0;
    if (semicolon > i + 1) {
      const QStringView body(chars + i + 1, semicolon - i - 1);
      decoded = body[0] == QLatin1Char('#') ? numericReference(body) : namedReferences().value(body.toString(), 0);
    }
    if (decoded == 0) {
      result += chars[i++];  // left as written; the rest is copied as plain text
      continue;
    }
    if (QChar::requiresSurrogates(decoded)) {
      result += QChar(QChar::highSurrogate(decoded));
      result += QChar(QChar::lowSurrogate(decoded));
    } else {
      result += QChar(char16_t(decoded));
    }
    i = semicolon + 1;
  }
  return result;
}

QString encodeForHTML(const QString& text) {
  const auto needsEscape = [](QChar c) {
    switch (c.unicode()) {
      case '&':
      case '<':
      case '>':
      case '"':
      case '\'': return true;
      default: return false;
    }
  };
  if (std::none_of(text.cbegin(), text.cend(), needsEscape)) {
    return text;
  }
  QString result;
  result.reserve(text.size() + text.size() / 8 + 16);
  for (const QChar c : text) {
    switch (c.unicode()) {
      case '&': result += QLatin1String("&amp;"); break;
      case '<': result += QLatin1String("&lt;"); break;
      case '>': result += QLatin1String("&gt;"); break;
      case '"': result += QLatin1String("&quot;"); break;
      // &apos; is unknown to HTML 4 readers; the numeric form works everywhere.
      case '\'': result += QLatin1String("&#39;"); break;
      default: result += c; break;
    }
  }
  return result;
}

}  // namespace HtmlText
