#pragma once

#include "ManagedObject.h"

class Entry;

// One track of an entry: "name", "position", "duration", "artist", "composer".
class Track : public ManagedObject {
 public:
  Track() : ManagedObject(EntitySchema::track()) {}
  Entry* entry() const { return entry_; }
  qint64 position() const { return value(QStringLiteral("position")).toLongLong(); }

 protected:
  void didChange(const QString& key, bool notify) override;

 private:
  friend class Entry;
  Entry* entry_ = nullptr;
};
