#include "TextFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

std::optional<QString> TextFile::stringFromFile(const QString& path, Encoding* encoding) {
  if (QFileInfo(path).isDir()) return std::nullopt;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() > maximumBytes) return std::nullopt;
  const QByteArray data = file.readAll();
  auto report = [encoding](Encoding e) {
    if (encoding) *encoding = e;
  };
  if (data.startsWith("\xff\xfe") || data.startsWith("\xfe\xff")) {
    QStringDecoder decoder(data.startsWith("\xff\xfe") ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
    QString text = decoder(data.mid(2));
    if (decoder.hasError() || text.contains(QChar(0))) return std::nullopt;
    report(Encoding::Utf16);
    return text;
  }
  if (data.contains('\0')) return std::nullopt;
  QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
  QString text = utf8(data);
  if (!utf8.hasError()) {
    if (text.startsWith(QChar(0xfeff))) text.remove(0, 1);
    report(Encoding::Utf8);
    return text;
  }
  report(Encoding::Latin1);
  return QString::fromLatin1(data);
}
