#pragma once

#include <QString>
#include <optional>

// Reading page templates, which come from the user and are not trusted: a size cap, UTF-8 with
// a byte-order mark allowed, and names that cannot reach outside their folder.
class TemplateFile {
 public:
  static constexpr qint64 maximumSize = qint64(4) * 1024 * 1024;

  // The file's text; nullopt with the reason set when it is missing, not a regular file, too
  // large or unreadable. Invalid UTF-8 sequences read as U+FFFD.
  static std::optional<QString> read(const QString& path, QString* error = nullptr);
  // A plain file name: not empty, no path separator, no "..".
  static bool isPlainName(const QString& name);
};
