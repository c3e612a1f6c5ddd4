#pragma once

#include "EntrySnapshot.h"

#include <QHash>
#include <QUndoCommand>
#include <functional>
#include <map>
#include <optional>
#include <vector>

class Entry;
class MyControllerShared;
class Store;

// One change of the catalogue as the user made it (an edit, a delete, an import...), kept so that
// it can be undone and redone. It holds only what the change touched, in the state that is not
// in the catalogue now: undo and redo both swap that state with the catalogue's and save.
class CatalogueStep : public QUndoCommand {
 public:
  // Called after an undo or redo was saved, with the entries it put back or changed.
  using Applied = std::function<void(const std::vector<qint64>& uids)>;

  // Before the change: the entries it may edit or delete are kept in full (their covers too,
  // with withCovers); the uids of the others and every collection are noted to see what it adds.
  CatalogueStep(MyControllerShared& controller, const std::vector<Entry*>& touched, bool withCovers, Applied applied);
  // After the change: keeps what changed and the step's name; with no name, an edit is named
  // after what it changed ("Edit Title", "Edit Tracks"). False when nothing changed.
  bool finish(const QString& name);

  void undo() override { swap(); }
  // The change is made before the step is pushed: the first redo has nothing to do.
  void redo() override;

 private:
  struct CollectionState {
    QString name;
    std::vector<qint64> members;
    bool operator==(const CollectionState&) const = default;
  };
  // Keyed by a collection's id when the step was made; one made again gets a new id.
  using Collections = std::map<qint64, std::optional<CollectionState>>;
  using Entries = std::map<qint64, std::optional<EntrySnapshot>>;

  static std::vector<qint64> sortedUIDs(const Store& store);
  Collections currentCollections(const Collections* only) const;
  Entries currentEntries() const;
  QString editName(QStringList keys, size_t entries) const;
  void swap();
  void applyEntries();
  void applyCollections();

  MyControllerShared& controller_;
  bool withCovers_;
  Applied applied_;
  bool made_ = true;
  std::vector<qint64> uidsBefore_;  // sorted; only until finish
  std::map<qint64, EntrySnapshot> touchedBefore_;  // only until finish
  Collections collectionsBefore_;   // only until finish
  // The state not in the catalogue now of what the step changed: nullopt where the entry or
  // collection does not exist in it.
  Entries otherEntries_;
  // Of an entry the step edited, the keys it changed: only they are swapped, so a field another
  // process changed since stays as that process left it. Entries the step added or deleted are
  // swapped whole.
  std::map<qint64, QStringList> editedKeys_;
  Collections otherCollections_;
  QHash<qint64, qint64> collectionIDs_;  // id when the step was made -> id now
};
