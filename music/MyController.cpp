#include "MyController.h"

#include "AudioFileImport.h"
#include "CdKeys.h"
#include "CollectionTotals.h"
#include "Disc4ToDisc5.h"
#include "Entry.h"
#include "Freedb.h"
#include "LibraryImport.h"
#include "LibraryTrackMapping.h"
#include "LibraryXml.h"
#include "MyAudioMetadata.h"
#include "MyFieldsController.h"
#include "NewLinkProcessor.h"
#include "Platform.h"
#include "PrintController.h"
#include "PrintLayouts.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "TextHelpers.h"
#include "TrackMarkup.h"
#include "WindowSystem.h"

#include <QDateTime>
#include <cstdio>

MyController::MyController(Settings& settings, WindowSystem& windowSystem, Platform& platform)
    : MyControllerShared(settings, windowSystem, platform), totals_(frameworkBundle()) {
  setFieldsController(std::make_unique<MyFieldsController>(settings, frameworkBundle()));
  managedObjectContext().setMigrationPolicy(std::make_shared<Disc4ToDisc5>());
}

MyController::~MyController() { waitForLibraryRefresh(); }

void MyController::waitForLibraryRefresh() {
  if (libraryRefresh_.joinable()) libraryRefresh_.join();
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
  };
}

void MyController::applicationWillFinishLaunching() {
  preferencesStandard().registerDefaults(registeredDefaults());
  preferencesStandard().registerDefaults(ownDefaults());
  MyControllerShared::applicationWillFinishLaunching();
}

void MyController::applicationDidFinishLaunching() {
  platform().observeMounts([this](const QString& volumePath) { NSWorkspaceDidMountNotification(volumePath); });
  freedb();
  pluginManager().setOrderFromPrefs();

  Settings& settings = preferencesStandard();
  if (settings.boolForKey(SettingsKeys::refreshItunesAuto)) {
    const QDateTime last = settings.objectForKey(SettingsKeys::lastItunes).toDateTime();
    const QDateTime now = QDateTime::currentDateTimeUtc();
    // Exactly 30 days old still counts as recent.
    const bool recent = last.isValid() && now.secsTo(last) >= -libraryRefreshInterval;
    if (!recent && !libraryRefresh_.joinable()) {
      TrackData& trackData = addPanel().trackData();
      libraryRefresh_ = std::thread([&trackData] { trackData.loadItunes(); });
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

void MyController::replaceKeysInTemplate(QString& text, Entry& entry, bool html, bool webView) {
  MyControllerShared::replaceKeysInTemplate(text, entry, html, webView);
  const TrackMarkup::Result result = TrackMarkup::apply(text, entry, {html, webView, &addPanel().trackData()});
  if (!result.reason.isEmpty())
    std::fprintf(stderr, "Track rows of entry %lld left unfilled: %s\n", entry.uid(), qPrintable(result.reason));
}

QVariantMap MyController::collectionTotalsDictionaryFor(const std::vector<Entry*>& entries, bool footer) {
  return totals_.totals(entries, footer, bottomFields(), qsizetype(entriesController().arrangedObjects().size()));
}

void MyController::refreshCollectionStatistics() {
  const auto& selected = entriesController().selectedObjects();
  multipleSelection = selected.size() >= 2;
  const QVariantMap totals =
      collectionTotalsDictionaryFor(multipleSelection ? selected : entriesController().arrangedObjects(), true);
  windowFooterString = totals_.footer(totals, bottomFields(), multipleSelection);
  setNumberOfSelectedInFooter();
}

QString MyController::totalDuration(const QVariantList& tracks) { return CollectionTotals::totalDuration(tracks); }

void MyController::processNewLink(Link& link) { NewLinkProcessor(*this).process(link); }

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

AlbumTable MyController::importRun() {
  return {iTunesAlbumsAdded_.get(), iTunesRatings_.get(), importedImages_.get(), &iTunesEntireLibrary_,
          iTunesAlbumsAdded_ ? &customFieldKeys_ : nullptr};
}

bool MyController::openImportRun() {
  if (iTunesAlbumsAdded_) return false;
  iTunesAlbumsAdded_ = std::make_unique<QVariantMap>();
  iTunesRatings_ = std::make_unique<QVariantMap>();
  importedImages_ = std::make_unique<QVariantList>();
  customFieldKeys_.clear();
  iTunesEntireLibrary_ = platform().musicLibraryTracks();
  return true;
}

void MyController::closeImportRun() {
  iTunesEntireLibrary_.clear();
  iTunesAlbumsAdded_.reset();
  iTunesRatings_.reset();
  importedImages_.reset();
}

Entry* MyController::entryForiTunesTrack(const QVariantMap& track, bool* wasExisting) {
  return LibraryTrackMapping::entryForTrack(*this, importRun(), track, wasExisting);
}

bool MyController::importAudioFile(const QString& given) {
  const QString path = TextHelpers::absoluteCleanPath(given);
  if (AudioFileImport::isSkippedDuplicate(*this, path)) return false;
  AudioFileImport::importTags(*this, importRun(), path, MyAudioMetadata::getMetadataForPath(path, platform().tagReader()));
  return saveManagedObjectContext();
}

bool MyController::openDirectory(const QString& path) {
  const bool opened = openImportRun();
  const int imported =
      AudioFileImport::importFiles(*this, importRun(), AudioFileImport::audioFilesIn(TextHelpers::absoluteCleanPath(path)));
  if (opened) closeImportRun();
  return imported > 0;
}

bool MyController::importItunesFromTracks(const QVariantList& tracks) {
  const bool opened = openImportRun();
  importedEntries_ = LibraryImport::importTracks(*this, importRun(), tracks);
  if (opened) closeImportRun();
  return saveManagedObjectContext() && !importedEntries_.empty();
}

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
  Collection* collection = collections().createCollectionNamed(name, importedEntries_);
  collections().selectCollection(collection);
  return saveManagedObjectContext();
}
