#include "CatalogueStep.h"

#include "CdKeys.h"
#include "Entry.h"
#include "ModelKeys.h"
#include "MyControllerShared.h"
#include "MyFieldsControllerShared.h"
#include "Picture.h"

#include <QFile>
#include <algorithm>
#include <iterator>

namespace {
// Stands for the cover among the changed keys, which holds no attribute of that name.
const QString coverKey = QStringLiteral("coverImage");
}  // namespace

CatalogueStep::CatalogueStep(MyControllerShared& controller, const std::vector<Entry*>& touched, bool withCovers,
                             Applied applied)
    : controller_(controller), withCovers_(withCovers), applied_(std::move(applied)) {
  Store& store = controller_.managedObjectContext();
  uidsBefore_ = sortedUIDs(store);
  for (Entry* e : touched) touchedBefore_.emplace(e->uid(), EntrySnapshot::of(store, *e, withCovers_));
  collectionsBefore_ = currentCollections(nullptr);
}

// The store keeps entries in uid order but for uids reserved by another process: sort only then.
std::vector<qint64> CatalogueStep::sortedUIDs(const Store& store) {
  std::vector<qint64> uids;
  uids.reserve(store.entries().size());
  for (const Entry* e : store.entries()) uids.push_back(e->uid());
  if (!std::is_sorted(uids.begin(), uids.end())) std::sort(uids.begin(), uids.end());
  return uids;
}

CatalogueStep::Collections CatalogueStep::currentCollections(const Collections* only) const {
  Collections found;
  for (const Collection* c : controller_.managedObjectContext().collections()) {
    const qint64 first = collectionIDs_.key(c->id(), c->id());
    if (!only || only->count(first)) found[first] = CollectionState{c->name(), c->memberUIDs()};
  }
  if (only)
    for (const auto& [id, state] : *only) found.try_emplace(id);
  return found;
}

CatalogueStep::Entries CatalogueStep::currentEntries() const {
  Store& store = controller_.managedObjectContext();
  Entries found;
  for (const auto& [uid, state] : otherEntries_) {
    Entry* e = store.entryWithUID(uid);
    found[uid] = e ? std::optional(EntrySnapshot::of(store, *e, withCovers_)) : std::nullopt;
  }
  return found;
}

bool CatalogueStep::finish(const QString& name) {
  Store& store = controller_.managedObjectContext();
  const std::vector<qint64> uidsAfter = sortedUIDs(store);
  std::vector<qint64> added;
  std::set_difference(uidsAfter.begin(), uidsAfter.end(), uidsBefore_.begin(), uidsBefore_.end(), std::back_inserter(added));
  for (qint64 uid : added) otherEntries_[uid] = std::nullopt;
  QStringList edited;
  size_t editedEntries = 0;
  for (auto& [uid, before] : touchedBefore_) {
    Entry* now = store.entryWithUID(uid);
    if (now) {
      const EntrySnapshot after = EntrySnapshot::of(store, *now, withCovers_);
      QStringList keys = before.differences(after);
      if (before.cover() != after.cover()) keys << coverKey;
      editedKeys_[uid] = keys;
      // The edit time alone is no change a person would want to undo.
      keys.removeAll(CdKeys::dateEdited);
      if (keys.isEmpty()) {
        editedKeys_.erase(uid);
        continue;
      }
      edited += keys;
      ++editedEntries;
    }
    otherEntries_[uid] = std::move(before);
  }
  const Collections after = currentCollections(nullptr);
  for (const auto& [id, state] : collectionsBefore_)
    if (!after.count(id) || after.at(id) != state) otherCollections_[id] = state;
  for (const auto& [id, state] : after)
    if (!collectionsBefore_.count(id)) otherCollections_[id] = std::nullopt;
  uidsBefore_ = {};
  touchedBefore_.clear();
  collectionsBefore_.clear();
  if (otherEntries_.empty() && otherCollections_.empty()) return false;
  edited.removeDuplicates();
  setText(name.isEmpty() ? editName(edited, editedEntries) : name);
  return true;
}

QString CatalogueStep::editName(QStringList keys, size_t entries) const {
  const StringTable& strings = controller_.frameworkBundle();
  // The count and play time follow the tracks: an edit of the tracks is named after them.
  if (keys.contains(ModelKeys::tracksSet)) {
    keys.removeAll(CdKeys::numberOfTracks);
    keys.removeAll(CdKeys::duration);
  }
  if (entries > 1) return strings.localizedString(QStringLiteral("Edit Entries"), QStringLiteral("Edit Entries"));
  if (keys.size() != 1) return strings.localizedString(QStringLiteral("Edit Entry"), QStringLiteral("Edit Entry"));
  if (keys.front() == ModelKeys::tracksSet) return strings.localizedString(QStringLiteral("Edit Tracks"), QStringLiteral("Edit Tracks"));
  if (keys.front() == ModelKeys::linksSet) return strings.localizedString(QStringLiteral("Edit Links"), QStringLiteral("Edit Links"));
  if (keys.front() == coverKey) return strings.localizedString(QStringLiteral("Edit Cover"), QStringLiteral("Edit Cover"));
  return strings.localizedString(QStringLiteral("Edit %1"), QStringLiteral("Edit %1"))
      .arg(controller_.fieldsController()->localizedColumnName(keys.front()));
}

void CatalogueStep::redo() {
  if (made_) {
    made_ = false;
    return;
  }
  swap();
}

void CatalogueStep::swap() {
  Entries nowEntries = currentEntries();
  Collections nowCollections = currentCollections(&otherCollections_);
  // Entries first: a collection can only hold an entry that exists.
  applyEntries();
  applyCollections();
  std::vector<qint64> shown;
  for (const auto& [uid, state] : otherEntries_)
    if (state) shown.push_back(uid);
  otherEntries_ = std::move(nowEntries);
  otherCollections_ = std::move(nowCollections);
  controller_.saveManagedObjectContext();
  if (applied_) applied_(shown);
}

void CatalogueStep::applyEntries() {
  Store& store = controller_.managedObjectContext();
  for (const auto& [uid, state] : otherEntries_) {
    Entry* e = store.entryWithUID(uid);
    if (!state) {
      if (e) controller_.deleteEntries({e});
      continue;
    }
    const auto edited = editedKeys_.find(uid);
    const QStringList* only = edited == editedKeys_.end() ? nullptr : &edited->second;
    // An edited entry that another process deleted since stays deleted.
    if (!e && only) continue;
    if (!e) e = store.insertEntry(uid);
    if (!e) continue;
    state->applyTo(*e, only);
    if (const auto& cover = state->cover(); cover && (!only || only->contains(coverKey))) {
      if (cover->isEmpty()) {
        QFile::remove(store.coverPathOf(uid));
      } else {
        QFile file(store.coverPathOf(uid));
        if (!file.open(QIODevice::ReadOnly) || file.readAll() != *cover)
          controller_.setCoverImage(*e, QVariant::fromValue(Picture{*cover, "jpeg", {}}));
      }
    }
  }
}

void CatalogueStep::applyCollections() {
  Store& store = controller_.managedObjectContext();
  for (const auto& [first, state] : otherCollections_) {
    const auto& all = store.collections();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Collection* c) { return c->id() == collectionIDs_.value(first, first); });
    Collection* c = found == all.end() ? nullptr : *found;
    if (!state) {
      if (c) controller_.collections().deleteCollection(c);
      continue;
    }
    if (!c) {
      c = store.createCollection(state->name);
      collectionIDs_.insert(first, c->id());
    } else if (c->name() != state->name) {
      store.renameCollection(c, state->name);
    }
    const std::vector<qint64> members = c->memberUIDs();
    for (qint64 uid : members)
      if (std::find(state->members.begin(), state->members.end(), uid) == state->members.end())
        store.removeEntryFromCollection(store.entryWithUID(uid), c);
    for (qint64 uid : state->members) store.addEntryToCollection(store.entryWithUID(uid), c);
  }
}
