#include "CollectionsController.h"

#include "CdKeys.h"
#include "Entry.h"
#include "Store.h"
#include "StringTable.h"

CollectionsController::CollectionsController(Store& store, const StringTable& strings)
    : store_(store),
      borrowed_(std::make_unique<Collection>(-1, strings.localizedString(QStringLiteral("Borrowed")), Collection::Kind::Borrowed)),
      wishlist_(std::make_unique<Collection>(-2, strings.localizedString(QStringLiteral("Wish List")), Collection::Kind::WishList)) {}

CollectionsController::~CollectionsController() = default;

Collection* CollectionsController::collectionWithName(const QString& name, bool excluded) const {
  if (Collection* c = store_.collectionNamed(name)) return c;
  if (excluded) return nullptr;
  for (Collection* c : {borrowed_.get(), wishlist_.get()})
    if (c->name() == name) return c;
  return nullptr;
}

Collection* CollectionsController::createCollectionNamed(const QString& name, const std::vector<Entry*>& entries) {
  QString unique = name.trimmed().isEmpty() ? QStringLiteral("Untitled") : name.trimmed();
  for (int n = 2; collectionWithName(unique, false); ++n) unique = QStringLiteral("%1 %2").arg(name.trimmed()).arg(n);
  Collection* c = store_.createCollection(unique);
  for (Entry* e : entries) store_.addEntryToCollection(e, c);
  return c;
}

std::vector<Collection*> CollectionsController::allCollections() const {
  std::vector<Collection*> all{borrowed_.get(), wishlist_.get()};
  all.insert(all.end(), store_.collections().begin(), store_.collections().end());
  return all;
}

bool CollectionsController::contains(const Collection* c, const Entry& entry) const {
  if (!c) return true;
  switch (c->kind()) {
    case Collection::Kind::Borrowed:
      return entry.value(CdKeys::status).toLongLong() == 1;
    case Collection::Kind::WishList:
      return entry.value(CdKeys::status).toLongLong() == 2;
    case Collection::Kind::User:
      return c->contains(entry.uid());
  }
  return false;
}

std::vector<Entry*> CollectionsController::entriesIn(const Collection* c) const {
  if (!c) return store_.entries();
  std::vector<Entry*> entries;
  if (c->isUser()) {
    for (qint64 uid : c->memberUIDs())
      if (Entry* e = store_.entryWithUID(uid)) entries.push_back(e);
    return entries;
  }
  for (Entry* e : store_.entries())
    if (contains(c, *e)) entries.push_back(e);
  return entries;
}

void CollectionsController::deleteCollection(Collection* c) {
  if (!c || !c->isUser()) return;
  if (selected_ == c) selected_ = nullptr;
  store_.deleteCollection(c);
}
