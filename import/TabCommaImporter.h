#pragma once

#include <QString>
#include <QStringList>
#include <vector>

class Entry;
class ImportRun;

// Tab- or comma-separated text whose first row names the fields: attribute identifiers ("title",
// "releaseDate"), in any case, or the older names of the native export. A "tracks" column holds
// one track a line, "name<TAB>duration<TAB>artist<TAB>composer". CsvExporter writes this form.
class TabCommaImporter {
 public:
  // False when the text has no header row naming a field (not this format); rows that do not fit
  // are imported as far as they go, with a warning in the run.
  static bool import(ImportRun& run, const QString& text, QString* error);
  static QString tracksCell(Entry& entry);
  static const QString tracksColumn;
};
