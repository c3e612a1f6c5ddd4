#pragma once

#include <QHash>
#include <QStringList>
#include <QVariant>

// The suggestion lists of the edit panel's combo boxes, by field: every value used so far.
class AutofillLists {
 public:
  // Absent and empty values are not suggestions and are ignored.
  void addValue(const QVariant& value, const QString& field);
  // Sorted without regard to case.
  QStringList valuesForField(const QString& field) const;
  QStringList fields() const { return lists_.keys(); }

 private:
  QHash<QString, QHash<QString, QString>> lists_;  // field -> folded value -> value
};
