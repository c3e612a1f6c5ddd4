#include "Link.h"

#include "Entry.h"
#include "ModelKeys.h"

void Link::didChange(const QString&, bool notify) {
  if (entry_) entry_->relationshipDidChange(ModelKeys::linksSet, notify);
}
