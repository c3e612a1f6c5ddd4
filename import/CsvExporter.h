#pragma once

#include <QString>
#include <vector>

class Entry;
class QIODevice;

// Comma-separated UTF-8 text: a header row of attribute identifiers (those any entry has, in the
// entity's order, then "tracks"), one row per entry, quoted as RFC 4180 says.
class CsvExporter {
 public:
  static QByteArray text(const std::vector<Entry*>& entries);
  // False when the device would not take the text.
  static bool write(const std::vector<Entry*>& entries, QIODevice& out);
  static bool write(const std::vector<Entry*>& entries, const QString& path, QString* error);
};
