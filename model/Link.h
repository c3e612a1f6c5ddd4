#pragma once

#include "ManagedObject.h"

class Entry;

// One link of an entry: "name", "url", "type", "position".
class Link : public ManagedObject {
 public:
  Link() : ManagedObject(EntitySchema::link()) {}
  Entry* entry() const { return entry_; }
  // Whether the path names an audio file, by its extension.
  static bool isMusicFilePath(const QString& path);

 protected:
  void didChange(const QString& key, bool notify) override;

 private:
  friend class Entry;
  Entry* entry_ = nullptr;
};
