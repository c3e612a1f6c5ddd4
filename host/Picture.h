#pragma once

#include <QByteArray>
#include <QImage>
#include <QMetaType>
#include <QSize>
#include <QVariant>

// A picture as the file holds it: its encoded bytes, known from their header to be a picture.
// Decoding waits until someone needs the pixels, and a JPEG cover is stored as it came.
struct Picture {
  QByteArray data;
  QByteArray format;  // "jpeg", "png"...
  QSize size;

  // Null unless the bytes start like a picture of a known format with a size.
  static std::optional<Picture> fromData(const QByteArray& data);
  QImage toImage() const { return QImage::fromData(data, format.constData()); }
  // The size of a Picture or a QImage held in a variant; invalid for anything else.
  static QSize sizeOf(const QVariant& value);
};
Q_DECLARE_METATYPE(Picture)
