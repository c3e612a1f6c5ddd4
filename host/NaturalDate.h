#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

// Dates read from the many ways people write them, and written as ISO 8601 text.
namespace NaturalDate {

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

}  // namespace NaturalDate
