#pragma once

#include "Collection.h"

#include <QString>
#include <memory>
#include <vector>

class Entry;
class Store;
class StringTable;

// The collections the user sees: every entry, the borrowed and wish-list collections (by
// status) and the user's own, and which of them is selected.
class CollectionsController {
 public:
  CollectionsController(Store& store, const StringTable& strings);
  ~CollectionsController();

  // With excluded set, only the user's own collections are searched (the built-in borrowed and
  // wish-list ones are left out).
  Collection* collectionWithName(const QString& name, bool excluded) const;
  // A new user collection; the name gets " 2", " 3"... when it is taken.
  Collection* createCollectionNamed(const QString& name, const std::vector<Entry*>& entries);
  void selectCollection(Collection* collection) { selected_ = collection; }
  // nullptr means every entry.
  Collection* selectedCollection() const { return selected_; }
  Collection* borrowedCollection() const { return borrowed_.get(); }
  Collection* wishlistCollection() const { return wishlist_.get(); }
  // Built-in collections first, then the user's.
  std::vector<Collection*> allCollections() const;
  // Entries of a collection (every entry for nullptr), user collections in the order added.
  std::vector<Entry*> entriesIn(const Collection* collection) const;
  bool contains(const Collection* collection, const Entry& entry) const;
  void deleteCollection(Collection* collection);

 private:
  Store& store_;
  std::unique_ptr<Collection> borrowed_, wishlist_;
  Collection* selected_ = nullptr;
};
