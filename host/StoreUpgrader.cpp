#include "StoreUpgrader.h"

#include "CdKeys.h"
#include "EntitySchema.h"
#include "MigrationManager.h"
#include "SqliteDatabase.h"
#include "SqliteStatement.h"
#include "SqliteTransaction.h"
#include "StoreSchema.h"

#include <QFile>
#include <algorithm>

StoreUpgrader::StoreUpgrader(SqliteDatabase& db, QString path, std::shared_ptr<EntityMigrationPolicy> policy)
    : db_(db), path_(std::move(path)), policy_(std::move(policy)) {}

// A new field is one row in MusicFields (after the last stored one) and one step here naming its key.
std::vector<StoreUpgrader::Step> StoreUpgrader::steps() {
  return {
      {StoreSchema::version4, [this](QString* error) { return MigrationManager(db_, policy_).migrate(error); }},
      {StoreSchema::version5,
       [this](QString* error) {
         return addColumns(QStringLiteral("entries"), EntitySchema::cd(),
                           {CdKeys::releaseID, CdKeys::musicBrainzDiscID, CdKeys::barcodeSource},
                           error);
       }},
      {StoreSchema::version6,
       [this](QString* error) {
         for (const QString& sql : StoreSchema::entryRevisionsCreateStatements())
           if (!db_.exec(sql)) {
             if (error) *error = db_.errorMessage();
             return false;
           }
         return true;
       }},
      {StoreSchema::version7,
       [this](QString* error) {
         return addColumns(QStringLiteral("entries"), EntitySchema::cd(),
                           {CdKeys::mediaCondition, CdKeys::sleeveCondition, CdKeys::discogsReleaseID}, error);
       }},
  };
}

QString StoreUpgrader::backupPath(const QString& path, qint64 version) {
  return path + QStringLiteral(".version%1").arg(version);
}

StoreUpgrader::Result StoreUpgrader::upgrade(qint64 fromVersion) {
  const std::vector<Step> chain = steps();
  Result result{Outcome::Done, fromVersion, {}};
  while (result.version < StoreSchema::currentVersion) {
    const auto step = std::find_if(chain.begin(), chain.end(), [&](const Step& s) { return s.from == result.version; });
    if (step == chain.end()) return {Outcome::TooOld, result.version, {}};
    if (!passesQuickCheck()) return {Outcome::Damaged, result.version, {}};
    QString error;
    if (!backUp(result.version, &error)) return {Outcome::BackupFailed, result.version, error};
    SqliteTransaction transaction(db_);
    if (!transaction.isOpen()) return {Outcome::StepFailed, result.version, db_.errorMessage()};
    // Another process sharing the file may have taken this step while we waited for the lock.
    const qint64 found = db_.userVersion();
    if (found != result.version) {
      if (found < result.version) return {Outcome::StepFailed, result.version, QStringLiteral("its version went back")};
      result.version = found;
      continue;
    }
    if (!step->run(&error)) return {Outcome::StepFailed, result.version, error};
    if (!db_.exec(QStringLiteral("PRAGMA user_version=%1").arg(step->from + 1)) || !transaction.commit())
      return {Outcome::StepFailed, result.version, db_.errorMessage()};
    result.version = step->from + 1;
  }
  return result;
}

bool StoreUpgrader::passesQuickCheck() {
  SqliteStatement check(db_.handle(), QStringLiteral("PRAGMA quick_check"));
  return check.step() == SQLITE_ROW && check.text(0) == QLatin1String("ok");
}

bool StoreUpgrader::backUp(qint64 version, QString* error) {
  if (path_ == QLatin1String(":memory:")) return true;
  // Through SQLite, not as a file copy: the last writes may still sit in the write-ahead log.
  const QString backup = backupPath(path_, version);
  QFile::remove(backup);
  if (db_.backupTo(backup, error)) return true;
  QFile::remove(backup);
  return false;
}

bool StoreUpgrader::addColumns(const QString& table, const EntitySchema& schema, const QStringList& keys,
                               QString* error) {
  for (const QString& key : keys) {
    const QString definition = StoreSchema::columnDefinition(schema, key);
    if (definition.isEmpty()) {
      if (error) *error = QStringLiteral("%1 has no attribute %2").arg(schema.entityName(), key);
      return false;
    }
    if (!db_.exec(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(table, definition))) {
      if (error) *error = db_.errorMessage();
      return false;
    }
  }
  return true;
}
