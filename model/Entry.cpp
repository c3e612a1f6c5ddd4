#include "Entry.h"

#include "CdKeys.h"
#include "ModelKeys.h"
#include "ObjectContext.h"

#include <algorithm>

Entry::Entry(qint64 uid, ObjectContext* context)
    : ManagedObject(EntitySchema::cd()), uid_(uid), context_(context), relationshipsLoaded_(context == nullptr) {}

Entry::~Entry() = default;

void Entry::fault() {
  if (relationshipsLoaded_) return;
  relationshipsLoaded_ = true;
  if (context_) context_->loadRelationships(*this);
}

const std::vector<std::unique_ptr<Track>>& Entry::tracksSet() {
  fault();
  return tracks_;
}

const std::vector<std::unique_ptr<Link>>& Entry::linksSet() {
  fault();
  return links_;
}

int Entry::countOfSet(const QString& key) {
  if (key == ModelKeys::tracksSet) return int(tracksSet().size());
  if (key == ModelKeys::linksSet) return int(linksSet().size());
  return 0;
}

Track* Entry::addTrack(std::unique_ptr<Track> track) {
  fault();
  track->owner_ = this;
  tracks_.push_back(std::move(track));
  relationshipDidChange(ModelKeys::tracksSet, true);
  return tracks_.back().get();
}

Link* Entry::addLink(std::unique_ptr<Link> link) {
  fault();
  link->owner_ = this;
  links_.push_back(std::move(link));
  relationshipDidChange(ModelKeys::linksSet, true);
  return links_.back().get();
}

template <typename T>
static bool eraseObject(std::vector<std::unique_ptr<T>>& objects, T* object) {
  auto it = std::find_if(objects.begin(), objects.end(), [&](const auto& p) { return p.get() == object; });
  if (it == objects.end()) return false;
  objects.erase(it);
  return true;
}

void Entry::removeTrack(Track* track) {
  fault();
  if (eraseObject(tracks_, track)) relationshipDidChange(ModelKeys::tracksSet, true);
}

void Entry::removeLink(Link* link) {
  fault();
  if (eraseObject(links_, link)) relationshipDidChange(ModelKeys::linksSet, true);
}

template <typename T>
static std::vector<T*> sortedByPosition(const std::vector<std::unique_ptr<T>>& objects) {
  static const int position = T().schema().indexOf(QStringLiteral("position"));
  std::vector<std::pair<qint64, T*>> keyed;
  keyed.reserve(objects.size());
  for (const auto& o : objects) {
    const QVariant* v = position >= 0 ? o->valueAt(position) : nullptr;
    keyed.emplace_back(v ? v->toLongLong() : 0, o.get());
  }
  std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<T*> sorted;
  sorted.reserve(keyed.size());
  for (const auto& k : keyed) sorted.push_back(k.second);
  return sorted;
}

std::vector<Track*> Entry::tracksSortedByPosition() { return sortedByPosition(tracksSet()); }

std::vector<Link*> Entry::linksSortedByPosition() { return sortedByPosition(linksSet()); }

void Entry::adoptLoadedRelationships(std::vector<std::unique_ptr<Track>> tracks,
                                     std::vector<std::unique_ptr<Link>> links) {
  relationshipsLoaded_ = true;
  tracks_ = std::move(tracks);
  links_ = std::move(links);
  for (auto& t : tracks_) t->owner_ = this;
  for (auto& l : links_) l->owner_ = this;
}

void Entry::unloadRelationships() {
  if (!context_) return;
  tracks_.clear();
  links_.clear();
  relationshipsLoaded_ = false;
}

void Entry::relationshipDidChange(const QString& key, bool notify) {
  if (context_) context_->entryDidChange(*this, key, notify);
}

QVariant Entry::derivedValue(const QString& key) const {
  if (key == ModelKeys::uid) return uid_;
  if (key == CdKeys::rated) return value(CdKeys::myRating).toLongLong() > 0;
  return context_ ? context_->derivedValue(*this, key) : QVariant();
}

void Entry::didChange(const QString& key, bool notify) {
  if (context_) context_->entryDidChange(*this, key, notify);
}
