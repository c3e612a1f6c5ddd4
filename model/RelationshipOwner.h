#pragma once

#include <QString>

// The object a track or link belongs to: it is told when one of them changes, since they are
// saved with it.
class RelationshipOwner {
 public:
  virtual void relationshipDidChange(const QString& key, bool notify) = 0;

 protected:
  ~RelationshipOwner() = default;
};
