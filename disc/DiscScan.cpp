#include "DiscScan.h"

#include "AddPanel.h"
#include "CdKeys.h"
#include "Freedb.h"
#include "MusicBrainz.h"
#include "MusicPlayer.h"
#include "Platform.h"
#include "PluginManager.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "StringTable.h"
#include "TrackData.h"
#include "NaturalDate.h"
#include "WindowSystem.h"

#include <cstdio>

namespace {

const QString tracksKey = QStringLiteral("tracks");

QString playerScript(const QString& player) {
  return QStringLiteral(
             "tell application \"%1\"\n"
             "  with timeout 20 seconds\n"
             "    try\n"
             "      set importedCD to some source whose kind is audio CD\n"
             "    end try\n"
             "    set cdName to name of importedCD\n"
             "    set cdPlaylist to first playlist of importedCD\n"
             "    set trackCount to count of tracks of cdPlaylist\n"
             "    set trackNames to name of every track of cdPlaylist\n"
             "    set trackTimes to time of every track of cdPlaylist\n"
             "    set trackArtists to artist of every track of cdPlaylist\n"
             "    set trackComposers to composer of every track of cdPlaylist\n"
             "    set cdGenre to genre of first track of cdPlaylist\n"
             "    set cdComposer to composer of first track of cdPlaylist\n"
             "    set cdYear to year of first track of cdPlaylist\n"
             "    return {cdName, cdGenre, cdYear as text, cdComposer, trackCount, trackNames, trackTimes, "
             "trackArtists, trackComposers}\n"
             "  end timeout\n"
             "end tell\n")
      .arg(player);
}

}  // namespace

QString DiscScan::cddbServer() const {
  if (!serverOverride_.isEmpty()) return serverOverride_;
  const QString server = services_.settings.stringForKey(SettingsKeys::cddbServer);
  return server.isEmpty() ? SettingsKeys::defaultCddbServer : server;
}

Freedb& DiscScan::freedb() {
  auto* site = dynamic_cast<Freedb*>(services_.plugins.pluginForName(Freedb::name));
  if (!site) {
    auto made = std::make_unique<Freedb>(services_.platform, services_.windowSystem, services_.strings);
    site = made.get();
    services_.plugins.addPlugin(std::move(made), Freedb::name);
  }
  const Settings& settings = services_.settings;
  Freedb::Options options;
  options.server = cddbServer();
  options.helloUser = settings.stringForKey(SettingsKeys::cddbHelloUser);
  options.helloHost = settings.stringForKey(SettingsKeys::cddbHelloHost);
  options.timeoutSeconds = timeoutSeconds();
  site->setOptions(options);
  return *site;
}

double DiscScan::timeoutSeconds() const {
  const double timeout = services_.settings.floatForKey(SettingsKeys::cddbTimeout);
  // A time-out of nothing or of days is a typing error; keep it within reason.
  return timeout > 0 ? std::min(timeout, 600.0) : 30.0;
}

MusicBrainz& DiscScan::musicBrainz() {
  auto* site = dynamic_cast<MusicBrainz*>(services_.plugins.pluginForName(MusicBrainz::name));
  if (!site) {
    auto made = std::make_unique<MusicBrainz>();
    site = made.get();
    services_.plugins.addPlugin(std::move(made), MusicBrainz::name);
  }
  const Settings& settings = services_.settings;
  auto root = [&settings](const QString& override, const QString& key, const QString& fallback) {
    if (!override.isEmpty()) return override;
    const QString value = settings.stringForKey(key);
    return value.isEmpty() ? fallback : value;
  };
  MusicBrainz::Options options;
  options.server = root(musicBrainzOverride_, SettingsKeys::musicBrainzServer, MusicBrainz::defaultServer);
  options.coverServer = root(coverServerOverride_, SettingsKeys::coverArtServer, MusicBrainz::defaultCoverServer);
  options.contact = settings.stringForKey(SettingsKeys::musicBrainzContact);
  options.timeoutSeconds = timeoutSeconds();
  site->setOptions(options);
  return *site;
}

QList<DiscLookup::Source> DiscScan::sources() const {
  if (!sourcesOverride_.isEmpty()) return sourcesOverride_;
  const QVariant names = services_.settings.objectForKey(SettingsKeys::lookupSources);
  // One name typed on the command line arrives as text.
  return DiscLookup::sourcesNamed(names.typeId() == QMetaType::QString ? names.toString().split(QLatin1Char(','))
                                                                        : names.toStringList());
}

DiscLookup::Outcome DiscScan::lookUpDisc() {
  MusicBrainz& mb = musicBrainz();
  return DiscLookup(freedb(), mb, services_.platform).run(sources());
}

void DiscScan::volumeMounted(const QString& volumePath) {
  if (!services_.settings.boolForKey(SettingsKeys::scanCD)) return;
  if (!services_.platform.fileExists(QStringLiteral("%1/%2").arg(volumePath, Freedb::tocFileName))) return;
  scanDisc();
}

void DiscScan::audioDiscInserted(const QString& device) {
  if (!services_.settings.boolForKey(SettingsKeys::scanCD)) return;
  Freedb& site = freedb();
  const Freedb::TocSource previous = site.tocSource();
  // Read, looked up and ejected in the drive it arrived in, whichever drive is the default.
  Freedb::TocSource drive;
  drive.device = device;
  site.setTocSource(drive);
  scanDisc();
  site.setTocSource(previous);
}

void DiscScan::scanDisc() {
  AddPanel& panel = services_.addPanel;
  if (panel.isVisible()) panel.setVisible(false);
  WindowSystem& ws = services_.windowSystem;
  ws.showProgressSheet(localized(QStringLiteral("Scanning"), QStringLiteral("Scanning...")), QString(), 0);
  Freedb& site = freedb();
  std::optional<QStringList> matches;
  QVariantMap single;
  DiscLookup::Outcome lookup;
  SitePlugin* found = &site;
  if (auto details = playerDetails()) {
    matches = QStringList{QStringLiteral("iTunes Data")};
    single = *details;
    single[QStringLiteral("discID")] = site.discIDStringWithTotalTracks(nullptr, nullptr, nullptr, nullptr).value_or(QString());
  } else {
    lookup = lookUpDisc();
    matches = lookup.titles;
    found = lookup.site;
    if (matches && matches->size() == 1) found->resultNumber(0, [&single](const QVariantMap& result) { single = result; });
  }
  // Read before an eject takes the disc away.
  const QString barcode = matches ? discBarcode() : QString();
  ws.closeProgressSheet();
  if (services_.settings.boolForKey(SettingsKeys::ejectCD)) ejectCD();
  if (!matches) return;
  // A source that did not answer is said in its own words; "no match" only when all answered.
  const QString problems = lookup.problems.join(QLatin1Char('\n'));
  if (!matches->isEmpty() && !problems.isEmpty()) ws.displayNotice(problems, services_.settings.floatForKey(SettingsKeys::bezelDisplayTime));

  if (matches->isEmpty()) {
    const QString message =
        problems.isEmpty()
            ? localized(QStringLiteral("FreedbNoMatch"),
                        QStringLiteral("The online database has no match for this disc. Try a keyword search, or add it manually."))
            : localized(QStringLiteral("LookupFailed"),
                        QStringLiteral("The disc could not be looked up:\n%1\nTry again later, or add it manually."))
                  .arg(problems);
    const int answer = ws.runAlert(
        localized(QStringLiteral("Action Required")), message,
        {localized(QStringLiteral("OK")), localized(QStringLiteral("AddManually"), QStringLiteral("Add Manually"))});
    if (answer != 1) return;
    panel.setResults(nullptr, -1);
    panel.clear();
    panel.windowMenuTitle = localized(QStringLiteral("Add Entry"), QStringLiteral("Add CD"));
    panel.setVisible(true);
    QVariantList tracks;
    for (const QString& duration : site.getTrackDurations().value_or(QStringList()))
      tracks << QVariantMap{{QStringLiteral("duration"), duration}};
    panel.setFromDictionary({{tracksKey, namedTracks(tracks)}});
    panel.setValue(panel.trackData().calculateTotalDuration(), QStringLiteral("duration"));
    fillBarcode(barcode);
    return;
  }
  if (matches->size() == 1) {
    panel.setResults(nullptr, -1);
    panel.clear();
    panel.setVisible(true);
    panel.setFromDictionary(single);
    fillBarcode(barcode);
    if (services_.settings.boolForKey(SettingsKeys::firstResultAdd)) {
      const QString title = panel.valueForKey(CdKeys::title).toString();
      services_.addEntryFromAddPanel();
      panel.setVisible(false);
      ws.displayNotice(title, services_.settings.floatForKey(SettingsKeys::bezelDisplayTime));
    } else {
      services_.pluginsInfo(QStringLiteral("Doghouse"));
    }
    return;
  }
  services_.resultsFound(*found, int(matches->size()));
}

void DiscScan::fillInformationFromCD() {
  AddPanel& panel = services_.addPanel;
  Freedb& site = freedb();
  if (const auto durations = site.getTrackDurations(); durations && !durations->isEmpty()) {
    panel.trackData().setDurationCD(*durations);
  }
  fillBarcode(discBarcode());
  const QString discID = site.discID().value_or(QString());
  if (discID.isEmpty()) return;
  const QString current = panel.valueForKey(CdKeys::discID).toString();
  QString value = discID;
  if (!current.isEmpty() && current != discID) value = QStringLiteral("%1, %2").arg(current, discID);
  panel.setValue(value, CdKeys::discID);
}

QString DiscScan::discBarcode() {
  const auto toc = freedb().tableOfContents();
  return toc ? toc->mediaCatalogNumber : QString();
}

void DiscScan::fillBarcode(const QString& barcode) {
  if (barcode.isEmpty()) return;
  services_.addPanel.setValue(barcode, CdKeys::upc);
  services_.addPanel.setValue(QStringLiteral("Disc"), CdKeys::barcodeSource);
}

void DiscScan::ejectCD() { freedb().ejectCD(); }

bool DiscScan::canEject() { return freedb().canEject(); }

std::optional<QVariantMap> DiscScan::playerDetails() {
  MusicPlayer* player = services_.platform.musicPlayer();
  if (!player) return std::nullopt;
  const QString script = playerScript(services_.platform.osVersion() < 15 ? QStringLiteral("iTunes") : QStringLiteral("Music"));
  QString error;
  const auto items = player->runScript(script, &error);
  if (!items) {
    std::fprintf(stderr, "Script used: %s\n", qPrintable(script));
    if (error.contains(QLatin1String("importedCD"))) {
      services_.windowSystem.runAlert(QStringLiteral("No CD"),
                              QStringLiteral("There is no CD information available in iTunes, make sure a CD has been inserted."),
                              {localized(QStringLiteral("OK"))});
    } else {
      std::fprintf(stderr, "SCRIPT ERROR: %s\n", qPrintable(error));
    }
    return std::nullopt;
  }
  return dictionaryFromPlayerItems(*items);
}

std::optional<QVariantMap> DiscScan::dictionaryFromPlayerItems(const QVariantList& items) {
  if (items.size() < 9) {
    std::fprintf(stderr, "SCRIPT ERROR: the player answered %lld items instead of 9\n", qint64(items.size()));
    return std::nullopt;
  }
  const QStringList names = items.at(5).toStringList(), times = items.at(6).toStringList();
  const QStringList artists = items.at(7).toStringList(), composers = items.at(8).toStringList();
  QVariantMap result;
  QString albumArtist;
  if (items.at(4).toInt() > 0) {
    QVariantList tracks;
    bool artistsVary = false, composersVary = false;
    // The artists list decides how many tracks there are.
    for (qsizetype k = 0; k < artists.size(); ++k) {
      QVariantMap track;
      auto set = [&track](const char* key, const QStringList& list, qsizetype index) {
        if (index < list.size() && !list.at(index).isEmpty()) track[QString::fromLatin1(key)] = list.at(index);
      };
      set("name", names, k);
      set("duration", times, k);
      set("artist", artists, k);
      set("composer", composers, k);
      if (artists.at(k).compare(artists.first(), Qt::CaseInsensitive) != 0) artistsVary = true;
      if (composers.value(k).compare(composers.value(0), Qt::CaseInsensitive) != 0) composersVary = true;
      tracks << track;
    }
    for (QVariant& track : tracks) {
      QVariantMap map = track.toMap();
      if (!artistsVary) map.remove(QStringLiteral("artist"));
      if (!composersVary) map.remove(QStringLiteral("composer"));
      track = map;
    }
    if (!artists.isEmpty()) albumArtist = artistsVary ? QStringLiteral("Various") : artists.first();
    result[tracksKey] = tracks;
    if (const QString total = TrackData::playerTotalDuration(tracks); !total.isNull()) result[QStringLiteral("duration")] = total;
  }
  result[CdKeys::title] = items.at(0).toString();
  result[CdKeys::genre] = items.at(1).toString();
  if (!albumArtist.isNull()) result[CdKeys::artist] = albumArtist;
  if (const auto date = NaturalDate::myDateWithNaturalLanguageString(items.at(2).toString())) {
    result[CdKeys::releaseDate] = *date;
  }
  if (const QString composer = items.at(3).toString(); !composer.isEmpty()) result[CdKeys::composer] = composer;
  return result;
}

QVariantList DiscScan::namedTracks(QVariantList tracks) {
  for (qsizetype k = 0; k < tracks.size(); ++k) {
    QVariantMap track = tracks.at(k).toMap();
    if (!track.contains(QStringLiteral("name"))) track[QStringLiteral("name")] = QStringLiteral("Track %1").arg(k + 1);
    tracks[k] = track;
  }
  return tracks;
}

QString DiscScan::localized(const QString& key, const QString& value) const {
  return services_.strings.localizedString(key, value);
}
