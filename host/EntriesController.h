#pragma once

#include "CdKeys.h"

#include <QDate>
#include <QString>
#include <functional>
#include <vector>

class CollectionsController;
class Entry;

// The entries in view: those of the selected collection that pass the filter, sorted
// (arrangedObjects; in the borrowed collection the overdue loans first), and the ones the user
// selected among them.
class EntriesController {
 public:
  using Predicate = std::function<bool(const Entry&)>;

  explicit EntriesController(CollectionsController& collections) : collections_(collections) {}

  // The search field's predicate, and the filter menu's, which narrows independently of it.
  void setFilterPredicate(Predicate predicate) { predicate_ = std::move(predicate); }
  void setFilter(Predicate filter) { filter_ = std::move(filter); }
  bool isFiltered() const { return bool(filter_); }
  // Sorts by the attribute, as its kind compares (dates by time, numbers in text by value);
  // "title" sorts by "sortTitle" where an entry has one, "artist" likewise by "sortArtist".
  void setSortKey(const QString& key, bool ascending = true);
  const QString& sortKey() const { return sortKey_; }
  bool sortAscending() const { return ascending_; }
  void rearrangeObjects();

  const std::vector<Entry*>& arrangedObjects() const { return arranged_; }
  const std::vector<Entry*>& selectedObjects() const { return selected_; }
  // Keeps only entries that are arranged.
  void setSelectedObjects(const std::vector<Entry*>& entries);
  // Drops an entry that is going away from both lists.
  void forget(Entry* entry);

 private:
  void sortAll();

  CollectionsController& collections_;
  Predicate predicate_, filter_;
  QString sortKey_ = CdKeys::title;
  bool ascending_ = true;
  std::vector<Entry*> arranged_, selected_;
  // The selected collection sorted, and what it was sorted from.
  std::vector<Entry*> sorted_, sortedSource_;
  quint64 sortedStamp_ = 0;
  QString sortedKey_;
  bool sortedAscending_ = true;
  // The day the borrowed collection was sorted on; invalid for any other collection.
  QDate sortedDay_;
};
