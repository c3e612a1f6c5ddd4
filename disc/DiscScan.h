#pragma once

#include "DiscLookup.h"

#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <optional>

class AddPanel;
class Freedb;
class MusicBrainz;
class Platform;
class PluginManager;
class Settings;
class SitePlugin;
class StringTable;
class WindowSystem;

// The disc insertion: a mounted audio CD is scanned when the user asked for it, the music
// player's details or the online lookup fill the add panel (no match, one match or several), and
// the disc's durations and identifier can be put into the panel by hand.
class DiscScan {
 public:
  struct Services {
    Settings& settings;
    WindowSystem& windowSystem;
    Platform& platform;
    const StringTable& strings;
    PluginManager& plugins;
    AddPanel& addPanel;
    // Adds the add panel's values as a new entry, without asking about duplicates.
    std::function<void()> addEntryFromAddPanel;
    // Several matches: the user picks one of the site's results.
    std::function<void(SitePlugin&, int)> resultsFound;
    // One match left in the add panel: the panel's menu of site plug-ins is rebuilt.
    std::function<void(const QString&)> pluginsInfo;
  };

  explicit DiscScan(Services services) : services_(std::move(services)) {}

  // The disc lookup, registered as "Freedb" on first use, with the current server settings.
  Freedb& freedb();
  // A CDDB host for this run instead of the setting ("host[:port]"); empty for the setting.
  void setServerOverride(const QString& server) { serverOverride_ = server; }
  // The CDDB and web-search host ("host[:port]") this run talks to: the override, the setting or the default.
  QString cddbServer() const;
  // The MusicBrainz site, registered as "MusicBrainz" on first use, with the current settings.
  MusicBrainz& musicBrainz();
  // Service roots for this run instead of the settings; empty for the setting.
  void setMusicBrainzOverride(const QString& server, const QString& coverServer) {
    musicBrainzOverride_ = server;
    coverServerOverride_ = coverServer;
  }
  // The sources of this run instead of the setting "Lookup Sources"; empty for the setting.
  void setSourcesOverride(const QList<DiscLookup::Source>& sources) { sourcesOverride_ = sources; }
  QList<DiscLookup::Source> sources() const;
  // The inserted disc asked of the sources in order.
  DiscLookup::Outcome lookUpDisc();

  // Every newly mounted volume, an inserted audio CD among them, arrives here.
  void volumeMounted(const QString& volumePath);
  // An audio CD put into that drive (audio CDs are not mounted): scanned from that drive when the
  // user asked for scans.
  void audioDiscInserted(const QString& device);
  // The whole disc insertion: the player's details or the online lookup, then no match, one
  // match or several.
  void scanDisc();
  // Puts the inserted disc's durations, identifier and own barcode into the open add panel.
  void fillInformationFromCD();
  void ejectCD();
  bool canEject();
  // What the music player knows of the inserted CD, as a lookup result; nullopt when no player
  // answers.
  std::optional<QVariantMap> playerDetails();
  // The player's nine-item answer as a result dictionary.
  static std::optional<QVariantMap> dictionaryFromPlayerItems(const QVariantList& items);
  // The disc's tracks as the add panel shows them: each track without a name is called
  // "Track N" after its place on the disc.
  static QVariantList namedTracks(QVariantList tracks);

 private:
  // The media catalogue number of the disc in hand, when it holds one that is a barcode.
  QString discBarcode();
  // The disc's own barcode names this copy's release: it goes into the panel over a looked-up one.
  void fillBarcode(const QString& barcode);
  QString localized(const QString& key, const QString& value = {}) const;
  double timeoutSeconds() const;

  Services services_;
  QString serverOverride_, musicBrainzOverride_, coverServerOverride_;
  QList<DiscLookup::Source> sourcesOverride_;
};
