#pragma once

#include <QDateTime>

// What time it is, for the checks that depend on the day (a loan past its due date). The
// environment variable DISCARY_NOW, an ISO 8601 time, stands in for the system clock when set,
// so that a test, or a user checking next week's loans, decides what "now" is.
namespace Clock {

inline constexpr char overrideVariable[] = "DISCARY_NOW";

// In UTC.
QDateTime now();

}  // namespace Clock
