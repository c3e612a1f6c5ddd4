#pragma once

#include "CollectionTotals.h"
#include "MyControllerShared.h"

#include <QVariantList>
#include <optional>
#include <QVariantMap>
#include <thread>

// The music cataloguer's application controller: its settings defaults, launch sequence, and
// its answers to the framework's search, autofill and collection-naming questions.
class Freedb;

class MyController : public MyControllerShared {
 public:
  // Seconds after which the music library is refreshed again at launch.
  static constexpr qint64 libraryRefreshInterval = 2592000;

  MyController(Settings& settings, WindowSystem& windowSystem, Platform& platform);
  ~MyController() override;

  static QVariantMap registeredDefaults();
  void applicationWillFinishLaunching() override;
  void applicationDidFinishLaunching() override;
  // Every newly mounted volume, an inserted audio CD among them, arrives here.
  void NSWorkspaceDidMountNotification(const QString& volumePath);
  // The disc lookup, registered as "Freedb" on first use, with the current server settings.
  Freedb& freedb();
  // A CDDB host for this run instead of the setting ("host[:port]"); empty for the setting.
  void setServerOverride(const QString& server) { serverOverride_ = server; }
  // The whole disc insertion: the player's details or the online lookup, then no match, one
  // match or several.
  void scanDisc();
  // Puts the inserted disc's durations and identifier into the open add panel.
  void fillInformationFromCD();
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

  // Footer totals: see CollectionTotals.
  QVariantMap collectionTotalsDictionaryFor(const std::vector<Entry*>& entries, bool footer) override;
  void refreshCollectionStatistics() override;
  // The summed play time of track dictionaries (each with a "duration" text); null when 0.
  static QString totalDuration(const QVariantList& tracks);
  // Prints the entry page when it has the focus; otherwise opens the print dialog over this
  // application's list layouts and cover size.
  void printCollection() override;

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
  QVariantList iTunesEntireLibrary_;
  std::unique_ptr<QVariantMap> iTunesAlbumsAdded_, iTunesRatings_;
  std::unique_ptr<QVariantList> importedImages_;
  std::thread libraryRefresh_;
  CollectionTotals totals_;
  QString serverOverride_;
};
