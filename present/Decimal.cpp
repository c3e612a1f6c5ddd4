#include "Decimal.h"

#include "NumberText.h"

#include <QLocale>
#include <algorithm>
#include <limits>
#include <string>

namespace {

using Units = __int128;

Units power10(int n) {
  Units p = 1;
  while (n-- > 0) p *= 10;
  return p;
}

}  // namespace

Decimal::Decimal(qint64 whole) : millionths_(Units(whole) * power10(places)) {}

Decimal Decimal::fromText(const QString& text) {
  const std::string ascii = NumberText::decimalText(text);
  const bool negative = !ascii.empty() && ascii.front() == '-';
  const auto first = ascii.begin() + (negative ? 1 : 0);
  const auto point = std::find(first, ascii.end(), '.');
  const std::string fraction = point == ascii.end() ? std::string() : std::string(point + 1, ascii.end());
  // The integer digits and the first six decimals read as one whole number of millionths.
  std::string digits(first, point);
  digits += fraction.substr(0, places);
  digits.append(size_t(places) - std::min(fraction.size(), size_t(places)), '0');
  Units units = 0;
  for (const char c : digits) {
    if (units > (largest - (c - '0')) / 10) {
      units = largest;
      break;
    }
    units = units * 10 + (c - '0');
  }
  if (fraction.size() > size_t(places) && fraction[places] >= '5' && units < largest) ++units;
  return Decimal(negative ? -units : units);
}

qint64 Decimal::compact() const {
  return qint64(std::clamp<Units>(millionths_, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()));
}

QString Decimal::formatted(int decimals) const {
  decimals = std::clamp(decimals, 0, places);
  const Units step = power10(places - decimals);
  const Units magnitude = millionths_ < 0 ? -millionths_ : millionths_;
  Units shown = magnitude / step + (magnitude % step * 2 >= step ? 1 : 0);

  std::string ascii;  // the digits backwards, grouped, decimal point as '.'
  for (int i = 0; i < decimals; ++i, shown /= 10) ascii += char('0' + int(shown % 10));
  if (decimals > 0) ascii += '.';
  int inGroup = 0;
  do {
    if (inGroup++ == 3) {
      ascii += ',';
      inGroup = 1;
    }
    ascii += char('0' + int(shown % 10));
    shown /= 10;
  } while (shown > 0);
  const bool negative = millionths_ < 0 && ascii.find_first_not_of("0.,") != std::string::npos;

  QLocale locale;
  const QString zero = locale.zeroDigit(), group = locale.groupSeparator(), point = locale.decimalPoint();
  QString text;
  if (negative) text += QChar(0x2212);
  for (auto c = ascii.rbegin(); c != ascii.rend(); ++c) {
    if (*c == ',') text += group;
    else if (*c == '.') text += point;
    else if (zero.size() == 1) text += QChar(zero[0].unicode() + (*c - '0'));
    else text += QLatin1Char(*c);
  }
  return text;
}
