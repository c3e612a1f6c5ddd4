#pragma once

class Entry;
class MyControllerShared;

// Makes one entry of two that describe the same album: the kept entry takes every track, link
// and collection of the other, and each field it has no value for; then the other is deleted.
class EntryMerger {
 public:
  explicit EntryMerger(MyControllerShared& controller) : controller_(controller) {}

  // Where both have a value, the kept entry's stays. A track of the other that the kept entry has
  // at the same position under the same name, or a link to the same address, is not doubled.
  // The cover comes over when the kept entry has none. Saves before returning; false when the
  // save failed or the two are one entry.
  bool merge(Entry& keep, Entry& other);

 private:
  MyControllerShared& controller_;
};
