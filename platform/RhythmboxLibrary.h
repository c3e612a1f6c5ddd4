#pragma once

#include <QIODevice>
#include <QVariantList>

// The Rhythmbox library (rhythmdb.xml), read as a stream into track dictionaries: only its
// songs; radio stations, podcasts and files the player marked as missing are left out.
class RhythmboxLibrary {
 public:
  // The songs read before a fault in the file are kept; a file that is no library gives none.
  static QVariantList read(QIODevice& device);
  static QVariantList read(const QString& path);
};
