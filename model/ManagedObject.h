#pragma once

#include "EntitySchema.h"

#include <QVariant>
#include <atomic>
#include <vector>

// An attribute bag with key-value access, checked against its entity's schema. Values are kept
// sparsely: a catalogue of 100,000 entries sets a few dozen of the CD's ninety attributes.
class ManagedObject {
 public:
  explicit ManagedObject(const EntitySchema& schema) : schema_(&schema) {}
  virtual ~ManagedObject() = default;
  ManagedObject(const ManagedObject&) = delete;
  ManagedObject& operator=(const ManagedObject&) = delete;

  const EntitySchema& schema() const { return *schema_; }

  // An invalid QVariant for an absent value. A key the entity does not have also gives an
  // invalid QVariant, and a log line naming it, so a misspelt key is noticed.
  QVariant value(const QString& key) const;
  QString stringValue(const QString& key) const { return value(key).toString(); }
  bool hasKey(const QString& key) const { return schema_->has(key); }

  // Both return false, changing nothing, for an unknown or derived key or a value that cannot
  // be held as the attribute's kind (letters for an integer). An invalid or null value, or an
  // empty text for a date, removes the value.
  bool setValue(const QString& key, const QVariant& value);
  bool setPrimitiveValue(const QString& key, const QVariant& value);

  // Raw access by schema index, for the store's loader and writer.
  const QVariant* valueAt(int index) const;
  void loadValueAt(int index, QVariant value);
  void reserveValues(int count) { values_.reserve(size_t(count)); }
  template <typename F> void forEachValue(F f) const {
    for (const auto& slot : values_) f(slot.index, slot.value);
  }

  // A process-wide number that changes with every change of a value and is never shared by two
  // objects, so side tables can cache figures derived from an object and know when they are stale.
  quint64 stamp() const { return stamp_; }
  // The newest stamp of any object: unchanged means no object was made or changed since.
  static quint64 latestStamp() { return stampCounter().load(std::memory_order_relaxed); }

 protected:
  virtual QVariant derivedValue(const QString& key) const;
  virtual void didChange(const QString& key, bool notify) = 0;

 private:
  bool write(const QString& key, const QVariant& value, bool notify);

  struct Slot {
    int index;
    QVariant value;
  };
  static std::atomic<quint64>& stampCounter() {
    static std::atomic<quint64> counter{0};
    return counter;
  }
  static quint64 nextStamp() { return stampCounter().fetch_add(1, std::memory_order_relaxed) + 1; }

  const EntitySchema* schema_;
  quint64 stamp_ = nextStamp();
  std::vector<Slot> values_;  // sorted by index
};
