#include "Barcode.h"

QString Barcode::digits(const QString& typed) {
  QString kept = typed.trimmed();
  kept.remove(u' ');
  kept.remove(u'-');
  return kept;
}

int Barcode::checkDigitFor(const QString& digitsWithoutCheck) {
  // From the right, the digits weigh 3, 1, 3, 1...: the same rule for all three lengths.
  int sum = 0;
  bool three = true;
  for (qsizetype i = digitsWithoutCheck.size() - 1; i >= 0; --i, three = !three)
    sum += digitsWithoutCheck.at(i).digitValue() * (three ? 3 : 1);
  return (10 - sum % 10) % 10;
}

Barcode::Check Barcode::check(const QString& typed) {
  const QString code = digits(typed);
  for (const QChar c : code)
    if (c < u'0' || c > u'9') return Check::NotDigits;
  if (code.size() != 8 && code.size() != 12 && code.size() != 13) return Check::WrongLength;
  return checkDigitFor(code.chopped(1)) == code.back().digitValue() ? Check::Valid : Check::WrongCheckDigit;
}

QString Barcode::problem(const QString& typed) {
  switch (check(typed)) {
    case Check::Valid:
      return {};
    case Check::NotDigits:
      return QStringLiteral("'%1' is not a barcode: it may hold only digits").arg(typed);
    case Check::WrongLength:
      return QStringLiteral("'%1' is not a barcode: EAN-8, UPC-A and EAN-13 have 8, 12 or 13 digits").arg(typed);
    case Check::WrongCheckDigit: {
      const QString code = digits(typed);
      return QStringLiteral("'%1' is not a valid barcode: its check digit is %2, the other digits call for %3")
          .arg(typed, code.back())
          .arg(checkDigitFor(code.chopped(1)));
    }
  }
  return {};
}
