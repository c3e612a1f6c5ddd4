#pragma once

#include <QString>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

// A private temporary folder that inputs are written to, for entry points that read a path.
// Each write replaces the file of that name, so a run leaves one file per name behind.
class ScratchFolder {
 public:
  ScratchFolder();
  QString path(const QString& name) const { return dir_.filePath(name); }
  // The path written, or an empty string when the file cannot be written.
  QString write(const QString& name, const uint8_t* data, size_t size) const;

 private:
  QTemporaryDir dir_;
};
