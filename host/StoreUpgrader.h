#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

class EntityMigrationPolicy;
class EntitySchema;
class SqliteDatabase;

// Brings a catalogue of an older version up to the current one, one numbered step at a time:
// step N takes user_version N to N+1. Before each step the file must pass the quick check and a
// consistent copy of it is kept beside it as "<name>.versionN"; each step runs in one transaction
// that also raises user_version, so a failed step leaves the file as that step found it.
class StoreUpgrader {
 public:
  enum class Outcome { Done, TooOld, Damaged, BackupFailed, StepFailed };
  struct Result {
    Outcome outcome = Outcome::Done;
    qint64 version = 0;  // the version the file is at now
    QString error;
  };

  // path is the file's own (":memory:" keeps no copies); the policy runs for each entry in the
  // step from version 4.
  StoreUpgrader(SqliteDatabase& db, QString path, std::shared_ptr<EntityMigrationPolicy> policy);

  Result upgrade(qint64 fromVersion);
  // The copy kept before the step from that version.
  static QString backupPath(const QString& path, qint64 version);

 private:
  struct Step {
    qint64 from;
    std::function<bool(QString* error)> run;
  };
  std::vector<Step> steps();
  bool passesQuickCheck();
  bool backUp(qint64 version, QString* error);
  // Adds the attributes' columns at the end of the table, their types following from their kinds.
  bool addColumns(const QString& table, const EntitySchema& schema, const QStringList& keys, QString* error);

  SqliteDatabase& db_;
  QString path_;
  std::shared_ptr<EntityMigrationPolicy> policy_;
};
