// The file-open dispatcher: which importer a file, folder or export reaches, and the wrap-up.
#include "MyController.h"

#include "CdKeys.h"
#include "DiscogsImporter.h"
#include "Entry.h"
#include "ImportRun.h"
#include "Link.h"
#include "NativeImporter.h"
#include "PropertyList.h"
#include "TabCommaImporter.h"
#include "TextFile.h"
#include "TextHelpers.h"
#include "WindowSystem.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

// The usual types in their usual order, then the other audio files an import takes.
QStringList openPanelTypes() {
  QStringList types = {"TEXT", "discary", MyController::cardExtension(), "folioextras", "folioextras_c", "folio_md_c",
                       "txt", "csv", "tab", "xml", "plist", "deliciouslibrary2", "m4p", "mp3", "m4a", "flac", "aif", "aiff"};
  for (const QString& extension : Link::musicFileExtensions())
    if (!types.contains(extension)) types << extension;
  return types;
}

bool within(const QString& text, const QString& marker, qsizetype first) {
  return text.size() > first && QStringView(text).left(first).contains(marker);
}

ImportRun newImportRun(MyController& c) {
  ImportRun run(c.managedObjectContext(), c.windowSystem());
  run.progressTitle = ImportRun::addingEntriesTitle(c.frameworkBundle());
  return run;
}

}  // namespace

void MyController::importCollection() {
  const QStringList paths = windowSystem().runOpenPanel(localized(QStringLiteral("Import")), openPanelTypes(), true);
  for (const QString& path : paths) openFile(path);
}

bool MyController::openFile(const QString& given) {
  // One spelling per file from here on, so that links open and duplicates are found.
  const QString path = TextHelpers::absoluteCleanPath(given);
  const QFileInfo info(path);
  const QString extension = info.suffix();
  const bool folder = info.isDir();
  auto is = [&extension](const QString& e) { return extension.compare(e, Qt::CaseInsensitive) == 0; };

  if (is(cardExtension())) return openCardAtPath(path);
  if (is(QStringLiteral("folio_md_c"))) {
    QString error;
    const auto list = PropertyList::readFile(path, &error, TextFile::maximumBytes);
    if (!list || list->typeId() != QMetaType::QVariantMap) {
      windowSystem().runAlert(localized(QStringLiteral("Confirmation")),
                              QStringLiteral("%1 is not an entry request: %2").arg(info.fileName(), error), {"OK"});
      return false;
    }
    return findEntry(list->toMap());
  }
  if (is(QStringLiteral("discary"))) {
    ImportRun run = newImportRun(*this);
    QString error;
    const bool read = NativeImporter::import(run, path, &error);
    return finishImport(run, info.completeBaseName(), read, error);
  }
  if (path.contains(QStringLiteral("folioextras"), Qt::CaseInsensitive)) return installFolioExtras(path);
  if (is(QStringLiteral("deliciouslibrary2"))) return notSupported(QStringLiteral("a library database of another cataloguer"));
  if (Link::isMusicFilePath(path)) return importAudioFile(path);
  const bool xmlOrPlist = is(QStringLiteral("xml")) || is(QStringLiteral("plist"));
  if (!xmlOrPlist && folder && extension != QLatin1String("shelfmark") && !extension.startsWith(QLatin1String("folioextras")))
    return openDirectory(path);
  if (!xmlOrPlist) {
    const auto text = TextFile::stringFromFile(path);
    if (!text) {
      qWarning("Trying to import a non text file: %s", qPrintable(path));
      windowSystem().runAlert(localized(QStringLiteral("Confirmation")),
                              QStringLiteral("%1 is not a text file and cannot be imported.").arg(info.fileName()), {"OK"});
      return false;
    }
    ImportRun run = newImportRun(*this);
    QString error;
    const bool read = TabCommaImporter::import(run, *text, &error);
    return finishImport(run, info.completeBaseName(), read, error);
  }
  return sniffXmlFile(path);
}

bool MyController::sniffXmlFile(const QString& path) {
  const QFileInfo info(path);
  const auto read = TextFile::stringFromFile(path);
  if (!read) {
    qWarning("Error: %s %s\nTrying to read: %s ", "The file could not be read as text.",
             "It is missing, unreadable, too large or not text.", qPrintable(path));
    return false;
  }
  const QString& text = *read;
  QString collectionName = info.completeBaseName();
  ImportRun run = newImportRun(*this);

  if (within(text, QStringLiteral("<key>Music Folder</key>"), 500)) {
    QString error;
    const auto list = PropertyList::readFile(path, &error, TextFile::maximumBytes);
    QVariantList tracks;
    if (list) tracks = list->toMap().value(QStringLiteral("Tracks")).toMap().values();
    if (tracks.isEmpty()) return finishImport(run, collectionName, false, error);
    // The library import shows its own sheet; its entries are gathered like any other import's.
    importItunesFromTracks(tracks);
    return collectAndSave(collectionName, importedEntries_);
  }
  QString error;
  bool recognised = false;
  if (text.contains(QStringLiteral("<plist version=")) && text.contains(QStringLiteral(">Lending Status")) &&
      text.contains(QStringLiteral(">Bookmark Type")))
    return notSupported(QStringLiteral("a scanner application's collection"));
  if (text.contains(QStringLiteral("<releases num=")) && text.contains(QStringLiteral("<release id=")))
    recognised = DiscogsImporter::import(run, text, &error);
  else if (within(text, QStringLiteral("uuid="), 300) && text.contains(QStringLiteral("<library")))
    return notSupported(QStringLiteral("a library export of another cataloguer"));
  else if (text.contains(QStringLiteral("<CDInfo count=\"")))
    return notSupported(QStringLiteral("a CD list of another cataloguer"));
  else if (within(text, QStringLiteral("<musicmetadata>"), 2000) || within(text, QStringLiteral("<collectorz>"), 2000))
    return notSupported(QStringLiteral("a collection export of another cataloguer"));
  else if (within(text, QStringLiteral("CD_APPLE_MAGIC_NUMBER_TAG"), 1000))
    return notSupported(QStringLiteral("a CD database of another cataloguer"));
  // Data dumps and single releases carry no count on <releases>; they are release lists still.
  else if (text.contains(QStringLiteral("<release id=")))
    recognised = DiscogsImporter::import(run, text, &error);
  return finishImport(run, collectionName, recognised, error);
}

bool MyController::finishImport(ImportRun& run, const QString& collectionName, bool recognised, const QString& failure) {
  WindowSystem& ws = windowSystem();
  if (!recognised) {
    if (!failure.isEmpty()) qWarning("%s", qPrintable(failure));
    ws.runAlert(localized(QStringLiteral("Confirmation")),
                failure.isEmpty() ? QStringLiteral("File format not recognized.")
                                  : QStringLiteral("File format not recognized. (%1)").arg(failure),
                {QStringLiteral("OK")});
    return false;
  }
  if (!collectAndSave(collectionName, run.entries())) return false;
  if (!run.warnings().isEmpty()) {
    for (const QString& w : run.warnings()) qWarning("%s", qPrintable(w));
    QStringList shown = run.warnings().mid(0, 10);
    if (run.warnings().size() > 10) shown << QStringLiteral("... and %1 more.").arg(run.warnings().size() - 10);
    ws.runAlert(QStringLiteral("Some of %1 could not be imported.").arg(collectionName), shown.join(u'\n'),
                {QStringLiteral("OK")});
  }
  if (run.cancelled())
    ws.displayNotice(QStringLiteral("Import stopped; %1 entries were kept.").arg(run.entries().size()), 3);
  return true;
}

bool MyController::collectAndSave(const QString& collectionName, const std::vector<Entry*>& entries) {
  // A file read in full that held nothing new is a success without a collection.
  if (!entries.empty()) collections().selectCollection(collections().createCollectionNamed(collectionName, entries));
  return saveManagedObjectContext();
}

bool MyController::notSupported(const QString& kind) {
  windowSystem().runAlert(localized(QStringLiteral("Confirmation")),
                          QStringLiteral("This file is %1, which this version cannot import. Export it from there "
                                         "as tab- or comma-separated text with a header row, and import that.")
                              .arg(kind),
                          {QStringLiteral("OK")});
  return false;
}

bool MyController::openCardAtPath(const QString& path) {
  ImportRun run = newImportRun(*this);
  QString error;
  if (!NativeImporter::import(run, path, &error) || run.entries().empty()) {
    windowSystem().runAlert(localized(QStringLiteral("Confirmation")),
                            QStringLiteral("The card could not be read: %1").arg(error.isEmpty() ? "it holds no entry" : error),
                            {QStringLiteral("OK")});
    return false;
  }
  if (!saveManagedObjectContext()) return false;
  collections().selectCollection(nullptr);
  search(QString(), 1);
  selectEntry(run.entries().front());
  return true;
}

bool MyController::findEntry(const QVariantMap& description) {
  Entry* found = nullptr;
  if (description.contains(CdKeys::uid)) found = managedObjectContext().entryWithUID(description.value(CdKeys::uid).toLongLong());
  const QString title = description.value(CdKeys::title).toString();
  const QString artist = description.value(CdKeys::artist).toString();
  if (!found && !title.isEmpty()) {
    for (Entry* e : managedObjectContext().entries()) {
      if (e->stringValue(CdKeys::title).compare(title, Qt::CaseInsensitive) == 0 &&
          (artist.isEmpty() || e->stringValue(CdKeys::artist).compare(artist, Qt::CaseInsensitive) == 0)) {
        found = e;
        break;
      }
    }
  }
  if (!found) {
    windowSystem().runAlert(localized(QStringLiteral("Confirmation")), QStringLiteral("No entry matches this request."),
                            {QStringLiteral("OK")});
    return false;
  }
  collections().selectCollection(nullptr);
  search(QString(), 1);
  selectEntry(found);
  return true;
}

bool MyController::installFolioExtras(const QString& path) {
  // An extras package on Linux is a folder of templates: they join the user's own.
  if (!QFileInfo(path).isDir()) {
    windowSystem().runAlert(localized(QStringLiteral("Confirmation")),
                            QStringLiteral("Extras packages are installed from a folder of templates; %1 is not one.")
                                .arg(QFileInfo(path).fileName()),
                            {QStringLiteral("OK")});
    return false;
  }
  const QString target = dataFolderPath() + QStringLiteral("/Templates/");
  QDir().mkpath(target);
  QStringList installed;
  QDirIterator it(path, {"*.html", "*.htm", "*.css", "*.txt"}, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QFileInfo file(it.next());
    QFile::remove(target + file.fileName());
    if (QFile::copy(file.filePath(), target + file.fileName())) installed << file.fileName();
  }
  windowSystem().runAlert(installed.isEmpty() ? QStringLiteral("The package holds no template.")
                                              : QStringLiteral("Installed %1 templates.").arg(installed.size()),
                          installed.join(u'\n'), {QStringLiteral("OK")});
  return !installed.isEmpty();
}
