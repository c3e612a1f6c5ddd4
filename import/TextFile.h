#pragma once

#include <QString>
#include <optional>

// Reading files of unknown origin as text.
class TextFile {
 public:
  static constexpr qint64 maximumBytes = qint64(256) << 20;
  enum class Encoding { Utf8, Utf16, Latin1 };
  // The file as text: UTF-16 with a byte order mark, else UTF-8 when it is valid, else Latin-1.
  // nullopt for a folder, an unreadable or oversized file, or one holding NUL bytes (not text).
  static std::optional<QString> stringFromFile(const QString& path, Encoding* encoding = nullptr);
};
