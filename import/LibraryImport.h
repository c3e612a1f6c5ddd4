#pragma once

#include "ImportBatch.h"
#include "AlbumTable.h"

#include <QVariantList>
#include <vector>

class Entry;
class MyControllerShared;

// Library tracks into entries, one entry per album, under the progress sheet.
class LibraryImport {
 public:
  // The entries this run created, in order (an album that grew is in it once). Movies, podcasts
  // and TV shows are left out; the store is saved after every batch, and a cancel stops
  // after the current track, keeping what was imported.
  static std::vector<Entry*> importTracks(MyControllerShared& controller, const AlbumTable& run,
                                          const QVariantList& tracks, ImportBatch batch = ImportBatch());
};
