#include "PlayerLibraries.h"

#include "PlayerDatabaseLibrary.h"
#include "RhythmboxLibrary.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

QStringList PlayerLibraries::usualPaths() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return {data + QStringLiteral("/rhythmbox/rhythmdb.xml"), data + QStringLiteral("/strawberry/strawberry/strawberry.db"),
          config + QStringLiteral("/Clementine/clementine.db")};
}

QString PlayerLibraries::find() {
  for (const QString& path : usualPaths())
    if (QFileInfo(path).isFile()) return path;
  return {};
}

QVariantList PlayerLibraries::read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray head = file.peek(512);
  if (head.startsWith(QByteArrayLiteral("SQLite format 3"))) {
    file.close();
    return PlayerDatabaseLibrary::read(path);
  }
  if (head.contains("<rhythmdb")) return RhythmboxLibrary::read(file);
  return {};
}
