#pragma once

#include <QString>
#include <QtNumeric>
#include <limits>
#include <string>

// Numbers read from money and count text, and written for display.
namespace NumberText {

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

}  // namespace NumberText
