#pragma once

#include <QHash>
#include <QStringList>
#include <QVariant>
#include <functional>

// The suggestion lists of the edit panel's combo boxes, by field: every value used so far.
class AutofillLists {
 public:
  // Fills the lists from the catalogue the first time they are read, so opening a large
  // catalogue does not pay for suggestions nobody has asked for yet.
  void setSeed(std::function<void(AutofillLists&)> seed) { seed_ = std::move(seed); }
  // Absent and empty values are not suggestions and are ignored.
  void addValue(const QVariant& value, const QString& field);
  // Sorted without regard to case.
  QStringList valuesForField(const QString& field) const;
  QStringList fields() const {
    seedOnce();
    return lists_.keys();
  }

 private:
  void seedOnce() const;

  mutable std::function<void(AutofillLists&)> seed_;
  mutable QHash<QString, QHash<QString, QString>> lists_;  // field -> folded value -> value
};
