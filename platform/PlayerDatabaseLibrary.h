#pragma once

#include <QString>
#include <QVariantList>

// The collection database of Strawberry or Clementine (one schema, the first grew out of the
// second): the "songs" table read into track dictionaries. The database is opened read-only while
// the player may be writing to it; columns a version lacks are left out of the dictionaries.
class PlayerDatabaseLibrary {
 public:
  // Empty, with one log line, when the file is no such database, is locked or is missing.
  static QVariantList read(const QString& path);
};
