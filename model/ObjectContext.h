#pragma once

#include <QString>
#include <QVariant>

class Entry;
class ManagedObject;

// What a record needs from the store that holds it: change tracking, lazily loaded
// relationships and the values the store derives from other records.
class ObjectContext {
 public:
  virtual ~ObjectContext() = default;
  // notify is false for primitive writes, which are saved but announce nothing.
  virtual void entryDidChange(Entry& entry, const QString& key, bool notify) = 0;
  virtual void loadRelationships(Entry& entry) = 0;
  virtual QVariant derivedValue(const Entry& entry, const QString& key) const = 0;
};
