#pragma once

#include <QString>

class ImportRun;

// Reads this program's own export: a property list of entry dictionaries under "1", "2"...,
// either a single file with each cover embedded as "image<n>" data, or a folder holding
// "info.xml" and "Covers/<n>.jpg".
class NativeImporter {
 public:
  // False, with the reason, when the property list cannot be read at all; bad entries and covers
  // are skipped with a warning in the run.
  static bool import(ImportRun& run, const QString& path, QString* error);
};
