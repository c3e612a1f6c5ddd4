#include "EntrySnapshot.h"

#include "Entry.h"
#include "ModelKeys.h"
#include "Store.h"

#include <QFile>
#include <QSet>

EntrySnapshot::Values EntrySnapshot::valuesOf(const ManagedObject& object) {
  Values values;
  object.forEachValue([&](int index, const QVariant& value) { values.emplace_back(index, value); });
  return values;
}

EntrySnapshot EntrySnapshot::of(Store& store, Entry& entry, bool withCover) {
  EntrySnapshot snapshot;
  snapshot.values_ = valuesOf(entry);
  for (const auto& track : entry.tracksSet()) snapshot.tracks_.push_back(valuesOf(*track));
  for (const auto& link : entry.linksSet()) snapshot.links_.push_back(valuesOf(*link));
  if (withCover) {
    QFile cover(store.coverPathOf(entry.uid()));
    snapshot.cover_ = cover.open(QIODevice::ReadOnly) ? cover.readAll() : QByteArray();
  }
  return snapshot;
}

QStringList EntrySnapshot::differences(const EntrySnapshot& other) const {
  QStringList keys;
  const auto& attributes = EntitySchema::cd().attributes();
  auto a = values_.begin(), b = other.values_.begin();
  // Both lists are in schema order: walk them side by side.
  while (a != values_.end() || b != other.values_.end()) {
    if (b == other.values_.end() || (a != values_.end() && a->first < b->first)) {
      keys << attributes[size_t(a++->first)].key;
    } else if (a == values_.end() || b->first < a->first) {
      keys << attributes[size_t(b++->first)].key;
    } else {
      if (a->second != b->second) keys << attributes[size_t(a->first)].key;
      ++a, ++b;
    }
  }
  if (tracks_ != other.tracks_) keys << ModelKeys::tracksSet;
  if (links_ != other.links_) keys << ModelKeys::linksSet;
  return keys;
}

namespace {
template <typename T, typename Values>
void replaceSet(Entry& entry, const std::vector<std::unique_ptr<T>>& now, const std::vector<Values>& wanted,
                void (Entry::*remove)(T*), T* (Entry::*add)(std::unique_ptr<T>)) {
  std::vector<T*> old;
  for (const auto& object : now) old.push_back(object.get());
  for (T* object : old) (entry.*remove)(object);
  for (const Values& values : wanted) {
    auto object = std::make_unique<T>();
    for (const auto& [index, value] : values) object->loadValueAt(index, value);
    (entry.*add)(std::move(object));
  }
}
}  // namespace

void EntrySnapshot::applyTo(Entry& entry, const QStringList* only) const {
  const auto& attributes = entry.schema().attributes();
  auto wanted = [only](const QString& key) { return !only || only->contains(key); };
  QSet<int> kept;
  for (const auto& [index, value] : values_) {
    kept.insert(index);
    if (!wanted(attributes[size_t(index)].key)) continue;
    const QVariant* now = entry.valueAt(index);
    if (!now || *now != value) entry.setValue(attributes[size_t(index)].key, value);
  }
  std::vector<int> dropped;
  entry.forEachValue([&](int index, const QVariant&) {
    if (!kept.contains(index) && wanted(attributes[size_t(index)].key)) dropped.push_back(index);
  });
  for (int index : dropped) entry.setValue(attributes[size_t(index)].key, QVariant());
  auto held = [](const auto& set) {
    std::vector<Values> values;
    for (const auto& object : set) values.push_back(valuesOf(*object));
    return values;
  };
  if (wanted(ModelKeys::tracksSet) && held(entry.tracksSet()) != tracks_)
    replaceSet(entry, entry.tracksSet(), tracks_, &Entry::removeTrack, &Entry::addTrack);
  if (wanted(ModelKeys::linksSet) && held(entry.linksSet()) != links_)
    replaceSet(entry, entry.linksSet(), links_, &Entry::removeLink, &Entry::addLink);
}
