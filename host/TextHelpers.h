#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QtNumeric>
#include <limits>
#include <optional>
#include <string>

// Pure text, number, time and date conversions shared by every layer.
namespace TextHelpers {

// "m:ss" with unbounded minutes: 225 -> "3:45", 4325 -> "72:05", 0 -> "0:00".
// Negative input is clamped to 0.
QString timeStringWithSeconds(qint64 seconds);

// Whole seconds of a time text. Reads "m:ss", "h:mm:ss" (as typed by a user), a bare number of
// seconds ("245"), and ignores surrounding spaces. Lenient within fields ("3:4" is 184, "1:75" is
// 135, "3:45.5" drops the fraction); empty or unreadable text gives 0. Saturates at the maximum.
qint64 secondsAsTimeString(const QString& text);

// The number in a money or decimal text, 0 when none: "$12.50" -> 12.5, "1,299.00" -> 1299,
// "12,50" -> 12.5 (a lone comma followed by 1-2 digits is a decimal comma), "-3" -> -3,
// "-$3" -> -3, "abc" -> 0. With both '.' and ',' the later one is the decimal mark
// ("1.299,00" -> 1299); a mark repeated alone groups digits ("1.299.000"); a lone '.' is always
// decimal; "0,125" -> 0.125; a space groups only before exactly three digits ("1 299,50").
// Too large saturates at the largest double.
double myFloatValue(const QString& text);

// The number myFloatValue reads, exactly as written, in plain ASCII: "$1,299.00" -> "1299.00",
// "-$3" -> "-3", "12,50" -> "12.50", ".5" -> ".5"; empty when the text holds no number.
std::string decimalText(const QString& text);

// The integer in a text, 0 when none: leading spaces skipped, optional sign, digits up to the
// first non-digit: "12 tracks" -> 12, "2/3" -> 2, " -4" -> -4, "x" -> 0. Saturates instead of
// overflowing.
qint64 myIntValue(const QString& text);

// a + b pinned at the ends of the range, for totals that must never wrap.
inline qint64 saturatingAdd(qint64 a, qint64 b) {
    qint64 sum;
    if (!qAddOverflow(a, b, &sum)) {
        return sum;
    }
    return b > 0 ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min();
}

// The number with the locale's thousand separators and that many decimals ("#,##0",
// "#,##0.00"), negative numbers with the minus sign U+2212 rather than a hyphen.
QString formattedNumber(double value, int decimals);

// True for any character, whitespace included.
bool isNotEmpty(const QString& text);

// First substring between the two markers, the end searched after the start, or nullopt when
// either marker is missing.
std::optional<QString> stringBetween(const QString& text, const QString& start, const QString& end);

// Every substring between successive occurrences of the two markers, in order. Empty markers
// give an empty list.
QStringList stringsBetween(const QString& text, const QString& start, const QString& end);

QString stringByRemovingLeadingAndTrailingSpaces(const QString& text);

// Decodes named (&amp; &lt; &gt; &quot; &apos; &nbsp;, the Latin-1 names and common typographic
// ones such as &hellip; &rsquo; &euro;), decimal (&#233;) and hex (&#xE9;) character references,
// in one pass ("&amp;lt;" -> "&lt;"). &#128;-&#159; read as Windows-1252, as browsers do. Unknown
// or malformed references, a missing ';', and references to NUL, controls or surrogates stay as
// they are.
QString stringByReplacingHTMLEncoding(const QString& text);

// Escapes & < > " ' for safe use in HTML text and attribute values (' as &#39;).
QString encodeForHTML(const QString& text);

// The canonical absolute path with symbolic links resolved (Linux has no other kind of alias);
// the path itself when it, or a link's target, does not exist.
QString stringByResolvingAliasInPath(const QString& path);

// The path made absolute against the working folder, with "." and ".." steps, doubled and
// trailing slashes removed; symbolic links are kept as written. Empty stays empty.
QString absoluteCleanPath(const QString& path);

// A date read from free text, in UTC, or nullopt. A bare four-digit year ("1999") gives 1 July
// of that year at 12:00 UTC, so that shifting it by a couple of days never changes its year. Also
// reads ISO dates and date-times ("1999-03-04", "1999-03-04T10:00:00Z"; an offset is converted to
// UTC, no zone means UTC), "yyyy-MM", slashed or dashed dates month first as an English-speaking
// user types them ("01/31/1999"; day first when the first number is over 12; year first when it
// has four digits), "MM/yyyy", dotted dates day first ("4.3.1999"), and English month names
// ("March 4, 1999", "Thu, 4th of Mar. 1999", "March 1999"). A date without a day gets the 1st; a
// date without a time of day gets 12:00 UTC. Years are written with four digits, or two in the
// day-month-year forms (30-99 -> 1900s, 00-29 -> 2000s). Years 1-9999 are accepted; impossible
// dates (31/02) give nullopt.
std::optional<QDateTime> myDateWithNaturalLanguageString(const QString& text);

// ISO 8601 UTC text of a date, "1999-07-01T12:00:00Z" (milliseconds only when not zero); empty
// for an invalid date.
QString isoDateString(const QDateTime& date);

}  // namespace TextHelpers
