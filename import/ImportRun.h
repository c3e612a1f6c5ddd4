#pragma once

#include <QString>
#include <QStringList>
#include <vector>

class Entry;
class Store;
class StringTable;
class WindowSystem;

// The state of one import: the entries made so far, the problems met on the way, and a save
// after every batch, so that a crash or a cancel loses at most the batch in hand.
class ImportRun {
 public:
  static constexpr int batchSize = 500;

  ImportRun(Store& store, WindowSystem& windowSystem) : store_(store), windowSystem_(windowSystem) {}

  Store& store() const { return store_; }
  WindowSystem& windowSystem() const { return windowSystem_; }
  // Counts the entry in, saving the store at the end of each batch.
  void added(Entry* entry);
  // The user asked the progress sheet to stop; the importer stops after the item in hand.
  bool cancelled() const;
  void warn(const QString& problem) { warnings_ << problem; }

  const std::vector<Entry*>& entries() const { return entries_; }
  const QStringList& warnings() const { return warnings_; }
  // The progress sheet's title of an import that adds entries: the localized "AddingEntries".
  static QString addingEntriesTitle(const StringTable& strings);
  QString progressTitle;

 private:
  Store& store_;
  WindowSystem& windowSystem_;
  std::vector<Entry*> entries_;
  QStringList warnings_;
};
