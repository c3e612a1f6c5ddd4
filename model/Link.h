#pragma once

#include "ManagedObject.h"

class Entry;

// One link of an entry: "name", "url", "type", "position".
class Link : public ManagedObject {
 public:
  Link() : ManagedObject(EntitySchema::link()) {}
  Entry* entry() const { return entry_; }

 protected:
  void didChange(const QString& key, bool notify) override;

 private:
  friend class Entry;
  Entry* entry_ = nullptr;
};
