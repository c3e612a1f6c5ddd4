#pragma once

#include <QString>
#include <vector>

class Entry;
class Store;

// Writes entries in the form NativeImporter reads: a single property-list file with the covers
// embedded, or a folder with "info.xml" and "Covers/<n>.jpg".
class NativeExporter {
 public:
  enum class Form { File, Folder };
  static bool write(Store& store, const std::vector<Entry*>& entries, const QString& path, Form form, QString* error);
};
