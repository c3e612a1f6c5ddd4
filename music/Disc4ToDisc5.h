#pragma once

#include "EntityMigrationPolicy.h"

// Version 5 keeps each entry's track count and format; version 4 left them to the user.
class Disc4ToDisc5 : public EntityMigrationPolicy {
 public:
  bool createRelationshipsForDestinationInstance(Entry& destination, const EntityMapping& mapping,
                                                 MigrationSource& manager, QString* error) override;
};
