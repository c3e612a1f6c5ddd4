#pragma once

// How a stored attribute is held in memory and in the store.
enum class AttributeKind {
  Text,        // QString
  NumberText,  // QString holding a number ("12.50"), read leniently
  TimeText,    // QString "m:ss"
  Date,        // QDateTime, UTC
  Integer,     // qint64
  Boolean,     // bool
};
// ValueKind says what each kind does; its table follows this order.
