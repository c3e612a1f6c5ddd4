#include "ImportDispatcher.h"

#include "AudioFileImport.h"
#include "CdKeys.h"
#include "CollectionsController.h"
#include "DiscogsCsvImporter.h"
#include "DiscogsImporter.h"
#include "EntriesController.h"
#include "Entry.h"
#include "FileKind.h"
#include "ImportRun.h"
#include "LibraryImport.h"
#include "LibraryTrackMapping.h"
#include "Link.h"
#include "MyAudioMetadata.h"
#include "MyFieldsControllerShared.h"
#include "NativeImporter.h"
#include "Platform.h"
#include "PropertyList.h"
#include "Store.h"
#include "StringTable.h"
#include "TabCommaImporter.h"
#include "TextFile.h"
#include "PathText.h"
#include "WindowSystem.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

QStringList ImportDispatcher::openPanelTypes() {
  QStringList types = {"TEXT", "discary", FileKind::cardExtension, "folioextras", "folioextras_c", "folio_md_c",
                       "txt", "csv", "tab", "xml", "plist", "deliciouslibrary2", "m4p", "mp3", "m4a", "flac", "aif", "aiff"};
  for (const QString& extension : Link::musicFileExtensions())
    if (!types.contains(extension)) types << extension;
  return types;
}

QString ImportDispatcher::localized(const QString& key) const { return services_.strings.localizedString(key); }

ImportRun ImportDispatcher::newImportRun() const {
  ImportRun run(services_.store, services_.windowSystem);
  run.progressTitle = ImportRun::addingEntriesTitle(services_.strings);
  return run;
}

bool ImportDispatcher::openFile(const QString& given) {
  // One spelling per file from here on, so that links open and duplicates are found.
  const QString path = PathText::absoluteCleanPath(given);
  const QFileInfo info(path);
  switch (FileKind::byName(path, info.isDir())) {
    case FileKind::Card:
      return openCardAtPath(path);
    case FileKind::EntryRequest: {
      QString error;
      const auto list = PropertyList::readFile(path, &error, TextFile::maximumBytes);
      if (!list || list->typeId() != QMetaType::QVariantMap) {
        services_.windowSystem.runAlert(localized(QStringLiteral("Confirmation")),
                                        QStringLiteral("%1 is not an entry request: %2").arg(info.fileName(), error), {"OK"});
        return false;
      }
      return findEntry(list->toMap());
    }
    case FileKind::NativeExport: {
      ImportRun run = newImportRun();
      QString error;
      const bool read = NativeImporter::import(run, path, &error);
      return finishImport(run, info.completeBaseName(), read, error);
    }
    case FileKind::ExtrasPackage:
      return installFolioExtras(path);
    case FileKind::ForeignDatabase:
      return notSupported(QStringLiteral("a library database of another cataloguer"));
    case FileKind::AudioFile:
      return importAudioFile(path);
    case FileKind::Folder:
      return openDirectory(path);
    case FileKind::DelimitedText: {
      const auto text = TextFile::stringFromFile(path);
      if (!text) {
        qWarning("Trying to import a non text file: %s", qPrintable(path));
        services_.windowSystem.runAlert(localized(QStringLiteral("Confirmation")),
                                        QStringLiteral("%1 is not a text file and cannot be imported.").arg(info.fileName()),
                                        {"OK"});
        return false;
      }
      if (DiscogsCsvImporter::separatorOf(*text)) return importSiteCollection(info.completeBaseName(), *text);
      ImportRun run = newImportRun();
      QString error;
      const bool read = TabCommaImporter::import(run, *text, &error);
      return finishImport(run, info.completeBaseName(), read, error);
    }
    default:
      return openXmlFile(path);
  }
}

bool ImportDispatcher::openXmlFile(const QString& path) {
  const QFileInfo info(path);
  const auto read = TextFile::stringFromFile(path);
  if (!read) {
    qWarning("Error: %s %s\nTrying to read: %s ", "The file could not be read as text.",
             "It is missing, unreadable, too large or not text.", qPrintable(path));
    return false;
  }
  const QString& text = *read;
  const QString collectionName = info.completeBaseName();
  ImportRun run = newImportRun();
  QString error;
  bool recognised = false;
  switch (FileKind::ofXmlText(text)) {
    case FileKind::MusicLibrary: {
      const auto list = PropertyList::readFile(path, &error, TextFile::maximumBytes);
      QVariantList tracks;
      if (list) tracks = list->toMap().value(QStringLiteral("Tracks")).toMap().values();
      if (tracks.isEmpty()) return finishImport(run, collectionName, false, error);
      // The library import shows its own sheet; its entries are gathered like any other import's.
      importItunesFromTracks(tracks);
      return collectAndSave(collectionName, importedEntries_);
    }
    case FileKind::ScannerCollection:
      return notSupported(QStringLiteral("a scanner application's collection"));
    case FileKind::ReleaseList:
      recognised = DiscogsImporter::import(run, text, &error);
      break;
    case FileKind::ForeignLibraryExport:
      return notSupported(QStringLiteral("a library export of another cataloguer"));
    case FileKind::ForeignCdList:
      return notSupported(QStringLiteral("a CD list of another cataloguer"));
    case FileKind::ForeignCollectionExport:
      return notSupported(QStringLiteral("a collection export of another cataloguer"));
    case FileKind::ForeignCdDatabase:
      return notSupported(QStringLiteral("a CD database of another cataloguer"));
    default:
      break;
  }
  return finishImport(run, collectionName, recognised, error);
}

bool ImportDispatcher::finishImport(ImportRun& run, const QString& collectionName, bool recognised, const QString& failure) {
  WindowSystem& ws = services_.windowSystem;
  if (!recognised) {
    if (!failure.isEmpty()) qWarning("%s", qPrintable(failure));
    ws.runAlert(localized(QStringLiteral("Confirmation")),
                failure.isEmpty() ? QStringLiteral("File format not recognized.")
                                  : QStringLiteral("File format not recognized. (%1)").arg(failure),
                {QStringLiteral("OK")});
    return false;
  }
  if (!collectAndSave(collectionName, run.entries())) return false;
  reportProblems(run, collectionName);
  return true;
}

void ImportDispatcher::reportProblems(const ImportRun& run, const QString& collectionName) {
  WindowSystem& ws = services_.windowSystem;
  if (!run.warnings().isEmpty()) {
    for (const QString& w : run.warnings()) qWarning("%s", qPrintable(w));
    QStringList shown = run.warnings().mid(0, 10);
    if (run.warnings().size() > 10) shown << QStringLiteral("... and %1 more.").arg(run.warnings().size() - 10);
    ws.runAlert(QStringLiteral("Some of %1 could not be imported.").arg(collectionName), shown.join(u'\n'),
                {QStringLiteral("OK")});
  }
  if (run.cancelled())
    ws.displayNotice(QStringLiteral("Import stopped; %1 entries were kept.").arg(run.entries().size()), 3);
}

bool ImportDispatcher::importSiteCollection(const QString& fileName, const QString& text) {
  ImportRun run = newImportRun();
  DiscogsCsvImporter::Result result;
  QString error;
  const auto customField = [this](const QString& title) -> std::optional<QString> {
    if (!services_.fields) return std::nullopt;
    return services_.fields->customFieldForTitle(title, services_.store.entries());
  };
  if (!DiscogsCsvImporter::import(run, text, customField, &result, &error))
    return finishImport(run, fileName, false, error);
  // The folders of the site become collections; a second import fills the same ones.
  CollectionsController& collections = services_.collections;
  Collection* first = nullptr;
  for (const auto& [name, entries] : result.folders) {
    Collection* collection = collections.collectionWithName(name, true);
    if (collection) {
      for (Entry* entry : entries) services_.store.addEntryToCollection(entry, collection);
    } else {
      collection = collections.createCollectionNamed(name, entries);
    }
    if (!first) first = collection;
  }
  if (first) collections.selectCollection(first);
  if (!services_.save()) return false;
  reportProblems(run, fileName);
  if (result.alreadyThere > 0)
    services_.windowSystem.displayNotice(
        QStringLiteral("%1 releases were in the catalogue already and were not added again.").arg(result.alreadyThere), 3);
  return true;
}

bool ImportDispatcher::collectAndSave(const QString& collectionName, const std::vector<Entry*>& entries) {
  // A file read in full that held nothing new is a success without a collection.
  CollectionsController& collections = services_.collections;
  if (!entries.empty()) collections.selectCollection(collections.createCollectionNamed(collectionName, entries));
  return services_.save();
}

bool ImportDispatcher::notSupported(const QString& kind) {
  services_.windowSystem.runAlert(localized(QStringLiteral("Confirmation")),
                                  QStringLiteral("This file is %1, which this version cannot import. Export it from there "
                                                 "as tab- or comma-separated text with a header row, and import that.")
                                      .arg(kind),
                                  {QStringLiteral("OK")});
  return false;
}

void ImportDispatcher::showAmongAll(Entry* entry) {
  services_.collections.selectCollection(nullptr);
  services_.entries.setFilterPredicate({});
  services_.entries.rearrangeObjects();
  services_.select(entry);
}

bool ImportDispatcher::openCardAtPath(const QString& path) {
  ImportRun run = newImportRun();
  QString error;
  if (!NativeImporter::import(run, path, &error) || run.entries().empty()) {
    services_.windowSystem.runAlert(
        localized(QStringLiteral("Confirmation")),
        QStringLiteral("The card could not be read: %1").arg(error.isEmpty() ? "it holds no entry" : error),
        {QStringLiteral("OK")});
    return false;
  }
  if (!services_.save()) return false;
  showAmongAll(run.entries().front());
  return true;
}

bool ImportDispatcher::findEntry(const QVariantMap& description) {
  Entry* found = nullptr;
  if (description.contains(CdKeys::uid)) found = services_.store.entryWithUID(description.value(CdKeys::uid).toLongLong());
  const QString title = description.value(CdKeys::title).toString();
  const QString artist = description.value(CdKeys::artist).toString();
  if (!found && !title.isEmpty()) {
    for (Entry* e : services_.store.entries()) {
      if (e->stringValue(CdKeys::title).compare(title, Qt::CaseInsensitive) == 0 &&
          (artist.isEmpty() || e->stringValue(CdKeys::artist).compare(artist, Qt::CaseInsensitive) == 0)) {
        found = e;
        break;
      }
    }
  }
  if (!found) {
    services_.windowSystem.runAlert(localized(QStringLiteral("Confirmation")),
                                    QStringLiteral("No entry matches this request."), {QStringLiteral("OK")});
    return false;
  }
  showAmongAll(found);
  return true;
}

bool ImportDispatcher::installFolioExtras(const QString& path) {
  WindowSystem& ws = services_.windowSystem;
  // An extras package on Linux is a folder of templates: they join the user's own.
  if (!QFileInfo(path).isDir()) {
    ws.runAlert(localized(QStringLiteral("Confirmation")),
                QStringLiteral("Extras packages are installed from a folder of templates; %1 is not one.")
                    .arg(QFileInfo(path).fileName()),
                {QStringLiteral("OK")});
    return false;
  }
  const QString target = services_.dataFolder() + QStringLiteral("/Templates/");
  QDir().mkpath(target);
  QStringList installed;
  QDirIterator it(path, {"*.html", "*.htm", "*.css", "*.txt"}, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QFileInfo file(it.next());
    QFile::remove(target + file.fileName());
    if (QFile::copy(file.filePath(), target + file.fileName())) installed << file.fileName();
  }
  ws.runAlert(installed.isEmpty() ? QStringLiteral("The package holds no template.")
                                  : QStringLiteral("Installed %1 templates.").arg(installed.size()),
              installed.join(u'\n'), {QStringLiteral("OK")});
  return !installed.isEmpty();
}

bool ImportDispatcher::openSession() {
  if (session_) return false;
  session_.emplace();
  return true;
}

Entry* ImportDispatcher::entryForTrack(const QVariantMap& track, bool* wasExisting) {
  return LibraryTrackMapping::entryForTrack(services_, session_ ? &*session_ : nullptr, track, wasExisting);
}

bool ImportDispatcher::importAudioFile(const QString& given) {
  const QString path = PathText::absoluteCleanPath(given);
  if (AudioFileImport::isSkippedDuplicate(services_, path)) return false;
  AudioFileImport::importTags(services_, session_ ? &*session_ : nullptr, path,
                              MyAudioMetadata::getMetadataForPath(path, services_.platform.tagReader()));
  return services_.save();
}

bool ImportDispatcher::openDirectory(const QString& path) {
  const bool opened = openSession();
  const int imported = AudioFileImport::importFiles(services_, &*session_,
                                                    AudioFileImport::audioFilesIn(PathText::absoluteCleanPath(path)));
  if (opened) closeSession();
  return imported > 0;
}

bool ImportDispatcher::importItunesFromTracks(const QVariantList& tracks) {
  const bool opened = openSession();
  importedEntries_ = LibraryImport::importTracks(services_, &*session_, tracks);
  if (opened) closeSession();
  return services_.save() && !importedEntries_.empty();
}
