#pragma once

// When an import saves: after every `entries` new entries, or every `items` files or tracks
// however few entries they made, so that a crash loses at most one batch.
class ImportBatch {
 public:
  explicit ImportBatch(int entries = 500, int items = 5000) : entries_(entries), items_(items) {}
  // Counts one file or track; true when the batch is full and the store should be saved.
  bool add(bool newEntry) {
    if (newEntry) ++newEntries_;
    ++itemsInBatch_;
    if (newEntries_ < entries_ && itemsInBatch_ < items_) return false;
    newEntries_ = itemsInBatch_ = 0;
    return true;
  }

 private:
  int entries_, items_;
  int newEntries_ = 0, itemsInBatch_ = 0;
};
