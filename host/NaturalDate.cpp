#include "NaturalDate.h"

#include <chrono>

#include <QHash>
#include <QList>
#include <QRegularExpression>
#include <QTimeZone>
#include <algorithm>

namespace NaturalDate {

namespace {

bool isAsciiDigit(QChar c) { return c.unicode() >= '0' && c.unicode() <= '9'; }

QDateTime utcDateTime(QDate date, QTime time) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
  return QDateTime(date, time, QTimeZone(QTimeZone::UTC));
#else
  return QDateTime(date, time, Qt::UTC);
#endif
}

// Two-digit years as people type them for records: 30-99 are the 1900s, 00-29 the 2000s.
int yearFromDigits(QStringView digits) {
  const int value = digits.toInt();
  if (digits.size() == 4) {
    return value;
  }
  if (digits.size() == 2) {
    return value < 30 ? 2000 + value : 1900 + value;
  }
  return 0;  // other widths are too ambiguous to read as a year
}

std::optional<QDateTime> middayOn(int year, int month, int day) {
  if (year < 1 || year > 9999 || !QDate::isValid(year, month, day)) {
    return std::nullopt;
  }
  return utcDateTime(QDate(year, month, day), QTime(12, 0));
}

std::optional<QDateTime> readIsoDate(const QString& text) {
  static const QRegularExpression iso(
      QStringLiteral("^([0-9]{4})-([0-9]{1,2})(?:-([0-9]{1,2})"
                     "(?:[Tt ]([0-9]{1,2}):([0-9]{2})(?::([0-9]{2})(?:[.,]([0-9]{1,9}))?)?"
                     "\\s*(?:([Zz])|([+-])([0-9]{2})(?::?([0-9]{2}))?)?)?)?$"));
  const QRegularExpressionMatch match = iso.match(text);
  if (!match.hasMatch()) {
    return std::nullopt;
  }
  const int year = match.capturedView(1).toInt();
  const int month = match.capturedView(2).toInt();
  if (!match.hasCaptured(3)) {
    return middayOn(year, month, 1);
  }
  const int day = match.capturedView(3).toInt();
  if (!match.hasCaptured(4)) {
    return middayOn(year, month, day);
  }
  if (year < 1 || year > 9999 || !QDate::isValid(year, month, day)) {
    return std::nullopt;
  }
  int millisecond = 0;
  if (match.hasCaptured(7)) {
    const QString fraction = match.captured(7).left(3).leftJustified(3, QLatin1Char('0'));
    millisecond = fraction.toInt();
  }
  const int second = match.hasCaptured(6) ? match.capturedView(6).toInt() : 0;
  const QTime time(match.capturedView(4).toInt(), match.capturedView(5).toInt(), second, millisecond);
  if (!time.isValid()) {
    return std::nullopt;
  }
  QDateTime result = utcDateTime(QDate(year, month, day), time);
  if (match.hasCaptured(9)) {
    const int hours = match.capturedView(10).toInt();
    const int minutes = match.hasCaptured(11) ? match.capturedView(11).toInt() : 0;
    if (hours > 23 || minutes > 59) {
      return std::nullopt;
    }
    const int offset = (hours * 60 + minutes) * 60;
    result = result.addSecs(match.capturedView(9) == QLatin1String("-") ? offset : -offset);
    if (result.date().year() < 1 || result.date().year() > 9999) {
      return std::nullopt;
    }
  }
  return result;
}

std::optional<QDateTime> readNumericDate(const QString& text) {
  static const QRegularExpression numeric(
      QStringLiteral("^([0-9]{1,4})\\s*([/.-])\\s*([0-9]{1,2})\\s*\\2\\s*([0-9]{1,4})$"));
  static const QRegularExpression monthYear(QStringLiteral("^([0-9]{1,2})\\s*/\\s*([0-9]{4})$"));

  const QRegularExpressionMatch match = numeric.match(text);
  if (match.hasMatch()) {
    const QStringView first = match.capturedView(1);
    const int middle = match.capturedView(3).toInt();
    const QStringView last = match.capturedView(4);
    if (first.size() == 4) {
      return last.size() <= 2 ? middayOn(first.toInt(), middle, last.toInt()) : std::nullopt;
    }
    if (first.size() > 2) {
      return std::nullopt;
    }
    const int leading = first.toInt();
    const bool dayFirst = match.capturedView(2) == QLatin1String(".") || leading > 12;
    const int year = yearFromDigits(last);
    return dayFirst ? middayOn(year, middle, leading) : middayOn(year, leading, middle);
  }

  const QRegularExpressionMatch monthOnly = monthYear.match(text);
  if (monthOnly.hasMatch()) {
    return middayOn(monthOnly.capturedView(2).toInt(), monthOnly.capturedView(1).toInt(), 1);
  }
  return std::nullopt;
}

int monthFromName(const QString& word) {
  static const QHash<QString, int> months = [] {
    static const char* const names[] = {"january", "february", "march",     "april",   "may",      "june",
                                        "july",    "august",   "september", "october", "november", "december"};
    QHash<QString, int> table;
    for (int i = 0; i < 12; ++i) {
      const QString name = QLatin1String(names[i]);
      table.insert(name, i + 1);
      table.insert(name.left(3), i + 1);
    }
    table.insert(QStringLiteral("sept"), 9);
    return table;
  }();
  return months.value(word, 0);
}

bool isWeekdayName(const QString& word) {
  static const QStringList weekdays = {
      QStringLiteral("monday"), QStringLiteral("tuesday"),  QStringLiteral("wednesday"), QStringLiteral("thursday"),
      QStringLiteral("friday"), QStringLiteral("saturday"), QStringLiteral("sunday"),    QStringLiteral("mon"),
      QStringLiteral("tue"),    QStringLiteral("tues"),     QStringLiteral("wed"),       QStringLiteral("thu"),
      QStringLiteral("thur"),   QStringLiteral("thurs"),    QStringLiteral("fri"),       QStringLiteral("sat"),
      QStringLiteral("sun")};
  return weekdays.contains(word);
}

// "March 4, 1999", "4th of Mar. 1999", "Thursday, March 4th 1999", "March 1999", "1999 Mar 4".
std::optional<QDateTime> readDateWithMonthName(const QString& text) {
  struct Token {
    int month = 0;  // non-zero for a month name
    QStringView digits;
    bool ordinal = false;
  };
  QList<Token> tokens;
  const qsizetype length = text.size();
  qsizetype i = 0;
  bool adjacentToNumber = false;
  while (i < length) {
    const QChar c = text[i];
    if (isAsciiDigit(c)) {
      const qsizetype from = i;
      while (i < length && isAsciiDigit(text[i])) {
        ++i;
      }
      if (i - from > 4) {
        return std::nullopt;
      }
      tokens.append(Token{0, QStringView(text).mid(from, i - from), false});
      adjacentToNumber = true;
      continue;
    }
    if (c.unicode() < 0x80 && c.isLetter()) {
      const qsizetype from = i;
      while (i < length && text[i].unicode() < 0x80 && text[i].isLetter()) {
        ++i;
      }
      const QString word = text.mid(from, i - from).toLower();
      const bool suffix = word == QLatin1String("st") || word == QLatin1String("nd") || word == QLatin1String("rd") ||
                          word == QLatin1String("th");
      if (suffix && adjacentToNumber && !tokens.last().ordinal) {
        tokens.last().ordinal = true;
      } else if (const int month = monthFromName(word)) {
        tokens.append(Token{month, {}, false});
      } else if (!(isWeekdayName(word) && tokens.isEmpty()) && word != QLatin1String("of")) {
        return std::nullopt;
      }
      adjacentToNumber = false;
      continue;
    }
    if (!c.isSpace() && c != QLatin1Char(',') && c != QLatin1Char('.') && c != QLatin1Char('-') &&
        c != QLatin1Char('/')) {
      return std::nullopt;
    }
    adjacentToNumber = false;
    ++i;
  }

  const auto isMonth = [&](qsizetype at) { return tokens[at].month != 0; };
  const auto isDay = [&](qsizetype at) { return !isMonth(at) && tokens[at].digits.size() <= 2; };
  const auto isYear = [&](qsizetype at) { return !isMonth(at) && !tokens[at].ordinal; };
  const auto dayOf = [&](qsizetype at) { return tokens[at].digits.toInt(); };
  const auto yearOf = [&](qsizetype at) { return yearFromDigits(tokens[at].digits); };

  if (tokens.size() == 3) {
    if (isMonth(0) && isDay(1) && isYear(2)) {
      return middayOn(yearOf(2), tokens[0].month, dayOf(1));
    }
    if (isDay(0) && isMonth(1) && isYear(2)) {
      return middayOn(yearOf(2), tokens[1].month, dayOf(0));
    }
    if (isYear(0) && tokens[0].digits.size() == 4 && isMonth(1) && isDay(2)) {
      return middayOn(yearOf(0), tokens[1].month, dayOf(2));
    }
  } else if (tokens.size() == 2) {
    if (isMonth(0) && isYear(1) && tokens[1].digits.size() == 4) {
      return middayOn(yearOf(1), tokens[0].month, 1);
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<QDateTime> myDateWithNaturalLanguageString(const QString& text) {
  const QString trimmed = text.trimmed();
  // No date form is this long; refusing early keeps garbage cheap.
  if (trimmed.isEmpty() || trimmed.size() > 64) {
    return std::nullopt;
  }
  if (trimmed.size() == 4 && std::all_of(trimmed.cbegin(), trimmed.cend(), isAsciiDigit)) {
    // Mid-year, so that shifting by time zone or a few days keeps the year.
    const int year = trimmed.toInt();
    if (year < 1) {
      return std::nullopt;
    }
    return utcDateTime(QDate(year, 7, 1), QTime(12, 0));
  }
  if (auto date = readIsoDate(trimmed)) {
    return date;
  }
  if (auto date = readNumericDate(trimmed)) {
    return date;
  }
  return readDateWithMonthName(trimmed);
}

QString isoDateString(const QDateTime& date) {
  if (!date.isValid()) {
    return {};
  }
  // Whole catalogues are printed with this, so it avoids QString::asprintf.
  using namespace std::chrono;
  const sys_time<milliseconds> instant{milliseconds(date.toMSecsSinceEpoch())};
  const sys_days day = floor<days>(instant);
  const year_month_day ymd{day};
  const hh_mm_ss<milliseconds> time{instant - day};
  const int year = int(ymd.year());
  if (year < 1 || year > 9999) {
    const QDateTime utc = date.toUTC();
    return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d", utc.date().year(), utc.date().month(), utc.date().day(),
                             utc.time().hour(), utc.time().minute(), utc.time().second()) +
           (utc.time().msec() ? QString::asprintf(".%03dZ", utc.time().msec()) : QStringLiteral("Z"));
  }
  char text[32];
  char* p = text;
  const auto digits = [&p](int value, int width) {
    for (int i = width - 1; i >= 0; --i, value /= 10) p[i] = char('0' + value % 10);
    p += width;
  };
  digits(year, 4);
  *p++ = '-';
  digits(int(unsigned(ymd.month())), 2);
  *p++ = '-';
  digits(int(unsigned(ymd.day())), 2);
  *p++ = 'T';
  digits(int(time.hours().count()), 2);
  *p++ = ':';
  digits(int(time.minutes().count()), 2);
  *p++ = ':';
  digits(int(time.seconds().count()), 2);
  if (const int ms = int(time.subseconds().count())) {
    *p++ = '.';
    digits(ms, 3);
  }
  *p++ = 'Z';
  return QString::fromLatin1(text, p - text);
}

}  // namespace NaturalDate
