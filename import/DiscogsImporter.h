#pragma once

#include <QDateTime>
#include <QString>

class ImportRun;

// Release lists in the XML of the public music database's data dumps and collection exports:
// <releases> holding <release id=...> elements, or one bare <release>. Each release becomes an
// entry with its tracks (sub-tracks are folded into their heading track).
class DiscogsImporter {
 public:
  // False when the text holds no release or is not well-formed before the first one; a release
  // list broken part-way keeps the releases read so far, with a warning in the run.
  static bool import(ImportRun& run, const QString& text, QString* error);
  // "1999", "1999-03-00", "1999-07-13" as noon UTC of that day, unknown parts counting as the
  // first; invalid when there is no year.
  static QDateTime releaseDate(const QString& text);
};
