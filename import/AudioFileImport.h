#pragma once

#include "ImportBatch.h"

#include <QStringList>
#include <QVariantMap>
#include <functional>

class Entry;
struct ImportServices;
struct ImportSession;

// Audio files into entries: one track and one "Audio" link per file, entries gathered in the
// collection "Imported Audio".
class AudioFileImport {
 public:
  static QString linkText(const QString& path) { return QStringLiteral("file://") + path; }
  // False, changing nothing, when the file is in the catalogue already and duplicates are not wanted.
  static bool isSkippedDuplicate(const ImportServices& services, const QString& path);
  // Imports one file whose tags were read already; with select, shows the collection and the entry.
  static Entry* importTags(const ImportServices& services, ImportSession* session, const QString& path,
                           const QVariantMap& metadata, bool select = true);
  // The audio files under the folder, subfolders included, in path order.
  static QStringList audioFilesIn(const QString& folder);
  // Imports the files in order under the progress sheet, reading tags on every core ahead of the
  // store and saving after every batch. Stops after the current file when the user cancels.
  // The number of files imported, 0 when the catalogue could not be saved.
  static int importFiles(const ImportServices& services, ImportSession* session, const QStringList& paths,
                         ImportBatch batch = ImportBatch());
};
