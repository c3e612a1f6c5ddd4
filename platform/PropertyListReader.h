#pragma once

#include <QVariant>
#include <optional>

// Property lists, XML or binary, read into Qt values: dictionaries as maps, arrays as lists,
// integers as qint64, reals, booleans, strings, dates (UTC) and data.
class PropertyListReader {
 public:
  // Files larger than this are not property lists this program reads.
  static constexpr qint64 maximumFileBytes = 16 * 1024 * 1024;
  static std::optional<QVariant> read(const QByteArray& bytes);
  static std::optional<QVariantMap> readDictionary(const QString& path);
};
