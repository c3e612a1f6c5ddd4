#pragma once

#include "MigrationSource.h"

#include <QHash>
#include <memory>
#include <unordered_map>
#include <vector>

class Entry;
class EntityMigrationPolicy;
class Link;
class SqliteDatabase;
class Track;

// Converts a version-4 catalogue to version 5, the first step of the upgrade chain, inside the
// transaction the chain opens: the old tables are read, every entry is made anew, the entity
// policy runs for each, and the version-5 tables replace the old ones.
class MigrationManager : public MigrationSource {
 public:
  MigrationManager(SqliteDatabase& db, std::shared_ptr<EntityMigrationPolicy> policy);
  ~MigrationManager();

  // False with the reason on any failure; the caller rolls the transaction back.
  bool migrate(QString* error);

  bool hasSourceForDestination(const Entry& destination) const override;
  std::vector<std::unique_ptr<Track>> takeTracksFor(const Entry& destination) override;
  std::vector<std::unique_ptr<Link>> takeLinksFor(const Entry& destination) override;

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
