#pragma once

#include <QString>
#include <QtGlobal>
#include <algorithm>

// An exact decimal amount for money totals, kept as a whole number of millionths: "0.1" and "0.2"
// add up to exactly 0.3, and a sum past about ±1.7e32 stays at the end of the range instead of
// wrapping round or becoming "inf".
class Decimal {
 public:
  Decimal() = default;
  explicit Decimal(qint64 whole);
  // The number in a money or decimal text, read as NumberText::myFloatValue reads it but
  // exactly; digits past the sixth decimal place are rounded half away from zero.
  static Decimal fromText(const QString& text);

  // The amount in eight bytes, for tables of many amounts: millionths, an amount past some
  // ±9.2 trillion counting as that much.
  qint64 compact() const;
  // A plain 128-bit sum of compact amounts, which cannot overflow for any number of them.
  static Decimal fromCompactSum(__int128 sum) { return Decimal(std::clamp<Units>(sum, -largest, largest)); }

  bool operator==(const Decimal& other) const = default;

  // The nearest double, for machine-readable output.
  double toDouble() const { return double(millionths_) / 1e6; }

  // "#,##0" with that many decimals (at most six), rounded half away from zero: the locale's
  // separators and digits, and U+2212 for minus.
  QString formatted(int decimals) const;

 private:
  using Units = __int128;
  static constexpr int places = 6;
  static constexpr Units largest = Units(~static_cast<unsigned __int128>(0) >> 1);

  explicit Decimal(Units millionths) : millionths_(millionths) {}

  Units millionths_ = 0;  // within ±largest, so that negating never overflows
};
