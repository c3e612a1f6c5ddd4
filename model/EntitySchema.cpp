#include "EntitySchema.h"

#include "ModelKeys.h"
#include "MusicFields.h"

EntitySchema::EntitySchema(QString entityName, std::vector<Attribute> attributes, QStringList derivedKeys)
    : entityName_(std::move(entityName)), attributes_(std::move(attributes)), derivedKeys_(std::move(derivedKeys)) {
  for (int i = 0; i < int(attributes_.size()); ++i) index_.insert(attributes_[i].key, i);
}

namespace {
using K = AttributeKind;

std::vector<EntitySchema::Attribute> cdAttributes() {
  std::vector<EntitySchema::Attribute> attributes;
  for (const MusicField& field : MusicFields::all())
    if (field.kind) attributes.push_back({field.key, *field.kind});
  return attributes;
}

QStringList cdDerivedKeys() {
  QStringList keys;
  for (const MusicField& field : MusicFields::all())
    if (!field.kind) keys << field.key;
  return keys;
}
}  // namespace

const EntitySchema& EntitySchema::cd() {
  // uid is the row key; the derived values are computed from other attributes or relationships.
  static const EntitySchema schema(ModelKeys::entityCD, cdAttributes(), cdDerivedKeys());
  return schema;
}

const EntitySchema& EntitySchema::track() {
  static const EntitySchema schema(ModelKeys::entityTrack, {{"name", K::Text},
                                                            {"position", K::Integer},
                                                            {"duration", K::TimeText},
                                                            {"artist", K::Text},
                                                            {"composer", K::Text}});
  return schema;
}

const EntitySchema& EntitySchema::link() {
  static const EntitySchema schema(ModelKeys::entityLink, {{"name", K::Text},
                                                           {"url", K::Text},
                                                           {"type", K::Text},
                                                           {"position", K::Integer}});
  return schema;
}
