#include "Disc4ToDisc5.h"

#include "CdKeys.h"
#include "Entry.h"
#include "ModelKeys.h"

bool Disc4ToDisc5::createRelationshipsForDestinationInstance(Entry& destination, const EntityMapping& mapping,
                                                             MigrationSource& manager, QString* error) {
  if (!EntityMigrationPolicy::createRelationshipsForDestinationInstance(destination, mapping, manager, error)) return false;
  const int tracks = destination.countOfSet(ModelKeys::tracksSet);
  if (tracks != 0) destination.setPrimitiveValue(QStringLiteral("numberOfTracks"), QString::number(unsigned(tracks)));
  // Every version-4 catalogue held CDs only, whatever its format field said.
  destination.setPrimitiveValue(CdKeys::format, QStringLiteral("CD"));
  return true;
}
