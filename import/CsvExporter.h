#pragma once

#include <QString>
#include <vector>

class Entry;

// Comma-separated UTF-8 text: a header row of attribute identifiers (those any entry has, in the
// entity's order, then "tracks"), one row per entry, quoted as RFC 4180 says.
class CsvExporter {
 public:
  static QByteArray text(const std::vector<Entry*>& entries);
  static bool write(const std::vector<Entry*>& entries, const QString& path, QString* error);
};
