#pragma once

#include "ImportBatch.h"

#include <QVariantList>
#include <vector>

class Entry;
struct ImportServices;
struct ImportSession;

// Library tracks into entries, one entry per album, under the progress sheet.
class LibraryImport {
 public:
  // The entries this run created, in order (an album that grew is in it once). Movies, podcasts
  // and TV shows are left out; the store is saved after every batch, and a cancel stops
  // after the current track, keeping what was imported.
  static std::vector<Entry*> importTracks(const ImportServices& services, ImportSession* session,
                                          const QVariantList& tracks, ImportBatch batch = ImportBatch());
};
