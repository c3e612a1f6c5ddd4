#pragma once

#include "QuietWindowSystem.h"
#include "ScratchFolder.h"
#include "Store.h"

// A catalogue file in a temporary folder, so that importers have a store and covers a place,
// emptied after every input so that inputs stay independent and memory stays flat.
class ScratchCatalogue {
 public:
  ScratchCatalogue();

  Store& store() { return store_; }
  WindowSystem& windowSystem() { return windowSystem_; }
  const ScratchFolder& folder() const { return folder_; }
  // Deletes every entry and its cover; every so often saves, so that the store forgets the
  // deletions too (a save each time would be most of the work of a small input).
  void clear();

 private:
  int clearsSinceSave_ = 0;
  ScratchFolder folder_;
  Store store_;
  QuietWindowSystem windowSystem_;
};
