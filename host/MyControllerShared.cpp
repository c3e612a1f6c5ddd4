#include "MyControllerShared.h"

#include "AttributeInput.h"
#include "CdKeys.h"
#include "Entry.h"
#include "EntryPageFiller.h"
#include "HostKeys.h"
#include "MyFieldsControllerShared.h"
#include "NewLinkHandler.h"
#include "Platform.h"
#include "Picture.h"
#include "PrintController.h"
#include "Settings.h"
#include "StringTable.h"
#include "TemplateFile.h"
#include "NaturalDate.h"
#include "TotalsProvider.h"
#include "ValueKind.h"
#include "WindowSystem.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QStandardPaths>
#include <QUrl>
#include <cstdio>

MyControllerShared::MyControllerShared(Settings& settings, WindowSystem& windowSystem, Platform& platform)
    : settings_(settings),
      windowSystem_(windowSystem),
      platform_(platform),
      collections_(store_, strings_),
      entriesController_(collections_),
      pluginManager_(settings),
      addPanel_(platform) {}

MyControllerShared::~MyControllerShared() = default;

void MyControllerShared::applicationWillFinishLaunching() {}

void MyControllerShared::applicationDidFinishLaunching() {}

void MyControllerShared::setFieldsController(std::unique_ptr<MyFieldsControllerShared> fields) {
  fieldsController_ = std::move(fields);
  autofilledFields_.reset();
}

QString MyControllerShared::defaultCataloguePath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/discary/Discary.sqlite");
}

Store::OpenResult MyControllerShared::openCatalogue(const QString& path, Store::Loading loading) {
  Store::OpenResult result = store_.open(path, loading);
  if (!result.ok()) return result;
  comboBoxData_.setSeed([this](AutofillLists&) {
    for (Entry* e : store_.entries()) addEntryToAutofill(*e);
  });
  if (store_.entriesLoaded()) entriesController_.rearrangeObjects();
  return result;
}

QString MyControllerShared::dataFolderPath() const {
  return store_.path() == QLatin1String(":memory:") ? QString() : QFileInfo(store_.path()).absolutePath();
}

QList<bool> MyControllerShared::bottomFields() const {
  QList<bool> switches;
  for (const QVariant& v : settings_.objectForKey(QStringLiteral("Bottom Fields")).toList()) switches << Settings::leniently(v);
  while (switches.size() < 7) switches << false;
  return switches;
}

int MyControllerShared::osVersion(const Platform& platform) { return platform.osVersion(); }

bool MyControllerShared::importDuplicates() const { return settings_.boolForKey(QStringLiteral("Import Duplicates")); }

bool MyControllerShared::saveManagedObjectContext() {
  QString error;
  if (store_.save(&error)) return true;
  std::fprintf(stderr, "Error saving the catalogue: %s\n", qPrintable(error));
  windowSystem_.runAlert(localized(QStringLiteral("The catalogue could not be saved.")), error, {localized(QStringLiteral("OK"))});
  return false;
}

bool MyControllerShared::setCoverImage(Entry& entry, const QVariant& picture) {
  const QString path = store_.coverPathOf(entry.uid());
  if (path.isEmpty()) return false;
  QByteArray bytes;
  if (picture.userType() == qMetaTypeId<Picture>() && picture.value<Picture>().format == "jpeg") {
    bytes = picture.value<Picture>().data;
  } else {
    const QImage image = picture.userType() == qMetaTypeId<Picture>() ? picture.value<Picture>().toImage()
                                                                        : picture.value<QImage>();
    if (image.isNull()) return false;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "JPEG", 90)) return false;
  }
  // Every track of an album brings the same picture again: write it once.
  const size_t hash = qHash(bytes);
  if (coverHashes_.value(entry.uid()) == hash && QFileInfo::exists(path)) return true;
  // A plain write: a cover is no catalogue data, and syncing each one would slow imports down.
  QFile file(path);
  if (!QDir().mkpath(QFileInfo(path).absolutePath()) || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    std::fprintf(stderr, "Could not write the cover %s\n", qPrintable(path));
    return false;
  }
  coverHashes_.insert(entry.uid(), hash);
  return true;
}

void MyControllerShared::addEntry(Entry* entry, Collection* collection) { store_.addEntryToCollection(entry, collection); }

void MyControllerShared::refreshInformation() { windowSystem_.entriesDidChange(); }

bool MyControllerShared::handleIncomingString(const QString& text) {
  const QString trimmed = text.trimmed();
  const QUrl url(trimmed);
  if (url.isLocalFile()) return openFile(url.toLocalFile());
  if (trimmed.startsWith(QLatin1Char('/')) && QFileInfo::exists(trimmed)) return openFile(trimmed);
  if (url.scheme() != QLatin1String("discary")) return false;
  const QString what = url.host(), rest = url.path().mid(1);
  if (what == QLatin1String("entry")) {
    bool ok = false;
    Entry* entry = store_.entryWithUID(rest.toLongLong(&ok));
    if (!ok || !entry) return false;
    selectEntry(entry);
    return true;
  }
  if (what == QLatin1String("search")) {
    search(rest, 1);
    refreshInformation();
    return true;
  }
  return false;
}

void MyControllerShared::selectEntry(Entry* entry) {
  if (!entry) return;
  const auto& arranged = entriesController_.arrangedObjects();
  if (std::find(arranged.begin(), arranged.end(), entry) == arranged.end()) {
    collections_.selectCollection(nullptr);
    entriesController_.setFilterPredicate({});
    entriesController_.rearrangeObjects();
  }
  entriesController_.setSelectedObjects({entry});
  refreshInformation();
}

QString MyControllerShared::labelForSearchType(const QVariant&) const { return localized(QStringLiteral("Search")); }

QString MyControllerShared::searchIdentifierForSearchType(int) const { return CdKeys::title; }

void MyControllerShared::addValuesToAutofillForEntry(Entry&) {}

void MyControllerShared::addEntryToAutofill(Entry& entry) {
  if (!autofilledFields_) {
    autofilledFields_.emplace();
    for (const auto& attribute : EntitySchema::cd().attributes())
      if (fieldsController_ && fieldsController_->offersUsedValues(attribute.key)) *autofilledFields_ << attribute.key;
  }
  for (const QString& field : *autofilledFields_) comboBoxData_.addValue(entry.value(field), field);
  addValuesToAutofillForEntry(entry);
}

Entry* MyControllerShared::addEntryFromAddPanelCheckForDuplicates(bool checkForDuplicates) {
  const QVariantMap values = addPanel_.values();
  const QString title = values.value(CdKeys::title).toString();
  const QString artist = values.value(CdKeys::artist).toString();
  if (checkForDuplicates && !title.isEmpty()) {
    for (Entry* e : store_.entriesTitled(title, Qt::CaseInsensitive)) {
      if (e->stringValue(CdKeys::artist).compare(artist, Qt::CaseInsensitive) != 0) continue;
      const int answer = windowSystem_.runAlert(
          localized(QStringLiteral("Duplicate Entry")),
          localized(QStringLiteral("An entry titled \"%1\" already exists. Add it again?")).arg(title),
          {localized(QStringLiteral("Don't Add")), localized(QStringLiteral("Add"))});
      if (answer != 1) return nullptr;
      break;
    }
  }
  Entry* entry = store_.insertEntry();
  const auto& schema = entry->schema();
  for (auto it = values.begin(); it != values.end(); ++it) {
    const int index = schema.indexOf(it.key());
    if (index < 0) continue;
    if (auto v = AttributeInput::read(schema.attributes()[index].kind, it.value())) entry->setPrimitiveValue(it.key(), *v);
  }
  const QVariantList tracks = addPanel_.trackData().tracks();
  for (int i = 0; i < tracks.size(); ++i) {
    const QVariantMap t = tracks[i].toMap();
    auto track = Store::newTrack();
    for (const auto& attribute : track->schema().attributes())
      if (t.contains(attribute.key)) {
        if (auto v = AttributeInput::read(attribute.kind, t.value(attribute.key))) track->setPrimitiveValue(attribute.key, *v);
      }
    if (!t.contains(QStringLiteral("position"))) track->setPrimitiveValue(QStringLiteral("position"), qint64(i));
    entry->addTrack(std::move(track));
  }
  if (!tracks.isEmpty()) {
    entry->setPrimitiveValue(QStringLiteral("numberOfTracks"), QString::number(tracks.size()));
    const QString total = addPanel_.trackData().calculateTotalDuration();
    if (!values.contains(CdKeys::duration) && !total.isEmpty())
      entry->setPrimitiveValue(CdKeys::duration, total);
  }
  const QDateTime now = QDateTime::currentDateTimeUtc();
  if (!values.contains(CdKeys::dateAdded)) entry->setPrimitiveValue(CdKeys::dateAdded, now);
  entry->setPrimitiveValue(CdKeys::dateEdited, now);
  if (Collection* c = collections_.selectedCollection(); c && c->isUser()) addEntry(entry, c);
  addEntryToAutofill(*entry);
  if (values.contains(MKCoverImage)) setCoverImage(*entry, values.value(MKCoverImage));
  // A store opened on demand has no list to show the entry in.
  if (store_.entriesLoaded()) {
    entriesController_.rearrangeObjects();
    selectEntry(entry);
  }
  return entry;
}

void MyControllerShared::search(const QString& text, int searchType) {
  const QString needle = text.trimmed();
  if (needle.isEmpty()) {
    entriesController_.setFilterPredicate({});
    entriesController_.rearrangeObjects();
    return;
  }
  EntriesController::Predicate predicate;
  auto contains = [needle](const QVariant& v) {
    if (v.metaType().id() == QMetaType::QDateTime) return NaturalDate::isoDateString(v.toDateTime()).contains(needle);
    return v.toString().contains(needle, Qt::CaseInsensitive);
  };
  if (searchType == 1) {
    predicate = [contains](const Entry& e) {
      bool found = false;
      e.forEachValue([&](int index, const QVariant& v) {
        if (!found && ValueKind::of(e.schema().attributes()[index].kind).isPlainText()) found = contains(v);
      });
      return found;
    };
  } else if (searchType == 5 || searchType == 9 || searchType == 12) {
    const QSet<qint64> uids =
        searchType == 5 ? store_.entriesWithLinkMatching(needle)
                        : store_.entriesWithTrackMatching(searchType == 9 ? QStringList{QStringLiteral("name")}
                                                                          : QStringList{QStringLiteral("artist"), QStringLiteral("composer")},
                                                          needle);
    predicate = [uids](const Entry& e) { return uids.contains(e.uid()); };
  } else {
    const QString key = searchIdentifierForSearchType(searchType);
    if (!EntitySchema::cd().has(key)) {
      predicate = [](const Entry&) { return false; };
    } else if (const int index = EntitySchema::cd().indexOf(key); index >= 0) {
      predicate = [contains, index](const Entry& e) {
        const QVariant* v = e.valueAt(index);
        return v && contains(*v);
      };
    } else {
      predicate = [contains, key](const Entry& e) { return contains(e.value(key)); };
    }
  }
  entriesController_.setFilterPredicate(std::move(predicate));
  entriesController_.rearrangeObjects();
}

void MyControllerShared::deleteEntries(const std::vector<Entry*>& entries) {
  for (Entry* e : entries) {
    entriesController_.forget(e);
    store_.deleteEntry(e);
  }
}

Store::OutsideChanges MyControllerShared::mergeOutsideChanges() {
  Store::OutsideChanges changes = store_.refresh();
  for (Entry* e : changes.removed) entriesController_.forget(e);
  for (const auto* list : {&changes.added, &changes.changed})
    for (Entry* e : *list) addEntryToAutofill(*e);
  for (Collection* c : changes.removedCollections)
    if (collections_.selectedCollection() == c) collections_.selectCollection(nullptr);
  return changes;
}

QString MyControllerShared::proposedNameForNewCollection(const std::vector<Entry*>& entries) const {
  if (entries.empty()) return {};
  for (const QString& key : commonAttributesForNamingNewCollection()) {
    const QString first = entries.front()->stringValue(key);
    if (first.isEmpty()) continue;
    bool shared = true;
    for (Entry* e : entries)
      if (e->stringValue(key) != first) {
        shared = false;
        break;
      }
    if (shared) return first;
  }
  return {};
}

EntryTemplate::Options MyControllerShared::templateOptions(bool html) const {
  EntryTemplate::Options options;
  options.html = html;
  options.releaseDateFormat = settings_.stringForKey(EntryTemplate::releaseDateFormatKey);
  options.yesText = localized(QStringLiteral("Yes"));
  return options;
}

EntryTemplate::Options MyControllerShared::entryTemplateOptions(const Entry& entry, bool html) const {
  EntryTemplate::Options options = templateOptions(html);
  options.coverImageAddress = coverImageAddress(entry);
  return options;
}

void MyControllerShared::replaceKeysInTemplate(QString& text, Entry& entry, bool html, bool webView) {
  fillTemplate(text, entry, entryTemplateOptions(entry, html), webView);
}

void MyControllerShared::fillTemplate(QString& text, Entry& entry, const EntryTemplate::Options& options,
                                      bool webView) const {
  if (!EntryTemplate::render(text, entry, options))
    std::fprintf(stderr, "Template of entry %lld left unfilled: the page would pass %lld characters\n", entry.uid(),
                 qint64(EntryTemplate::maximumLength));
  if (entryPageFiller_) entryPageFiller_->fillEntryPage(text, entry, options.html, webView);
}

void MyControllerShared::processNewLink(Link& link) {
  if (newLinkHandler_) newLinkHandler_->process(link);
}

QString MyControllerShared::templateText(const QString& name) const {
  if (!TemplateFile::isPlainName(name)) {
    std::fprintf(stderr, "Template name \"%s\" refused: only a file name is allowed\n", qPrintable(name));
    return {};
  }
  if (const QString folder = dataFolderPath(); !folder.isEmpty()) {
    const QString path = folder + QStringLiteral("/Templates/") + name;
    if (QFileInfo::exists(path)) {
      QString error;
      if (auto text = TemplateFile::read(path, &error)) return *text;
      std::fprintf(stderr, "Template %s not used: %s\n", qPrintable(name), qPrintable(error));
    }
  }
  // The built-in page speaks the window's language; a user's own template is used as it stands.
  if (const QString language = StringTable::interfaceLanguage(); !language.isEmpty())
    if (auto text = TemplateFile::read(QStringLiteral(":/templates/%1/%2").arg(language, name))) return *text;
  if (auto text = TemplateFile::read(QStringLiteral(":/templates/") + name)) return *text;
  return {};
}

QString MyControllerShared::coverImageAddress(const Entry& entry) const {
  const QString folder = dataFolderPath();
  if (folder.isEmpty()) return {};
  const QString file = QStringLiteral("%1.jpg").arg(entry.uid());
  const QString path = folder + QStringLiteral("/Covers/") + file;
  if (!QFileInfo(path).isFile()) return {};
  if (!coverImageAddressPrefix_.isEmpty()) return coverImageAddressPrefix_ + file;
  return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

QVariantMap MyControllerShared::collectionTotalsDictionaryFor(const std::vector<Entry*>& entries, bool footer) {
  if (!totalsProvider_) return {};
  return totalsProvider_->totals(entries, footer, bottomFields(), qsizetype(entriesController_.arrangedObjects().size()));
}

void MyControllerShared::refreshCollectionStatistics() {
  windowFooterString.clear();
  if (totalsProvider_) {
    const auto& selected = entriesController_.selectedObjects();
    multipleSelection = selected.size() >= 2;
    const QVariantMap totals =
        collectionTotalsDictionaryFor(multipleSelection ? selected : entriesController_.arrangedObjects(), true);
    windowFooterString = totalsProvider_->footer(totals, bottomFields(), multipleSelection);
  }
  setNumberOfSelectedInFooter();
}

void MyControllerShared::setNumberOfSelectedInFooter() {
  windowSystem_.footerDidChange(windowFooterString, qsizetype(entriesController_.selectedObjects().size()));
}

void MyControllerShared::printCollection() {}

PrintController& MyControllerShared::sharedPrint() {
  if (!print_)
    print_ = std::make_unique<PrintController>(PrintController::Services{
        strings_, settings_, windowSystem_, fieldsController_.get(), collections_, entriesController_, store_});
  return *print_;
}

void MyControllerShared::resultsFoundWithSite(SitePlugin& site, int numberOfResults) {
  const QStringList titles = site.resultsTitles();
  if (numberOfResults <= 0 || titles.isEmpty()) return;
  const int index = windowSystem_.choose(localized(QStringLiteral("ChooseResult"), QStringLiteral("Choose a result")), titles);
  if (index < 0 || index >= titles.size()) return;
  showResultOfSite(site, index);
}

void MyControllerShared::showResultOfSite(SitePlugin& site, int index) {
  site.resultNumber(index, [this, &site, index](const QVariantMap& result) {
    addPanel_.clear();
    addPanel_.setFromDictionary(result);
    addPanel_.setResults(&site, index);
    showAddPanel();
  });
}
