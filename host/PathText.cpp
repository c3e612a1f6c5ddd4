#include "PathText.h"

#include <QDir>
#include <QFileInfo>

namespace PathText {

QString stringByResolvingAliasInPath(const QString& path) {
  if (path.isEmpty()) {
    return path;
  }
  const QString canonical = QFileInfo(path).canonicalFilePath();
  return canonical.isEmpty() ? path : canonical;
}

QString absoluteCleanPath(const QString& path) {
  return path.isEmpty() ? path : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

}  // namespace PathText
