#pragma once

#include "Link.h"
#include "ManagedObject.h"
#include "RelationshipOwner.h"
#include "Track.h"

#include <atomic>
#include <memory>
#include <vector>

class ObjectContext;

// One catalogue entry, entity "CD": an album or disc set with its tracks and links. Tracks and
// links are loaded from the store the first time they are asked for.
class Entry : public ManagedObject, public RelationshipOwner {
 public:
  explicit Entry(qint64 uid, ObjectContext* context = nullptr);
  ~Entry() override;

  qint64 uid() const { return uid_; }
  // Dense and never reused within the process: an index for side tables of per-entry figures.
  quint32 serial() const { return serial_; }
  ObjectContext* context() const { return context_; }
  // The file's change number at this entry's last save, as this process last read or wrote it.
  qint64 revision() const { return revision_; }
  void setRevision(qint64 revision) { revision_ = revision; }

  const std::vector<std::unique_ptr<Track>>& tracksSet();
  const std::vector<std::unique_ptr<Link>>& linksSet();
  // "tracksSet" and "linksSet" by key; any other key is an empty set.
  int countOfSet(const QString& key);
  Track* addTrack(std::unique_ptr<Track> track);
  Link* addLink(std::unique_ptr<Link> link);
  void removeTrack(Track* track);
  void removeLink(Link* link);
  // Tracks in display order: by "position", ties kept in insertion order.
  std::vector<Track*> tracksSortedByPosition();
  std::vector<Link*> linksSortedByPosition();

  bool relationshipsLoaded() const { return relationshipsLoaded_; }
  // For the store's loader: install the saved tracks and links without marking a change.
  void adoptLoadedRelationships(std::vector<std::unique_ptr<Track>> tracks, std::vector<std::unique_ptr<Link>> links);
  // Lets saved, unchanged tracks and links go again; the next use loads them anew. Only for an
  // entry of a store whose relationships were loaded and not changed since (TransientRelationships).
  void unloadRelationships();
  void relationshipDidChange(const QString& key, bool notify) override;

 protected:
  QVariant derivedValue(const QString& key) const override;
  void didChange(const QString& key, bool notify) override;

 private:
  void fault();

  static quint32 nextSerial() {
    static std::atomic<quint32> counter{0};
    return counter.fetch_add(1, std::memory_order_relaxed);
  }

  qint64 uid_;
  qint64 revision_ = 0;
  quint32 serial_ = nextSerial();
  ObjectContext* context_;
  bool relationshipsLoaded_;
  std::vector<std::unique_ptr<Track>> tracks_;
  std::vector<std::unique_ptr<Link>> links_;
};
