#pragma once

#include "ImportServices.h"
#include "ImportSession.h"

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <optional>
#include <vector>

class Entry;
class ImportRun;

// Every file that reaches the program goes to its importer here (see FileKind), and each import
// ends the same way: a collection named after the file, a save, and the problems reported. Audio
// files and library tracks are imported within one import session, which this keeps.
class ImportDispatcher {
 public:
  explicit ImportDispatcher(ImportServices services) : services_(std::move(services)) {}

  // The file types the import panel offers: the usual ones in their usual order, then the other
  // audio files an import takes.
  static QStringList openPanelTypes();

  // True when something was opened or imported.
  bool openFile(const QString& path);
  bool openCardAtPath(const QString& path);
  // Selects the entry that the description names by "uid", or else by "title" and "artist".
  bool findEntry(const QVariantMap& description);
  bool installFolioExtras(const QString& path);
  // One audio file into an entry of "Imported Audio"; false when skipped as a duplicate.
  bool importAudioFile(const QString& path);
  // Every audio file under the folder, files of one album into one entry; false when none was imported.
  bool openDirectory(const QString& path);
  // Library track dictionaries into entries; false when no entry was made. importedEntries() holds them.
  bool importItunesFromTracks(const QVariantList& tracks);
  const std::vector<Entry*>& importedEntries() const { return importedEntries_; }

  // The import session: opening one when one is open already changes nothing and returns false.
  bool openSession();
  void closeSession() { session_.reset(); }
  const ImportSession* session() const { return session_ ? &*session_ : nullptr; }
  // The entry that now holds the track: the one this session made for its album, or a new one.
  Entry* entryForTrack(const QVariantMap& track, bool* wasExisting);

 private:
  bool openXmlFile(const QString& path);
  ImportRun newImportRun() const;
  // Collection, save and report at the end of an import; false when nothing was recognised.
  bool finishImport(ImportRun& run, const QString& collectionName, bool recognised, const QString& failure);
  // A collection of that name for the entries, if any, selected; then the save. False when the save failed.
  bool collectAndSave(const QString& collectionName, const std::vector<Entry*>& entries);
  // The run's warnings in one alert, and a word when it was stopped.
  void reportProblems(const ImportRun& run, const QString& collectionName);
  // A collection export of the public music database: its folders become collections.
  bool importSiteCollection(const QString& fileName, const QString& text);
  bool notSupported(const QString& kind);
  // Shows every entry, the given one selected.
  void showAmongAll(Entry* entry);
  QString localized(const QString& key) const;

  ImportServices services_;
  std::optional<ImportSession> session_;
  std::vector<Entry*> importedEntries_;
};
