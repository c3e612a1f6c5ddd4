#pragma once

#include "AttributeKind.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

// The attributes one entity ("CD", "Track", "Link") holds, in a fixed order that doubles as the
// column order of the entity's table.
class EntitySchema {
 public:
  struct Attribute {
    QString key;
    AttributeKind kind;
  };

  EntitySchema(QString entityName, std::vector<Attribute> attributes, QStringList derivedKeys = {});

  const QString& entityName() const { return entityName_; }
  const std::vector<Attribute>& attributes() const { return attributes_; }
  // -1 when the entity has no stored attribute of that name.
  int indexOf(const QString& key) const { return index_.value(key, -1); }
  bool isDerived(const QString& key) const { return derivedKeys_.contains(key); }
  const QStringList& derivedKeys() const { return derivedKeys_; }
  bool has(const QString& key) const { return indexOf(key) >= 0 || isDerived(key); }

  static const EntitySchema& cd();
  static const EntitySchema& track();
  static const EntitySchema& link();

 private:
  QString entityName_;
  std::vector<Attribute> attributes_;
  QHash<QString, int> index_;
  QStringList derivedKeys_;
};
