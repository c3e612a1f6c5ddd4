#include "Picture.h"

#include <QBuffer>
#include <QImageReader>

std::optional<Picture> Picture::fromData(const QByteArray& data) {
  if (data.isEmpty()) return std::nullopt;
  QBuffer buffer;
  buffer.setData(data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  if (!reader.canRead()) return std::nullopt;
  const QSize size = reader.size();
  if (!size.isValid() || size.isEmpty()) return std::nullopt;
  return Picture{data, reader.format(), size};
}

QSize Picture::sizeOf(const QVariant& value) {
  if (value.typeId() == QMetaType::QImage) return value.value<QImage>().size();
  if (value.canConvert<Picture>() && value.userType() == qMetaTypeId<Picture>()) return value.value<Picture>().size;
  return {};
}
