#pragma once

#include <QString>
#include <QStringList>

class EntitySchema;

// The SQL of the catalogue store. The current version is derived from the entity schemas; each
// released older one is frozen here as it was shipped, so that old catalogues can be recognised
// and upgraded, and so that tests can make them.
namespace StoreSchema {
constexpr int currentVersion = 8;
constexpr int version4 = 4;
constexpr int version5 = 5;
constexpr int version6 = 6;
constexpr int version7 = 7;

// CREATE statements of the current version, tables named with the given prefix.
QStringList createStatements(const QString& prefix = {});
QStringList version4CreateStatements();
QStringList version5CreateStatements();
QStringList version6CreateStatements();
QStringList version7CreateStatements();
// The table that says which entries changed or went at which of the file's change numbers
// (version 7 on), and its index.
QStringList entryRevisionsCreateStatements(const QString& prefix = {});
// The column list of an entity's table, quoted and comma-separated, without the row key.
QString columnList(const EntitySchema& schema);
// "name" TYPE of one attribute's column, the type following from its kind; empty when the
// entity has no such attribute.
QString columnDefinition(const EntitySchema& schema, const QString& key);
QString quoted(const QString& identifier);
}  // namespace StoreSchema
