#include "ScratchFolder.h"

#include <QFile>
#include <cstdio>
#include <cstdlib>

ScratchFolder::ScratchFolder() {
  if (!dir_.isValid()) {
    std::fprintf(stderr, "cannot make a temporary folder: %s\n", qPrintable(dir_.errorString()));
    std::abort();
  }
}

QString ScratchFolder::write(const QString& name, const uint8_t* data, size_t size) const {
  const QString file = path(name);
  QFile out(file);
  if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) return {};
  if (out.write(reinterpret_cast<const char*>(data), qint64(size)) != qint64(size)) return {};
  return file;
}
