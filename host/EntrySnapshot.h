#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <utility>
#include <vector>

class Entry;
class ManagedObject;
class Store;

// Everything an entry holds, copied out so that it can be put back: its values, tracks and
// links, and with withCover its cover picture. Collection memberships belong to the collections.
class EntrySnapshot {
 public:
  static EntrySnapshot of(Store& store, Entry& entry, bool withCover);

  // The keys whose values differ, "tracksSet" or "linksSet" for a set that differs.
  QStringList differences(const EntrySnapshot& other) const;
  // Makes the entry hold this state again; only what differs is written, so an unchanged
  // entry is not saved again. With only, just those keys (as differences() names them).
  void applyTo(Entry& entry, const QStringList* only = nullptr) const;
  // The cover's bytes when it was kept; empty when the entry had none.
  const std::optional<QByteArray>& cover() const { return cover_; }

 private:
  using Values = std::vector<std::pair<int, QVariant>>;
  static Values valuesOf(const ManagedObject& object);

  Values values_;
  std::vector<Values> tracks_, links_;  // in the order the entry holds them
  std::optional<QByteArray> cover_;     // empty: the entry had no cover
};
