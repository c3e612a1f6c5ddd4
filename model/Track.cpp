#include "Track.h"

#include "RelationshipOwner.h"
#include "ModelKeys.h"

// A changed track is a change of its entry's tracks, saved with the entry.
void Track::didChange(const QString&, bool notify) {
  if (owner_) owner_->relationshipDidChange(ModelKeys::tracksSet, notify);
}
