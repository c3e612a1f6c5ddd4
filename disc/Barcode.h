#pragma once

#include <QString>

// The barcodes printed on releases: EAN-8, UPC-A (12 digits) and EAN-13. The last digit checks
// the others, so a mistyped or misread code is caught before anyone is asked about it.
namespace Barcode {

enum class Check { Valid, NotDigits, WrongLength, WrongCheckDigit };

// The digits of a code as typed, without the blanks and hyphens people put between groups.
QString digits(const QString& typed);
Check check(const QString& typed);
// The check digit the other digits call for (all digits but the last given).
int checkDigitFor(const QString& digitsWithoutCheck);
// Why a code is not one, in words; empty for a valid code.
QString problem(const QString& typed);

}  // namespace Barcode
