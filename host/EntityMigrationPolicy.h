#pragma once

#include <QString>

class Entry;
class MigrationSource;

// Names the entity pair one migration step maps.
struct EntityMapping {
  QString name;
  QString sourceEntityName;
  QString destinationEntityName;
};

// Per-entity hook of the store migration. The base links each destination entry to the tracks
// and links made from its source rows; a subclass adds its own writes around that.
class EntityMigrationPolicy {
 public:
  virtual ~EntityMigrationPolicy() = default;
  // Called once per destination entry, after every destination instance exists.
  virtual bool createRelationshipsForDestinationInstance(Entry& destination, const EntityMapping& mapping,
                                                         MigrationSource& manager, QString* error);
};
