#include "EntityMigrationPolicy.h"

#include "Entry.h"
#include "MigrationSource.h"

bool EntityMigrationPolicy::createRelationshipsForDestinationInstance(Entry& destination, const EntityMapping& mapping,
                                                                      MigrationSource& manager, QString* error) {
  if (!manager.hasSourceForDestination(destination)) {
    if (error)
      *error = QStringLiteral("%1: entry %2 has no source row").arg(mapping.name).arg(destination.uid());
    return false;
  }
  destination.adoptLoadedRelationships(manager.takeTracksFor(destination), manager.takeLinksFor(destination));
  return true;
}
