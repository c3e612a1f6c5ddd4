#pragma once

#include "CollectionTotals.h"
#include "DiscScan.h"
#include "HtmlExport.h"
#include "LibraryLoader.h"
#include "MyControllerShared.h"
#include "NewLinkProcessor.h"
#include "TrackRowsFiller.h"

#include <QVariantList>
#include <QVariantMap>
#include <memory>
#include <optional>

class Freedb;
class MusicBrainz;
class ImportDispatcher;
class LibraryXml;
struct ImportSession;

// The music cataloguer's application controller: its settings defaults, launch sequence, and
// its answers to the framework's search, autofill and collection-naming questions. It plugs the
// subsystems into the framework: the track rows of entry pages, the totals, new links, the file
// dispatcher and the disc insertion.
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
  // Waits for a library read started at launch or by loadMusicLibrary, if any.
  void waitForLibraryRefresh();
  // Reads the player's library into the add panel's track data in the background, unless a read
  // runs already; `loaded` runs on the reading thread when it is in.
  void loadMusicLibrary(std::function<void()> loaded = {});
  // The tracks of the library file the user chose ("Music Library"), else of the exported
  // library XML ("iTunes Library XML"), else of the player's library the platform finds.
  QVariantList musicLibraryTracks(const QString& chosen, const QString& xml) const;

  // The disc insertion; the members below forward to it.
  DiscScan& discScan() { return discScan_; }
  void NSWorkspaceDidMountNotification(const QString& volumePath) { discScan_.volumeMounted(volumePath); }
  Freedb& freedb() { return discScan_.freedb(); }
  MusicBrainz& musicBrainz() { return discScan_.musicBrainz(); }
  void setServerOverride(const QString& server) { discScan_.setServerOverride(server); }
  QString cddbServer() const { return discScan_.cddbServer(); }
  void scanDisc() { discScan_.scanDisc(); }
  void fillInformationFromCD() { discScan_.fillInformationFromCD(); }
  void ejectCD() { discScan_.ejectCD(); }
  bool canEject() { return discScan_.canEject(); }
  // Names the add panel's unnamed tracks "Track N" by their place on the disc.
  void nameUnnamedTracks();
  std::optional<QVariantMap> iTunesCDDBDetails() { return discScan_.playerDetails(); }
  std::optional<QVariantMap> dictionaryFromPlayerItems(const QVariantList& items) const {
    return DiscScan::dictionaryFromPlayerItems(items);
  }

  QString labelForSearchType(const QVariant& searchType) const override;
  QString searchIdentifierForSearchType(int searchType) const override;
  void addValuesToAutofillForEntry(Entry& entry) override;
  QStringList commonAttributesForNamingNewCollection() const override;

  // Files and discary: URLs first; then result pages of the disc web search ("Freedb"), product
  // pages of the classical store ("Presto") and plain words open the internet search panel.
  bool handleIncomingString(const QString& text) override;
  // The classical-music store whose product pages are recognised.
  static inline const QString classicalStoreDomain = QStringLiteral("prestomusic.com");

  // The summed play time of track dictionaries (each with a "duration" text); null when 0.
  static QString totalDuration(const QVariantList& tracks);
  // Prints the entry page when it has the focus; otherwise opens the print dialog over this
  // application's list layouts and cover size.
  void printCollection() override;
  // What the HTML export of this catalogue uses: the entry pages, the totals and the covers.
  HtmlExport::Services htmlExportServices();

  // Every file that reaches the program: picked in the import panel, dropped on the window or
  // named on the command line. True when something was opened or imported. See ImportDispatcher.
  bool openFile(const QString& path) override;
  // The File > Import... action: an open panel, then openFile for each chosen item.
  void importCollection();
  // A single entry card: a native export holding one entry.
  static QString cardExtension();
  // Import of audio files and of the music library.
  // The entry that now holds the track: the one this import made for its album, or a new one.
  Entry* entryForiTunesTrack(const QVariantMap& track, bool* wasExisting);
  // One audio file into an entry of "Imported Audio"; false when skipped as a duplicate.
  bool importAudioFile(const QString& path);
  // Every audio file under the folder, files of one album into one entry; false when none was imported.
  bool openDirectory(const QString& path);
  // Library track dictionaries into entries; false when no entry was made. importedEntries() holds them.
  bool importItunesFromTracks(const QVariantList& tracks);
  const std::vector<Entry*>& importedEntries() const;
  // The library file: the user's choice ("iTunes Library XML"), else the usual place; empty when none.
  QString libraryXmlPath() const;
  // Imports the tracks of the first playlist of that name into a new collection "None", selected
  // and saved; false when the playlist has no track to import.
  bool importLibraryPlaylist(const QString& xmlPath, const QString& playlistName, QString* error = nullptr);
  bool importLibraryPlaylist(const LibraryXml& library, const QString& playlistName, QString* error = nullptr);
  // The import session of audio files and library tracks; opening one when one is open already
  // changes nothing and returns false. importSession() is null outside an import.
  bool openImportRun();
  void closeImportRun();
  const ImportSession* importSession() const;

 private:
  CollectionTotals totals_;
  TrackRowsFiller trackRows_;
  NewLinkProcessor newLinks_;
  DiscScan discScan_;
  std::unique_ptr<ImportDispatcher> imports_;
  LibraryLoader libraryLoader_;
};
