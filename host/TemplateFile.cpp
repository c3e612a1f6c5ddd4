#include "TemplateFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

std::optional<QString> TemplateFile::read(const QString& path, QString* error) {
  auto fail = [error](const QString& reason) {
    if (error) *error = reason;
    return std::nullopt;
  };
  const QFileInfo info(path);
  if (!info.exists()) return fail(QStringLiteral("%1 does not exist").arg(path));
  // Devices and pipes could feed a template without end.
  if (!info.isFile()) return fail(QStringLiteral("%1 is not a regular file").arg(path));
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return fail(QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
  const QByteArray bytes = file.read(maximumSize + 1);
  if (bytes.size() > maximumSize)
    return fail(QStringLiteral("%1 is larger than %2 MB").arg(path).arg(maximumSize / (1024 * 1024)));
  if (file.error() != QFileDevice::NoError) return fail(QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
  QStringDecoder decoder(QStringDecoder::Utf8);
  return QString(decoder(bytes));
}

bool TemplateFile::isPlainName(const QString& name) {
  return !name.isEmpty() && !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')) &&
         !name.contains(QLatin1String("..")) && !name.contains(QChar(0));
}
