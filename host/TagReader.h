#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>
#include <optional>

// One tag of an audio file as the media framework presents it. A value form the item lacks is
// a null QVariant.
struct MetadataItem {
  QString commonKey;                   // format-independent name ("title", "artwork"...), or empty
  // A four-character code in the high 32 bits; an ID3v2.2 id in the low three bytes. Either way
  // the first character is the highest byte.
  std::optional<quint64> numericKey;
  QString textKey;                     // used when the format names its keys by text
  QVariant stringValue, numberValue, dataValue, value;
};

// The tags of one file, one list per metadata format, and its length as a rational time.
struct AudioAsset {
  QList<MetadataItem> commonMetadata;
  QList<MetadataItem> iTunesMetadata;     // MP4 "ilst" atoms
  QList<MetadataItem> id3Metadata;        // "org.id3": ID3v2 frames (and Xiph/RIFF fields under their ID3 names)
  QList<MetadataItem> quickTimeMetadata;  // MP4 "udta" user data; none on this platform
  qint64 durationCount = 0, durationScale = 0;
};

// Reads the tags of audio files: the port behind which the tag library lives.
class TagReader {
 public:
  virtual ~TagReader() = default;
  // Never fails: a missing, unreadable or foreign file gives an asset with no items and no length.
  // Safe to call from several threads at once.
  virtual AudioAsset assetWithPath(const QString& path) const = 0;
};
