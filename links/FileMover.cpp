#include "FileMover.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace {

QByteArray digestOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QCryptographicHash hash(QCryptographicHash::Sha256);
  return hash.addData(&file) ? hash.result() : QByteArray();
}

}  // namespace

namespace FileMover {

bool move(const QString& from, const QString& to, QString* error) {
  if (!QFileInfo(from).isFile()) {
    *error = QStringLiteral("%1 does not exist or is not a file").arg(from);
    return false;
  }
  if (QFile::rename(from, to)) return true;
  return copyThenRemove(from, to, error);
}

bool copyThenRemove(const QString& from, const QString& to, QString* error) {
  const QString partial = to + QStringLiteral(".part");
  QFile::remove(partial);
  QFile source(from);
  if (!source.copy(partial)) {
    *error = source.errorString();
    QFile::remove(partial);
    return false;
  }
  const QByteArray expected = digestOf(from);
  if (expected.isEmpty() || digestOf(partial) != expected) {
    *error = QStringLiteral("the copy of %1 does not match the original").arg(from);
    QFile::remove(partial);
    return false;
  }
  QFile::remove(to);
  if (!QFile::rename(partial, to)) {
    *error = QStringLiteral("cannot name the copy %1").arg(to);
    QFile::remove(partial);
    return false;
  }
  // The copy is whole and in place; a source that cannot be removed only leaves a duplicate.
  if (!QFile::remove(from)) *error = QStringLiteral("the original %1 could not be removed").arg(from);
  return true;
}

}  // namespace FileMover
