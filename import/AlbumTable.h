#pragma once

#include <QHash>
#include <QVariantList>
#include <QVariantMap>

// The album table of one import: which entry each album went to, the ratings seen per album,
// and the entries whose cover is settled. Null members mean no import is running: lookups then
// find nothing and registrations are dropped.
struct AlbumTable {
  QVariantMap* albumsAdded = nullptr;  // album key -> uid of its entry
  QVariantMap* ratings = nullptr;      // album key -> list of ratings 0-10
  QVariantList* importedImages = nullptr;
  const QVariantList* entireLibrary = nullptr;
  // Custom field title -> key ("" for none), asked of the settings once per run.
  QHash<QString, QString>* customFieldKeys = nullptr;
};
