#include "AudioFileImport.h"

#include "CdKeys.h"
#include "Entry.h"
#include "ImportRun.h"
#include "Link.h"
#include "LibraryTrackMapping.h"
#include "MyAudioMetadata.h"
#include "CollectionsController.h"
#include "EntriesController.h"
#include "ImportServices.h"
#include "Platform.h"
#include "Store.h"
#include "StringTable.h"
#include "WindowSystem.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QThread>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace {

// Reads tags on worker threads, at most `window` files ahead of the one the store takes next.
class TagPipeline {
 public:
  TagPipeline(const QStringList& paths, const TagReader* reader, int threads, int window)
      : paths_(paths), reader_(reader), window_(window), results_(size_t(paths.size())) {
    for (int i = 0; i < threads; ++i) workers_.emplace_back([this] { run(); });
  }
  ~TagPipeline() {
    {
      std::lock_guard lock(mutex_);
      stopped_ = true;
    }
    changed_.notify_all();
    for (std::thread& t : workers_) t.join();
  }

  QVariantMap take(qsizetype index) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return results_[size_t(index)].has_value(); });
    QVariantMap result = std::move(*results_[size_t(index)]);
    results_[size_t(index)].reset();
    taken_ = index + 1;
    lock.unlock();
    changed_.notify_all();
    return result;
  }

 private:
  void run() {
    for (;;) {
      qsizetype index;
      {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return stopped_ || next_ >= paths_.size() || next_ < taken_ + window_; });
        if (stopped_ || next_ >= paths_.size()) return;
        index = next_++;
      }
      QVariantMap tags = MyAudioMetadata::getMetadataForPath(paths_[index], reader_);
      {
        std::lock_guard lock(mutex_);
        results_[size_t(index)] = std::move(tags);
      }
      changed_.notify_all();
    }
  }

  const QStringList& paths_;
  const TagReader* reader_;
  const qsizetype window_;
  std::vector<std::optional<QVariantMap>> results_;
  std::mutex mutex_;
  std::condition_variable changed_;
  qsizetype next_ = 0, taken_ = 0;
  bool stopped_ = false;
  std::vector<std::thread> workers_;
};

QString importedAudioName(const ImportServices& c) {
  return c.strings.localizedString(QStringLiteral("Imported Audio"), QStringLiteral("Imported Audio"));
}

// The collection of imported files: by its name in the language shown, else by the English name,
// so that a catalogue begun in English (or filled from the command line) keeps one such collection.
Collection* importedAudioCollection(const ImportServices& c) {
  if (Collection* shown = c.collections.collectionWithName(importedAudioName(c), true)) return shown;
  return c.collections.collectionWithName(QStringLiteral("Imported Audio"), true);
}

void show(const ImportServices& c, Collection* collection, Entry* entry) {
  c.collections.selectCollection(collection);
  c.entries.rearrangeObjects();
  c.select(entry);
}

}  // namespace

bool AudioFileImport::isSkippedDuplicate(const ImportServices& c, const QString& path) {
  return c.store.entryWithLink(linkText(path)) && !c.importDuplicates();
}

Entry* AudioFileImport::importTags(const ImportServices& c, ImportSession* session, const QString& path,
                                   const QVariantMap& metadata, bool select) {
  bool existed = false;
  Entry* entry = LibraryTrackMapping::entryForTrack(c, session, metadata, &existed);
  c.windowSystem.setProgressSubtitle(entry->stringValue(CdKeys::title));
  entry->setValue(CdKeys::format, QStringLiteral("Digital"));
  const QString baseName = QFileInfo(path).completeBaseName();
  if (entry->value(CdKeys::title).isNull()) entry->setValue(CdKeys::title, baseName);
  std::unique_ptr<Link> link = Store::newLink();
  link->setValue(QStringLiteral("name"), baseName);
  link->setValue(QStringLiteral("type"), QStringLiteral("Audio"));
  link->setValue(QStringLiteral("url"), linkText(path));
  const qint64 trackNumber = metadata.value(QStringLiteral("Track Number")).toLongLong();
  link->setValue(QStringLiteral("position"), trackNumber != 0 ? trackNumber : qint64(entry->linksSet().size()));
  entry->addLink(std::move(link));
  Collection* collection = importedAudioCollection(c);
  if (!collection) collection = c.collections.createCollectionNamed(importedAudioName(c), {});
  if (!existed) c.store.addEntryToCollection(entry, collection);
  if (select) show(c, collection, entry);
  return entry;
}

QStringList AudioFileImport::audioFilesIn(const QString& folder) {
  QStringList paths;
  QDirIterator it(folder, QDir::Files | QDir::Readable | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString path = it.next();
    if (Link::isMusicFilePath(path)) paths << path;
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

int AudioFileImport::importFiles(const ImportServices& c, ImportSession* session, const QStringList& paths,
                                 ImportBatch batch) {
  WindowSystem& ws = c.windowSystem;
  ws.showProgressSheet(ImportRun::addingEntriesTitle(c.strings), QString(), int(paths.size()));
  const int threads = std::clamp(QThread::idealThreadCount(), 1, 8);
  int imported = 0;
  Entry* last = nullptr;
  // Paths are distinct, so only what the catalogue held before can make a duplicate; asked with
  // nothing unsaved, each look-up is one indexed query instead of a walk over unsaved links.
  if (c.store.hasChanges()) c.save();
  std::vector<bool> duplicate(size_t(paths.size()), false);
  for (qsizetype i = 0; i < paths.size(); ++i) duplicate[size_t(i)] = isSkippedDuplicate(c, paths[i]);
  {
    TagPipeline pipeline(paths, c.platform.tagReader(), threads, 64);
    for (qsizetype i = 0; i < paths.size(); ++i) {
      QVariantMap tags = pipeline.take(i);
      bool made = false;
      if (!duplicate[size_t(i)]) {
        // Showing the list after every file would sort it 10,000 times: it is shown once, at the end.
        const size_t before = c.store.entries().size();
        last = importTags(c, session, paths[i], tags, false);
        made = c.store.entries().size() != before;
        ++imported;
      }
      ws.increaseProgress();
      if (batch.add(made) && !c.save()) break;
      if (ws.progressCancelled()) break;
    }
  }
  const bool saved = c.save();
  ws.closeProgressSheet();
  if (last) show(c, importedAudioCollection(c), last);
  return saved ? imported : 0;
}
