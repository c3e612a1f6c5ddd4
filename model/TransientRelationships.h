#pragma once

#include "Entry.h"

// An entry's tracks and links for one reading pass over a whole catalogue: when they were not in
// memory before, they go again at the end of the scope, so a pass over 100,000 entries holds one
// entry's tracks at a time instead of a million. Reading only: nothing may change them meanwhile.
class TransientRelationships {
 public:
  explicit TransientRelationships(Entry& entry) : entry_(entry), wasLoaded_(entry.relationshipsLoaded()) {}
  ~TransientRelationships() {
    if (!wasLoaded_) entry_.unloadRelationships();
  }
  TransientRelationships(const TransientRelationships&) = delete;
  TransientRelationships& operator=(const TransientRelationships&) = delete;

 private:
  Entry& entry_;
  bool wasLoaded_;
};
