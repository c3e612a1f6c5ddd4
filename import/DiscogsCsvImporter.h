#pragma once

#include <QChar>
#include <QList>
#include <QPair>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

class Entry;
class ImportRun;

// The collection export of the public music database: comma-separated text whose header names
// "Catalog#", "Artist", "Title", "Label", "Format", "Rating", "Released", "release_id",
// "CollectionFolder", "Date Added", the copy's conditions and notes, then one "Collection <field>"
// column per field the user added there. One entry per row; the release id keeps a second
// import of the same export from adding a copy twice.
class DiscogsCsvImporter {
 public:
  // The custom field key for an extra column's name, or none when the column is to be left out.
  using CustomFieldFor = std::function<std::optional<QString>(const QString& name)>;
  struct Result {
    // The entries made, by the folder they were filed in on the site, in the order first met.
    QList<QPair<QString, std::vector<Entry*>>> folders;
    // Rows whose release was in the catalogue already.
    int alreadyThere = 0;
  };

  // The separator of the export's header line (a comma, or the semicolon a spreadsheet writes
  // back), or none when the text does not start with that header.
  static std::optional<QChar> separatorOf(const QString& text);
  // False only when the text is not such an export; rows that do not fit are imported as far as
  // they go, with a warning in the run.
  static bool import(ImportRun& run, const QString& text, const CustomFieldFor& customField, Result* result,
                     QString* error);
  // The release's page on the site.
  static QString releaseUrl(const QString& releaseId);
  // "Saga (3)" -> "Saga": the number the site adds to tell namesakes apart, after each name.
  static QString withoutNameNumbers(const QString& names);
  static const QString defaultFolder;
};
