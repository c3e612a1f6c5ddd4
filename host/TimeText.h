#pragma once

#include <QString>

// Track and disc durations as "m:ss" text and back.
namespace TimeText {

// "m:ss" with unbounded minutes: 225 -> "3:45", 4325 -> "72:05", 0 -> "0:00".
// Negative input is clamped to 0.
QString timeStringWithSeconds(qint64 seconds);

// Whole seconds of a time text. Reads "m:ss", "h:mm:ss" (as typed by a user), a bare number of
// seconds ("245"), and ignores surrounding spaces. Lenient within fields ("3:4" is 184, "1:75" is
// 135, "3:45.5" drops the fraction); empty or unreadable text gives 0. Saturates at the maximum.
qint64 secondsAsTimeString(const QString& text);

}  // namespace TimeText
