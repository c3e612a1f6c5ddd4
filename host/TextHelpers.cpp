#include "TextHelpers.h"

#include <chrono>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QRegularExpression>
#include <QTimeZone>
#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

namespace TextHelpers {

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

QDateTime utcDateTime(QDate date, QTime time) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return QDateTime(date, time, QTimeZone(QTimeZone::UTC));
#else
    return QDateTime(date, time, Qt::UTC);
#endif
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
            const bool group = end + 3 < length && isAsciiDigit(chars[end + 2]) &&
                               isAsciiDigit(chars[end + 3]) &&
                               (end + 4 == length || !isAsciiDigit(chars[end + 4]));
            if (!group) {
                break;
            }
        } else if (c != QLatin1Char('\'') && c.unicode() != 0x2019 && c.unicode() != 0x00A0 &&
                   c.unicode() != 0x2009 && c.unicode() != 0x202F) {
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
        const bool integerPartNonZero =
            std::any_of(digits, std::find(digits, end, '.'), [](char c) { return c != '0'; });
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

bool isNotEmpty(const QString& text) { return !text.isEmpty(); }

std::optional<QString> stringBetween(const QString& text, const QString& start,
                                     const QString& end) {
    const qsizetype startAt = text.indexOf(start);
    if (startAt < 0) {
        return std::nullopt;
    }
    const qsizetype contentAt = startAt + start.size();
    const qsizetype endAt = text.indexOf(end, contentAt);
    if (endAt < 0) {
        return std::nullopt;
    }
    return text.mid(contentAt, endAt - contentAt);
}

QStringList stringsBetween(const QString& text, const QString& start, const QString& end) {
    QStringList result;
    // Empty markers would match everywhere without moving forward.
    if (start.isEmpty() || end.isEmpty()) {
        return result;
    }
    qsizetype from = 0;
    while (true) {
        const qsizetype startAt = text.indexOf(start, from);
        if (startAt < 0) {
            break;
        }
        const qsizetype contentAt = startAt + start.size();
        const qsizetype endAt = text.indexOf(end, contentAt);
        if (endAt < 0) {
            break;
        }
        result.append(text.mid(contentAt, endAt - contentAt));
        from = endAt + end.size();
    }
    return result;
}

QString stringByRemovingLeadingAndTrailingSpaces(const QString& text) { return text.trimmed(); }

namespace {

const QHash<QString, char32_t>& namedReferences() {
    static const QHash<QString, char32_t> table = [] {
        QHash<QString, char32_t> names;
        // Latin-1 names in code point order, U+00A0 to U+00FF.
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
        static_assert(std::size(latin1) == 0x100 - 0xA0);
        for (size_t i = 0; i < std::size(latin1); ++i) {
            names.insert(QLatin1String(latin1[i]), char32_t(0xA0 + i));
        }
        // Markup essentials plus the typographic marks that fill album notes from the web.
        static const struct {
            const char* name;
            char32_t codePoint;
        } others[] = {
            {"amp", '&'},       {"lt", '<'},         {"gt", '>'},        {"quot", '"'},
            {"apos", '\''},     {"ndash", 0x2013},   {"mdash", 0x2014},  {"lsquo", 0x2018},
            {"rsquo", 0x2019},  {"sbquo", 0x201A},   {"ldquo", 0x201C},  {"rdquo", 0x201D},
            {"bdquo", 0x201E},  {"dagger", 0x2020},  {"Dagger", 0x2021}, {"bull", 0x2022},
            {"hellip", 0x2026}, {"prime", 0x2032},   {"Prime", 0x2033},  {"lsaquo", 0x2039},
            {"rsaquo", 0x203A}, {"euro", 0x20AC},    {"trade", 0x2122},  {"OElig", 0x0152},
            {"oelig", 0x0153},  {"Scaron", 0x0160},  {"scaron", 0x0161}, {"Yuml", 0x0178},
            {"fnof", 0x0192},   {"circ", 0x02C6},    {"tilde", 0x02DC},  {"sharp", 0x266F},
            {"flat", 0x266D},   {"natural", 0x266E},
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
            decoded = body[0] == QLatin1Char('#') ? numericReference(body)
                                                  : namedReferences().value(body.toString(), 0);
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
            case '\'':
                return true;
            default:
                return false;
        }
    };
    if (std::none_of(text.cbegin(), text.cend(), needsEscape)) {
        return text;
    }
    QString result;
    result.reserve(text.size() + text.size() / 8 + 16);
    for (const QChar c : text) {
        switch (c.unicode()) {
            case '&':
                result += QLatin1String("&amp;");
                break;
            case '<':
                result += QLatin1String("&lt;");
                break;
            case '>':
                result += QLatin1String("&gt;");
                break;
            case '"':
                result += QLatin1String("&quot;");
                break;
            // &apos; is unknown to HTML 4 readers; the numeric form works everywhere.
            case '\'':
                result += QLatin1String("&#39;");
                break;
            default:
                result += c;
                break;
        }
    }
    return result;
}

QString stringByResolvingAliasInPath(const QString& path) {
    if (path.isEmpty()) {
        return path;
    }
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

QString absoluteCleanPath(const QString& path) {
    return path.isEmpty() ? path : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

namespace {

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
    const QTime time(match.capturedView(4).toInt(), match.capturedView(5).toInt(), second,
                     millisecond);
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
        static const char* const names[] = {"january",   "february", "march",    "april",
                                            "may",       "june",     "july",     "august",
                                            "september", "october",  "november", "december"};
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
        QStringLiteral("monday"),   QStringLiteral("tuesday"), QStringLiteral("wednesday"),
        QStringLiteral("thursday"), QStringLiteral("friday"),  QStringLiteral("saturday"),
        QStringLiteral("sunday"),   QStringLiteral("mon"),     QStringLiteral("tue"),
        QStringLiteral("tues"),     QStringLiteral("wed"),     QStringLiteral("thu"),
        QStringLiteral("thur"),     QStringLiteral("thurs"),   QStringLiteral("fri"),
        QStringLiteral("sat"),      QStringLiteral("sun")};
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
            const bool suffix = word == QLatin1String("st") || word == QLatin1String("nd") ||
                                word == QLatin1String("rd") || word == QLatin1String("th");
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
        if (!c.isSpace() && c != QLatin1Char(',') && c != QLatin1Char('.') &&
            c != QLatin1Char('-') && c != QLatin1Char('/')) {
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

QString formattedNumber(double value, int decimals) {
    QLocale locale;
    locale.setNumberOptions(QLocale::DefaultNumberOptions);  // the C locale would drop the separators
    QString text = locale.toString(value, 'f', decimals);
    text.replace(locale.negativeSign(), QString(QChar(0x2212)));
    return text;
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
        return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d", utc.date().year(), utc.date().month(),
                                 utc.date().day(), utc.time().hour(), utc.time().minute(), utc.time().second()) +
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

}  // namespace TextHelpers
