#include "Track.h"

#include "Entry.h"
#include "ModelKeys.h"

// A changed track is a change of its entry's tracks, saved with the entry.
void Track::didChange(const QString&, bool notify) {
  if (entry_) entry_->relationshipDidChange(ModelKeys::tracksSet, notify);
}
