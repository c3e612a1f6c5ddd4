#include "MyController.h"

#include "AddPanel.h"
#include "AudioFileImport.h"
#include "CdKeys.h"
#include "CollectionTotals.h"
#include "Disc4ToDisc5.h"
#include "Entry.h"
#include "FileKind.h"
#include "Freedb.h"
#include "ImportDispatcher.h"
#include "LibraryXml.h"
#include "MusicBrainz.h"
#include "MyFieldsController.h"
#include "Platform.h"
#include "PrintController.h"
#include "PrintLayouts.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "TrackData.h"
#include "WindowSystem.h"

#include <QDateTime>
#include <QFileInfo>

MyController::MyController(Settings& settings, WindowSystem& windowSystem, Platform& platform)
    : MyControllerShared(settings, windowSystem, platform),
      totals_(frameworkBundle()),
      trackRows_(&addPanel().trackData()),
      newLinks_({settings, windowSystem, platform, frameworkBundle(), [this] { return dataFolderPath(); }}),
      discScan_({settings, windowSystem, platform, frameworkBundle(), pluginManager(), addPanel(),
                 [this] { addEntryFromAddPanelCheckForDuplicates(false); },
                 [this](SitePlugin& site, int results) { resultsFoundWithSite(site, results); },
                 [this](const QString& menuItem) { getPluginsInfo(menuItem); }}),
      libraryLoader_(addPanel().trackData()) {
  setFieldsController(std::make_unique<MyFieldsController>(settings, frameworkBundle()));
  managedObjectContext().setMigrationPolicy(std::make_shared<Disc4ToDisc5>());
  setEntryPageFiller(&trackRows_);
  setTotalsProvider(&totals_);
  setNewLinkHandler(&newLinks_);
  imports_ = std::make_unique<ImportDispatcher>(ImportServices{
      .store = managedObjectContext(),
      .collections = collections(),
      .entries = entriesController(),
      .windowSystem = windowSystem,
      .strings = frameworkBundle(),
      .platform = platform,
      .fields = fieldsController(),
      .save = [this] { return saveManagedObjectContext(); },
      .select = [this](Entry* entry) { selectEntry(entry); },
      .setCover = [this](Entry& entry, const QVariant& picture) { return setCoverImage(entry, picture); },
      .importDuplicates = [this] { return importDuplicates(); },
      .dataFolder = [this] { return dataFolderPath(); },
  });
}

MyController::~MyController() { waitForLibraryRefresh(); }

void MyController::waitForLibraryRefresh() { libraryLoader_.wait(); }

void MyController::loadMusicLibrary(std::function<void()> loaded) {
  // The settings are read here, on the main thread; the files on the reading thread.
  const QString chosen = preferencesStandard().stringForKey(SettingsKeys::musicLibrary);
  const QString xml = preferencesStandard().stringForKey(SettingsKeys::iTunesLibraryXML);
  libraryLoader_.start([this, chosen, xml] { return musicLibraryTracks(chosen, xml); }, std::move(loaded));
}

QVariantList MyController::musicLibraryTracks(const QString& chosen, const QString& xml) const {
  const auto xmlTracks = [](const QString& path) {
    LibraryXml library;
    return QFileInfo(path).isFile() && library.read(path, true) ? library.allTracks() : QVariantList();
  };
  // A chosen library that is gone stays the choice: no other player's library stands in.
  if (!chosen.isEmpty()) {
    QVariantList tracks = platform().musicLibraryTracksAt(chosen);
    // What the platform does not read is an exported library XML.
    return tracks.isEmpty() ? xmlTracks(chosen) : tracks;
  }
  if (!xml.isEmpty() && QFileInfo(xml).isFile()) return xmlTracks(xml);
  return platform().musicLibraryTracks();
}

QVariantMap MyController::registeredDefaults() {
  auto column = [](const QString& identifier, double width) {
    return QVariantMap{{QStringLiteral("identifier"), identifier}, {QStringLiteral("width"), width}};
  };
  return {
      {SettingsKeys::infoTemplate, QStringLiteral("Collection.html")},
      {SettingsKeys::releaseDateFormat, QStringLiteral("yyyy")},
      {SettingsKeys::coverBorder, true},
      {SettingsKeys::coverBackground, 1.0},
      {SettingsKeys::cellSize, qint64(150)},
      {SettingsKeys::bezelDisplayTime, 3.0},
      {SettingsKeys::bottomFields, QVariantList{true, true, false, false, true, true, false}},
      {SettingsKeys::defaultColumns, QVariantList{column(CdKeys::statusImage, 18.0), column(CdKeys::title, 250.0),
                                                  column(CdKeys::artist, 150.0), column(CdKeys::label, 150.0),
                                                  column(CdKeys::myRating, 77.0), column(CdKeys::genre, 100.0)}},
      {SettingsKeys::refreshItunesAuto, true},
  };
}

QVariantMap MyController::ownDefaults() {
  return {
      // A mounted volume is looked up online only once the user has asked for it.
      {SettingsKeys::scanCD, false},
      {SettingsKeys::ejectCD, false},
      {SettingsKeys::firstResultAdd, false},
      {SettingsKeys::cddbServer, SettingsKeys::defaultCddbServer},
      {SettingsKeys::cddbTimeout, 30.0},
      {SettingsKeys::cddbHelloUser, QStringLiteral("discary")},
      {SettingsKeys::cddbHelloHost, QStringLiteral("localhost")},
      {SettingsKeys::lookupSources, QStringList{MusicBrainz::name, QStringLiteral("CDDB")}},
      {SettingsKeys::musicBrainzServer, MusicBrainz::defaultServer},
      {SettingsKeys::coverArtServer, MusicBrainz::defaultCoverServer},
      {SettingsKeys::musicBrainzContact, QString()},
  };
}

void MyController::applicationWillFinishLaunching() {
  preferencesStandard().registerDefaults(registeredDefaults());
  preferencesStandard().registerDefaults(ownDefaults());
  MyControllerShared::applicationWillFinishLaunching();
}

void MyController::applicationDidFinishLaunching() {
  platform().observeMounts([this](const QString& volumePath) { discScan_.volumeMounted(volumePath); });
  platform().observeAudioDiscs([this](const QString& device) { discScan_.audioDiscInserted(device); });
  freedb();
  pluginManager().setOrderFromPrefs();

  Settings& settings = preferencesStandard();
  if (settings.boolForKey(SettingsKeys::refreshItunesAuto)) {
    const QDateTime last = settings.objectForKey(SettingsKeys::lastItunes).toDateTime();
    const QDateTime now = QDateTime::currentDateTimeUtc();
    // Exactly 30 days old still counts as recent.
    const bool recent = last.isValid() && now.secsTo(last) >= -libraryRefreshInterval;
    if (!recent) {
      loadMusicLibrary();
      settings.setObject(SettingsKeys::lastItunes, now);
    }
  }
  MyControllerShared::applicationDidFinishLaunching();
}

void MyController::printCollection() {
  if (windowSystem().entryPageHasFocus()) {
    windowSystem().printEntryPage();
    return;
  }
  PrintController& print = sharedPrint();
  // Registered on every print, so a size the user stored stays theirs.
  preferencesStandard().registerDefaults({{PrintController::coverWidthKey, QStringLiteral("350")},
                                          {PrintController::coverHeightKey, QStringLiteral("350")}});
  print.coverDescriptionField = frameworkBundle().localizedString(
      QStringLiteral("PrintSize"), QStringLiteral("350 x 350 is the standard case size."),
      StringTable::applicationTable);
  print.setListColumns(PrintLayouts::listLayouts());
  print.setCoverRatio(1.0);
  print.printDialog();
}

QString MyController::labelForSearchType(const QVariant& searchType) const {
  static const QHash<qint64, QString> labels = {
      {1, QStringLiteral("Search All")},         {3, QStringLiteral("Search Titles")},
      {4, QStringLiteral("Search Artists")},     {5, QStringLiteral("Search Links")},
      {6, QStringLiteral("Search Composers")},   {7, QStringLiteral("Search Comments")},
      {8, QStringLiteral("Search Summaries")},   {9, QStringLiteral("Search Track Names")},
      {10, QStringLiteral("Search Genres")},     {11, QStringLiteral("Search Tags")},
      {12, QStringLiteral("Search Track Others")},
  };
  return frameworkBundle().localizedString(labels.value(searchType.toLongLong(), QStringLiteral("Search")));
}

QString MyController::searchIdentifierForSearchType(int searchType) const {
  switch (searchType) {
    case 4: return CdKeys::artist;
    case 6: return CdKeys::composer;
    case 7: return CdKeys::comments;
    case 8: return CdKeys::summary;
    case 10: return CdKeys::genre;
    case 11: return CdKeys::tags;
    case 40: return CdKeys::releaseDate;
    case 42: return CdKeys::customTag1;
    case 43: return CdKeys::customTag2;
    case 100: return fieldsController()->clickedField();
    default: return CdKeys::title;
  }
}

void MyController::addValuesToAutofillForEntry(Entry& entry) {
  for (const QString* key : {&CdKeys::genre, &CdKeys::artist, &CdKeys::label, &CdKeys::conductor})
    comboBoxData().addValue(entry.value(*key), *key);
}

QStringList MyController::commonAttributesForNamingNewCollection() const {
  return {CdKeys::artist,     CdKeys::label,    CdKeys::composer, CdKeys::conductor, CdKeys::purchasedAt, CdKeys::borrowedBy,
          CdKeys::arrangedBy, CdKeys::producer, CdKeys::mixedBy,  CdKeys::awards,    CdKeys::genre};
}

QString MyController::totalDuration(const QVariantList& tracks) { return TrackData::playerTotalDuration(tracks); }

HtmlExport::Services MyController::htmlExportServices() {
  return {
      .windowSystem = windowSystem(),
      .strings = frameworkBundle(),
      .dataFolder = dataFolderPath(),
      .options = templateOptions(true),
      .renderPage = [this](QString& page, Entry& entry, const EntryTemplate::Options& options) {
        fillTemplate(page, entry, options, false);
      },
      .totals = [this](const std::vector<Entry*>& entries) { return collectionTotalsDictionaryFor(entries, false); },
  };
}

bool MyController::handleIncomingString(const QString& text) {
  if (MyControllerShared::handleIncomingString(text)) return true;
  // The web search lives on the CDDB host; a port belongs to it as the URL writes it.
  QString site;
  if (text.contains(QLatin1Char('/') + cddbServer() + QStringLiteral("/freedb_search_fmt.php?cat="))) site = QStringLiteral("Freedb");
  if (text.contains(classicalStoreDomain + QStringLiteral("/classical/products"))) site = QStringLiteral("Presto");
  if (site.isEmpty()) {
    if (text.contains(QLatin1String("://"))) return false;
    site = QStringLiteral("none");
  }
  windowSystem().bringToFront();
  windowSystem().showInternetSearchPanel(text, site);
  return true;
}

bool MyController::openFile(const QString& path) { return imports_->openFile(path); }

void MyController::importCollection() {
  const QStringList paths =
      windowSystem().runOpenPanel(localized(QStringLiteral("Import")), ImportDispatcher::openPanelTypes(), true);
  for (const QString& path : paths) openFile(path);
}

QString MyController::cardExtension() { return FileKind::cardExtension; }

bool MyController::openImportRun() { return imports_->openSession(); }

void MyController::closeImportRun() { imports_->closeSession(); }

const ImportSession* MyController::importSession() const { return imports_->session(); }

Entry* MyController::entryForiTunesTrack(const QVariantMap& track, bool* wasExisting) {
  return imports_->entryForTrack(track, wasExisting);
}

bool MyController::importAudioFile(const QString& path) { return imports_->importAudioFile(path); }

bool MyController::openDirectory(const QString& path) { return imports_->openDirectory(path); }

bool MyController::importItunesFromTracks(const QVariantList& tracks) { return imports_->importItunesFromTracks(tracks); }

const std::vector<Entry*>& MyController::importedEntries() const { return imports_->importedEntries(); }

QString MyController::libraryXmlPath() const {
  const QString chosen = preferencesStandard().stringForKey(SettingsKeys::iTunesLibraryXML);
  return chosen.isEmpty() ? LibraryXml::defaultPath() : chosen;
}

bool MyController::importLibraryPlaylist(const QString& xmlPath, const QString& playlistName, QString* error) {
  LibraryXml library;
  if (!library.read(xmlPath, true)) {
    if (error) *error = library.error();
    return false;
  }
  return importLibraryPlaylist(library, playlistName, error);
}

bool MyController::importLibraryPlaylist(const LibraryXml& library, const QString& playlistName, QString* error) {
  const QVariantList tracks = library.tracksOfPlaylistNamed(playlistName);
  if (tracks.isEmpty()) {
    if (error) *error = QStringLiteral("the playlist '%1' holds no track of the library").arg(playlistName);
    return false;
  }
  importItunesFromTracks(tracks);
  // The library file names no collection for its playlists.
  const QString name = QStringLiteral("None");
  Collection* collection = collections().createCollectionNamed(name, importedEntries());
  collections().selectCollection(collection);
  return saveManagedObjectContext();
}

void MyController::nameUnnamedTracks() {
  addPanel().trackData().setTracks(DiscScan::namedTracks(addPanel().trackData().tracks()));
}
