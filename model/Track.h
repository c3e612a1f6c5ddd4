#pragma once

#include "ManagedObject.h"

class Entry;
class RelationshipOwner;

// One track of an entry: "name", "position", "duration", "artist", "composer".
class Track : public ManagedObject {
 public:
  Track() : ManagedObject(EntitySchema::track()) {}
  qint64 position() const { return value(QStringLiteral("position")).toLongLong(); }

 protected:
  void didChange(const QString& key, bool notify) override;

 private:
  friend class Entry;
  RelationshipOwner* owner_ = nullptr;
};
