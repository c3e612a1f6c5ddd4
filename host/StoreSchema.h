#pragma once

#include <QString>
#include <QStringList>

class EntitySchema;

// The SQL of the catalogue store. Version 5 is derived from the entity schemas; version 4 is
// frozen here as it was shipped, so that old catalogues can be recognised and migrated.
namespace StoreSchema {
constexpr int currentVersion = 5;
constexpr int version4 = 4;

// CREATE statements of the current version, tables named with the given prefix.
QStringList createStatements(const QString& prefix = {});
QStringList version4CreateStatements();
// The column list of an entity's table, quoted and comma-separated, without the row key.
QString columnList(const EntitySchema& schema);
QString quoted(const QString& identifier);
}  // namespace StoreSchema
