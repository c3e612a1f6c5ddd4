#pragma once

#include "EntityMigrationPolicy.h"

#include <QHash>
#include <memory>
#include <unordered_map>
#include <vector>

class Entry;
class Link;
class SqliteDatabase;
class Track;

// Migrates a version-4 catalogue to the current version inside one transaction: the old tables
// are read, every entry is made anew in the current form, the entity policy runs for each, and
// the new tables replace the old ones. Any failure rolls everything back.
class MigrationManager {
 public:
  MigrationManager(SqliteDatabase& db, std::shared_ptr<EntityMigrationPolicy> policy);
  ~MigrationManager();

  bool migrate(QString* error);

  // For the policies: whether a destination entry was made from a source row, and the tracks
  // and links made from that row's related rows (handed over once).
  bool hasSourceForDestination(const Entry& destination) const;
  std::vector<std::unique_ptr<Track>> takeTracksFor(const Entry& destination);
  std::vector<std::unique_ptr<Link>> takeLinksFor(const Entry& destination);

  // The phases, public so that tests can drive a policy against a half-made migration.
  bool createDestinationInstances(QString* error);
  bool createRelationships(QString* error);
  std::vector<std::unique_ptr<Entry>>& destinationEntries() { return destinations_; }

 private:
  bool writeDestination(QString* error);

  SqliteDatabase& db_;
  std::shared_ptr<EntityMigrationPolicy> policy_;
  std::vector<std::unique_ptr<Entry>> destinations_;
  std::unordered_map<qint64, std::vector<std::unique_ptr<Track>>> tracks_;
  std::unordered_map<qint64, std::vector<std::unique_ptr<Link>>> links_;
  QHash<qint64, bool> sources_;
};
