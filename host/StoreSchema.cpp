#include "StoreSchema.h"

#include "EntitySchema.h"
#include "ValueKind.h"

namespace StoreSchema {

QString quoted(const QString& identifier) { return QLatin1Char('"') + identifier + QLatin1Char('"'); }

QString columnList(const EntitySchema& schema) {
  QStringList columns;
  for (const auto& a : schema.attributes()) columns << quoted(a.key);
  return columns.join(QLatin1Char(','));
}

QString columnDefinition(const EntitySchema& schema, const QString& key) {
  const int index = schema.indexOf(key);
  return index < 0 ? QString() : quoted(key) + QLatin1Char(' ') + ValueKind::of(schema.attributes()[size_t(index)].kind).sqlType();
}

static QString columnDefinitions(const EntitySchema& schema) {
  QStringList columns;
  for (const auto& a : schema.attributes()) columns << columnDefinition(schema, a.key);
  return columns.join(QStringLiteral(", "));
}

QStringList createStatements(const QString& p) {
  const QStringList statements = {
      QStringLiteral("CREATE TABLE %1entries (uid INTEGER PRIMARY KEY, %2)")
          .arg(p, columnDefinitions(EntitySchema::cd())),
      QStringLiteral("CREATE TABLE %1tracks (id INTEGER PRIMARY KEY, entry_uid INTEGER NOT NULL, %2)")
          .arg(p, columnDefinitions(EntitySchema::track())),
      QStringLiteral("CREATE INDEX %1tracks_entry ON %1tracks(entry_uid)").arg(p),
      QStringLiteral("CREATE TABLE %1links (id INTEGER PRIMARY KEY, entry_uid INTEGER NOT NULL, %2)")
          .arg(p, columnDefinitions(EntitySchema::link())),
      QStringLiteral("CREATE INDEX %1links_entry ON %1links(entry_uid)").arg(p),
      QStringLiteral("CREATE INDEX %1links_url ON %1links(url)").arg(p),
      QStringLiteral("CREATE TABLE %1collections (id INTEGER PRIMARY KEY, name TEXT NOT NULL, position INTEGER)")
          .arg(p),
      QStringLiteral("CREATE TABLE %1collection_entries (collection_id INTEGER NOT NULL, entry_uid INTEGER NOT NULL, "
                     "position INTEGER, PRIMARY KEY (collection_id, entry_uid)) WITHOUT ROWID")
          .arg(p),
      QStringLiteral("CREATE TABLE %1meta (key TEXT PRIMARY KEY, value) WITHOUT ROWID").arg(p),
  };
  return statements + entryRevisionsCreateStatements(p);
}

QStringList entryRevisionsCreateStatements(const QString& p) {
  return {
      QStringLiteral("CREATE TABLE %1entry_revisions (uid INTEGER PRIMARY KEY, revision INTEGER NOT NULL, "
                     "deleted INTEGER NOT NULL DEFAULT 0)")
          .arg(p),
      QStringLiteral("CREATE INDEX %1entry_revisions_revision ON %1entry_revisions(revision)").arg(p),
  };
}

QStringList version4CreateStatements() {
  // Version 4 kept dates as seconds since 2001-01-01 UTC (REAL), had no sort names, no
  // original release date, no mixing or arranging credits, no custom tag and long-text fields,
  // no track composer and no link order.
  return {
      QStringLiteral(
          "CREATE TABLE entries (uid INTEGER PRIMARY KEY, title TEXT, artist TEXT, composer TEXT, "
          "conductor TEXT, producer TEXT, label TEXT, genre TEXT, format TEXT, releaseDate REAL, duration TEXT, "
          "numberOfTracks TEXT, discs TEXT, discID TEXT, upc TEXT, asin TEXT, catalogNumber TEXT, price TEXT, "
          "paid TEXT, rating TEXT, myRating INTEGER, awards TEXT, comments TEXT, summary TEXT, tags TEXT, url TEXT, "
          "location TEXT, collectionID TEXT, purchasedAt TEXT, purchasedOn REAL, borrowedBy TEXT, borrowedOn REAL, "
          "dueDate REAL, lastPlayed REAL, dateAdded REAL, dateEdited REAL, status INTEGER, itunes INTEGER, "
          "custom1 TEXT, custom2 TEXT, custom3 TEXT, custom4 TEXT, custom5 TEXT, custom6 TEXT, custom7 TEXT, "
          "custom8 TEXT, custom9 TEXT, custom10 TEXT, customDate1 REAL, customDate2 REAL, "
          "customCheckbox1 INTEGER, customCheckbox2 INTEGER)"),
      QStringLiteral("CREATE TABLE tracks (id INTEGER PRIMARY KEY, entry_uid INTEGER NOT NULL, name TEXT, "
                     "position INTEGER, duration TEXT, artist TEXT)"),
      QStringLiteral("CREATE TABLE links (id INTEGER PRIMARY KEY, entry_uid INTEGER NOT NULL, name TEXT, url TEXT, "
                     "type TEXT)"),
      QStringLiteral("CREATE TABLE collections (id INTEGER PRIMARY KEY, name TEXT NOT NULL)"),
      QStringLiteral("CREATE TABLE collection_entries (collection_id INTEGER NOT NULL, entry_uid INTEGER NOT NULL)"),
  };
}

QStringList version5CreateStatements() {
  return {
      QStringLiteral(
          "CREATE TABLE entries (uid INTEGER PRIMARY KEY, \"title\" TEXT, \"sortTitle\" TEXT, \"artist\" TEXT, "
          "\"sortArtist\" TEXT, \"composer\" TEXT, \"conductor\" TEXT, \"producer\" TEXT, \"mixedBy\" TEXT, "
          "\"arrangedBy\" TEXT, \"label\" TEXT, \"genre\" TEXT, \"format\" TEXT, \"releaseDate\" INTEGER, "
          "\"originalReleaseDate\" INTEGER, \"duration\" TEXT, \"numberOfTracks\" TEXT, \"discs\" TEXT, "
          "\"discID\" TEXT, \"upc\" TEXT, \"asin\" TEXT, \"catalogNumber\" TEXT, \"price\" TEXT, \"paid\" TEXT, "
          "\"rating\" TEXT, \"myRating\" INTEGER, \"awards\" TEXT, \"comments\" TEXT, \"summary\" TEXT, "
          "\"tags\" TEXT, \"url\" TEXT, \"location\" TEXT, \"collectionID\" TEXT, \"purchasedAt\" TEXT, "
          "\"purchasedOn\" INTEGER, \"borrowedBy\" TEXT, \"borrowedOn\" INTEGER, \"dueDate\" INTEGER, "
          "\"lastPlayed\" INTEGER, \"dateAdded\" INTEGER, \"dateEdited\" INTEGER, \"status\" INTEGER, "
          "\"itunes\" INTEGER, \"custom1\" TEXT, \"custom2\" TEXT, \"custom3\" TEXT, \"custom4\" TEXT, "
          "\"custom5\" TEXT, \"custom6\" TEXT, \"custom7\" TEXT, \"custom8\" TEXT, \"custom9\" TEXT, "
          "\"custom10\" TEXT, \"customDate1\" INTEGER, \"customCheckbox1\" INTEGER, \"customTag1\" TEXT, "
          "\"customText1\" TEXT, \"customDate2\" INTEGER, \"customCheckbox2\" INTEGER, \"customTag2\" TEXT, "
          "\"customText2\" TEXT, \"addressBookID\" TEXT, \"extraData\" TEXT, \"hasMovieLink\" INTEGER, "
          "\"lastUsedCount\" INTEGER, \"lastUsed\" INTEGER, \"lowestNewPrice\" TEXT, \"lowestUsedPrice\" TEXT, "
          "\"uploaded\" INTEGER, \"onSale\" INTEGER, \"hasBeenSold\" INTEGER, \"soldOn\" INTEGER, "
          "\"askingPrice\" TEXT, \"buyerAddress\" TEXT, \"buyerEmail\" TEXT, \"buyerName\" TEXT, "
          "\"placedForSaleAt\" TEXT, \"soldPrice\" TEXT, \"dogTag\" TEXT, \"localeLanguage\" TEXT)"),
      QStringLiteral("CREATE TABLE tracks (id INTEGER PRIMARY KEY, entry_uid INTEGER NOT NULL, \"name\" TEXT, "
                     "\"position\" INTEGER, \"duration\" TEXT, \"artist\" TEXT, \"composer\" TEXT)"),
      QStringLiteral("CREATE INDEX tracks_entry ON tracks(entry_uid)"),
      QStringLiteral("CREATE TABLE links (id INTEGER PRIMARY KEY, entry_uid INTEGER NOT NULL, \"name\" TEXT, "
                     "\"url\" TEXT, \"type\" TEXT, \"position\" INTEGER)"),
      QStringLiteral("CREATE INDEX links_entry ON links(entry_uid)"),
      QStringLiteral("CREATE INDEX links_url ON links(url)"),
      QStringLiteral("CREATE TABLE collections (id INTEGER PRIMARY KEY, name TEXT NOT NULL, position INTEGER)"),
      QStringLiteral("CREATE TABLE collection_entries (collection_id INTEGER NOT NULL, entry_uid INTEGER NOT NULL, "
                     "position INTEGER, PRIMARY KEY (collection_id, entry_uid)) WITHOUT ROWID"),
      QStringLiteral("CREATE TABLE meta (key TEXT PRIMARY KEY, value) WITHOUT ROWID"),
  };
}

QStringList version6CreateStatements() {
  // Version 6 was version 5 with the three lookup identifiers at the end of the entries.
  QStringList statements = version5CreateStatements();
  statements[0].replace(QStringLiteral("\"localeLanguage\" TEXT)"),
                        QStringLiteral("\"localeLanguage\" TEXT, \"releaseID\" TEXT, \"musicBrainzDiscID\" TEXT, "
                                       "\"barcodeSource\" TEXT)"));
  return statements;
}

QStringList version7CreateStatements() {
  // Version 7 was version 6 with the table of change numbers.
  return version6CreateStatements() + entryRevisionsCreateStatements();
}

}  // namespace StoreSchema
