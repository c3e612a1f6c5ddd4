#include "NumberText.h"

#include <QLocale>
#include <algorithm>
#include <charconv>
#include <limits>

namespace NumberText {

namespace {

constexpr qint64 kMaxInt = std::numeric_limits<qint64>::max();

bool isAsciiDigit(QChar c) { return c.unicode() >= '0' && c.unicode() <= '9'; }

int asciiDigit(QChar c) { return c.unicode() - '0'; }

}  // namespace

std::string decimalText(const QString& text) {
  const QChar* chars = text.constData();
  const qsizetype length = text.size();

  qsizetype first = 0;
  while (first < length && !isAsciiDigit(chars[first])) {
    ++first;
  }
  if (first == length) {
    return {};
  }
  qsizetype start = first;
  if (start > 0 && chars[start - 1] == QLatin1Char('.')) {
    --start;  // ".5"
  }

  // The sign may sit before or after a currency symbol: "-$3", "$-3", "- 3".
  bool negative = false;
  for (qsizetype i = start - 1; i >= 0; --i) {
    const QChar c = chars[i];
    if (c == QLatin1Char('-') || c.unicode() == 0x2212) {
      negative = true;
      break;
    }
    if (!c.isSpace() && c.category() != QChar::Symbol_Currency) {
      break;
    }
  }

  // The number token: digits plus separators that are followed by a digit, so that a
  // sentence's full stop ("costs 12.") or a list comma ("12, 13") ends it.
  qsizetype end = start;
  qsizetype dots = 0, commas = 0, lastDot = -1, lastComma = -1;
  while (end < length) {
    const QChar c = chars[end];
    if (isAsciiDigit(c)) {
      ++end;
      continue;
    }
    const bool followedByDigit = end + 1 < length && isAsciiDigit(chars[end + 1]);
    if (!followedByDigit) {
      break;
    }
    if (c == QLatin1Char('.')) {
      ++dots;
      lastDot = end;
    } else if (c == QLatin1Char(',')) {
      ++commas;
      lastComma = end;
    } else if (c == QLatin1Char(' ')) {
      // A plain space groups digits only before exactly three of them ("1 299,50"),
      // so that "2 12" stays two numbers.
      const bool group = end + 3 < length && isAsciiDigit(chars[end + 2]) && isAsciiDigit(chars[end + 3]) &&
                         (end + 4 == length || !isAsciiDigit(chars[end + 4]));
      if (!group) {
        break;
      }
    } else if (c != QLatin1Char('\'') && c.unicode() != 0x2019 && c.unicode() != 0x00A0 && c.unicode() != 0x2009 &&
               c.unicode() != 0x202F) {
      break;  // not a digit-group separator either
    }
    ++end;
  }

  // Work out which separator, if any, is the decimal one; all others group digits.
  qsizetype decimalAt = -1;
  if (dots > 0 && commas > 0) {
    decimalAt = std::max(lastDot, lastComma);  // "1,299.00", "1.299,00"
  } else if (dots == 1) {
    decimalAt = lastDot;
  } else if (commas == 1) {
    const qsizetype digitsAfter = end - lastComma - 1;
    const bool leadingZero = lastComma - start == 1 && chars[start] == QLatin1Char('0');
    if (digitsAfter <= 2 || leadingZero) {
      decimalAt = lastComma;  // "12,50", "0,125"; "1,299" is a thousands group
    }
  }

  std::string ascii;
  ascii.reserve(size_t(end - start) + 2);
  if (negative) {
    ascii += '-';
  }
  for (qsizetype i = start; i < end; ++i) {
    if (i == decimalAt) {
      ascii += '.';
    } else if (isAsciiDigit(chars[i])) {
      ascii += char(chars[i].unicode());
    }
  }
  return ascii;
}

double myFloatValue(const QString& text) {
  const std::string ascii = decimalText(text);
  const bool negative = !ascii.empty() && ascii.front() == '-';
  const char* digits = ascii.data() + (negative ? 1 : 0);
  const char* end = ascii.data() + ascii.size();
  if (digits == end) {
    return 0;
  }

  double value = 0;
  const std::errc error = std::from_chars(digits, end, value, std::chars_format::fixed).ec;
  if (error == std::errc::result_out_of_range) {
    const bool integerPartNonZero = std::any_of(digits, std::find(digits, end, '.'), [](char c) { return c != '0'; });
    // Too large saturates; too small (hundreds of leading zeros) is zero.
    value = integerPartNonZero ? std::numeric_limits<double>::max() : 0.0;
  } else if (error != std::errc()) {
    return 0;
  }
  if (value == 0) {
    return 0;  // never "-0"
  }
  return negative ? -value : value;
}

qint64 myIntValue(const QString& text) {
  const QChar* chars = text.constData();
  const qsizetype length = text.size();
  qsizetype i = 0;
  while (i < length && chars[i].isSpace()) {
    ++i;
  }
  bool negative = false;
  if (i < length && (chars[i] == QLatin1Char('-') || chars[i] == QLatin1Char('+'))) {
    negative = chars[i] == QLatin1Char('-');
    ++i;
  }
  // Accumulate the magnitude unsigned so that the minimum, one larger than the maximum,
  // still fits.
  const quint64 limit = negative ? quint64(kMaxInt) + 1 : quint64(kMaxInt);
  quint64 magnitude = 0;
  for (; i < length && isAsciiDigit(chars[i]); ++i) {
    const quint64 digit = quint64(asciiDigit(chars[i]));
    if (magnitude > (limit - digit) / 10) {
      magnitude = limit;
      break;
    }
    magnitude = magnitude * 10 + digit;
  }
  if (!negative) {
    return qint64(magnitude);
  }
  return magnitude == limit ? std::numeric_limits<qint64>::min() : -qint64(magnitude);
}

QString formattedNumber(double value, int decimals) {
  QLocale locale;
  locale.setNumberOptions(QLocale::DefaultNumberOptions);  // the C locale would drop the separators
  QString text = locale.toString(value, 'f', decimals);
  text.replace(locale.negativeSign(), QString(QChar(0x2212)));
  return text;
}

}  // namespace NumberText
