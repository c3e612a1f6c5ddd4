#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

class TagReader;
struct MetadataItem;

// The tags of one audio file as a track metadata dictionary: the keys the music library uses
// ("Name", "Album", "Track Number"...), so that one mapping turns either source into an entry.
class MyAudioMetadata {
 public:
  // Never fails: an unreadable file, or no reader, gives fewer keys (or none).
  static QVariantMap getMetadataForPath(const QString& path, const TagReader* reader);
  // Folds one list of items into the dictionary; every rule overwrites what came before.
  static void processMetaData(const QList<MetadataItem>& items, QVariantMap& dict);
  // The code of a numeric key: four bytes from the most significant one, else three from the
  // least significant one; empty when neither gives a character.
  static QString keyString(quint64 key);
};
