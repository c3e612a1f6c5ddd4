#pragma once

#include "CollectionTotals.h"
#include "AlbumTable.h"

class LibraryXml;
#include "MyControllerShared.h"

#include <QVariantList>
#include <optional>
#include <QVariantMap>
#include <thread>

// The music cataloguer's application controller: its settings defaults, launch sequence, and
// its answers to the framework's search, autofill and collection-naming questions.
class ImportRun;
class Freedb;

class MyController : public MyControllerShared {
 public:
  // Seconds after which the music library is refreshed again at launch.
  static constexpr qint64 libraryRefreshInterval = 2592000;

  MyController(Settings& settings, WindowSystem& windowSystem, Platform& platform);
  ~MyController() override;

  // The nine defaults of the window, list, pages and library refresh, registered at launch.
  static QVariantMap registeredDefaults();
  // This program's own settings (disc lookup and scanning), registered beside them.
  static QVariantMap ownDefaults();
  void applicationWillFinishLaunching() override;
  void applicationDidFinishLaunching() override;
  // Every newly mounted volume, an inserted audio CD among them, arrives here.
  void NSWorkspaceDidMountNotification(const QString& volumePath);
  // The disc lookup, registered as "Freedb" on first use, with the current server settings.
  Freedb& freedb();
  // A CDDB host for this run instead of the setting ("host[:port]"); empty for the setting.
  void setServerOverride(const QString& server) { serverOverride_ = server; }
  // The CDDB and web-search host ("host[:port]") this run talks to: the override, the setting or the default.
  QString cddbServer() const;
  // The whole disc insertion: the player's details or the online lookup, then no match, one
  // match or several.
  void scanDisc();
  // Puts the inserted disc's durations and identifier into the open add panel.
  void fillInformationFromCD();
  // Names each track of the add panel that has no name by its place: "Track 1", "Track 2"...
  void nameUnnamedTracks();
  void ejectCD();
  // What the music player knows of the inserted CD, as a lookup result; nullopt when no player
  // answers.
  std::optional<QVariantMap> iTunesCDDBDetails();
  // The player's nine-item answer as a result dictionary.
  std::optional<QVariantMap> dictionaryFromPlayerItems(const QVariantList& items) const;
  // Waits for a library refresh started at launch, if any.
  void waitForLibraryRefresh();

  QString labelForSearchType(const QVariant& searchType) const override;
  QString searchIdentifierForSearchType(int searchType) const override;
  void addValuesToAutofillForEntry(Entry& entry) override;
  QStringList commonAttributesForNamingNewCollection() const override;
  // The entry's own fields, then the track rows.
  void replaceKeysInTemplate(QString& text, Entry& entry, bool html, bool webView) override;

  void processNewLink(Link& link) override;
  // Files and discary: URLs first; then result pages of the disc web search ("Freedb"), product
  // pages of the classical store ("Presto") and plain words open the internet search panel.
  bool handleIncomingString(const QString& text) override;
  // The classical-music store whose product pages are recognised.
  static inline const QString classicalStoreDomain = QStringLiteral("prestomusic.com");

  // Footer totals: see CollectionTotals.
  QVariantMap collectionTotalsDictionaryFor(const std::vector<Entry*>& entries, bool footer) override;
  void refreshCollectionStatistics() override;
  // The summed play time of track dictionaries (each with a "duration" text); null when 0.
  static QString totalDuration(const QVariantList& tracks);
  // Prints the entry page when it has the focus; otherwise opens the print dialog over this
  // application's list layouts and cover size.
  void printCollection() override;

  // Every file that reaches the program: picked in the import panel, dropped on the window or
  // named on the command line. True when something was opened or imported.
  bool openFile(const QString& path) override;
  // The File > Import... action: an open panel, then openFile for each chosen item.
  void importCollection();
  // A single entry card: a native export holding one entry.
  static QString cardExtension() { return QStringLiteral("discarycard"); }
  bool openCardAtPath(const QString& path);
  // Selects the entry that the description names by "uid", or else by "title" and "artist".
  bool findEntry(const QVariantMap& description);
  bool installFolioExtras(const QString& path);
  // Import of audio files and of the music library.
  // The entry that now holds the track: the one this import made for its album, or a new one.
  Entry* entryForiTunesTrack(const QVariantMap& track, bool* wasExisting);
  // One audio file into an entry of "Imported Audio"; false when skipped as a duplicate.
  bool importAudioFile(const QString& path);
  // Every audio file under the folder, files of one album into one entry; false when none was imported.
  bool openDirectory(const QString& path);
  // Library track dictionaries into entries; false when no entry was made. importedEntries() holds them.
  bool importItunesFromTracks(const QVariantList& tracks);
  const std::vector<Entry*>& importedEntries() const { return importedEntries_; }
  // The library file: the user's choice ("iTunes Library XML"), else the usual place; empty when none.
  QString libraryXmlPath() const;
  // Imports the tracks of the first playlist of that name into a new collection "None", selected
  // and saved; false when the playlist has no track to import.
  bool importLibraryPlaylist(const QString& xmlPath, const QString& playlistName, QString* error = nullptr);
  bool importLibraryPlaylist(const LibraryXml& library, const QString& playlistName, QString* error = nullptr);
  // The album table of an import; open() is a no-op when one is open already and then returns false.
  bool openImportRun();
  void closeImportRun();
  AlbumTable importRun();

  // State of one import run; empty outside an import.
  const QVariantList& iTunesEntireLibrary() const { return iTunesEntireLibrary_; }
  void setITunesEntireLibrary(const QVariantList& tracks) { iTunesEntireLibrary_ = tracks; }
  QVariantMap* iTunesAlbumsAdded() { return iTunesAlbumsAdded_.get(); }
  void setITunesAlbumsAdded(std::unique_ptr<QVariantMap> albums) { iTunesAlbumsAdded_ = std::move(albums); }
  QVariantMap* iTunesRatings() { return iTunesRatings_.get(); }
  void setITunesRatings(std::unique_ptr<QVariantMap> ratings) { iTunesRatings_ = std::move(ratings); }
  QVariantList* importedImages() { return importedImages_.get(); }
  void setImportedImages(std::unique_ptr<QVariantList> uids) { importedImages_ = std::move(uids); }

 private:
  bool sniffXmlFile(const QString& path);
  // Collection, save and report at the end of an import; false when nothing was recognised.
  bool finishImport(ImportRun& run, const QString& collectionName, bool recognised, const QString& failure);
  // A collection of that name for the entries, if any, selected; then the save. False when the save failed.
  bool collectAndSave(const QString& collectionName, const std::vector<Entry*>& entries);
  bool notSupported(const QString& kind);

  std::vector<Entry*> importedEntries_;
  QHash<QString, QString> customFieldKeys_;
  QVariantList iTunesEntireLibrary_;
  std::unique_ptr<QVariantMap> iTunesAlbumsAdded_, iTunesRatings_;
  std::unique_ptr<QVariantList> importedImages_;
  std::thread libraryRefresh_;
  CollectionTotals totals_;
  QString serverOverride_;
};
