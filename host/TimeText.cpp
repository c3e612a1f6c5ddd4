#include "TimeText.h"

#include <limits>

namespace TimeText {

namespace {

constexpr qint64 kMaxInt = std::numeric_limits<qint64>::max();

bool isAsciiDigit(QChar c) { return c.unicode() >= '0' && c.unicode() <= '9'; }

int asciiDigit(QChar c) { return c.unicode() - '0'; }

// value * base + digit, pinned at kMaxInt; both operands are never negative here.
qint64 saturatingAppend(qint64 value, qint64 base, qint64 digit) {
  if (value > (kMaxInt - digit) / base) {
    return kMaxInt;
  }
  return value * base + digit;
}

}  // namespace

QString timeStringWithSeconds(qint64 seconds) {
  if (seconds < 0) {
    seconds = 0;
  }
  const qint64 remainder = seconds % 60;
  QString result = QString::number(seconds / 60);
  result += QLatin1Char(':');
  result += QLatin1Char(char('0' + remainder / 10));
  result += QLatin1Char(char('0' + remainder % 10));
  return result;
}

qint64 secondsAsTimeString(const QString& text) {
  const QStringView view = QStringView(text).trimmed();
  // At most hours, minutes and seconds; a fourth field means the text is not a duration.
  qint64 fields[3] = {0, 0, 0};
  int fieldCount = 0;
  qint64 current = 0;
  bool sawDigit = false;
  for (qsizetype i = 0; i < view.size(); ++i) {
    const QChar c = view[i];
    if (isAsciiDigit(c)) {
      current = saturatingAppend(current, 10, asciiDigit(c));
      sawDigit = true;
    } else if (c == QLatin1Char(':')) {
      if (fieldCount == 2) {
        return 0;
      }
      fields[fieldCount++] = current;
      current = 0;
    } else if (c == QLatin1Char('.') || c == QLatin1Char(',')) {
      // Fractions of a second ("3:45.25") are dropped, but only at the very end.
      for (++i; i < view.size(); ++i) {
        if (!isAsciiDigit(view[i])) {
          return 0;
        }
      }
      break;
    } else {
      return 0;
    }
  }
  if (!sawDigit) {
    return 0;
  }
  fields[fieldCount++] = current;
  // Fields over 59 are accepted as typed ("1:75" is 135 seconds).
  qint64 total = 0;
  for (int i = 0; i < fieldCount; ++i) {
    total = saturatingAppend(total, 60, 0);
    total = total > kMaxInt - fields[i] ? kMaxInt : total + fields[i];
  }
  return total;
}

}  // namespace TimeText
