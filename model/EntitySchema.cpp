#include "EntitySchema.h"

#include "ModelKeys.h"

EntitySchema::EntitySchema(QString entityName, std::vector<Attribute> attributes, QStringList derivedKeys)
    : entityName_(std::move(entityName)), attributes_(std::move(attributes)), derivedKeys_(std::move(derivedKeys)) {
  for (int i = 0; i < int(attributes_.size()); ++i) index_.insert(attributes_[i].key, i);
}

namespace {
using K = AttributeKind;

std::vector<EntitySchema::Attribute> cdAttributes() {
  std::vector<EntitySchema::Attribute> a = {
      {"title", K::Text},           {"sortTitle", K::Text},       {"artist", K::Text},
      {"sortArtist", K::Text},      {"composer", K::Text},        {"conductor", K::Text},
      {"producer", K::Text},        {"mixedBy", K::Text},         {"arrangedBy", K::Text},
      {"label", K::Text},           {"genre", K::Text},           {"format", K::Text},
      {"releaseDate", K::Date},     {"originalReleaseDate", K::Date},
      {"duration", K::TimeText},    {"numberOfTracks", K::NumberText},
      {"discs", K::NumberText},     {"discID", K::Text},          {"upc", K::Text},
      {"asin", K::Text},            {"catalogNumber", K::Text},   {"price", K::NumberText},
      {"paid", K::NumberText},      {"rating", K::NumberText},    {"myRating", K::Integer},
      {"awards", K::Text},          {"comments", K::Text},        {"summary", K::Text},
      {"tags", K::Text},            {"url", K::Text},             {"location", K::Text},
      {"collectionID", K::Text},    {"purchasedAt", K::Text},     {"purchasedOn", K::Date},
      {"borrowedBy", K::Text},      {"borrowedOn", K::Date},      {"dueDate", K::Date},
      {"lastPlayed", K::Date},      {"dateAdded", K::Date},       {"dateEdited", K::Date},
      {"status", K::Integer},       {"itunes", K::Integer},
  };
  for (int i = 1; i <= 10; ++i) a.push_back({QStringLiteral("custom%1").arg(i), K::Text});
  for (int i = 1; i <= 2; ++i) {
    a.push_back({QStringLiteral("customDate%1").arg(i), K::Date});
    a.push_back({QStringLiteral("customCheckbox%1").arg(i), K::Boolean});
    a.push_back({QStringLiteral("customTag%1").arg(i), K::Text});
    a.push_back({QStringLiteral("customText%1").arg(i), K::Text});
  }
  // Kept for the user by the framework; the product layer only names them.
  const std::vector<EntitySchema::Attribute> kept = {
      {"addressBookID", K::Text},   {"extraData", K::Text},       {"hasMovieLink", K::Boolean},
      {"lastUsedCount", K::Integer}, {"lastUsed", K::Date},       {"lowestNewPrice", K::NumberText},
      {"lowestUsedPrice", K::NumberText}, {"uploaded", K::Boolean}, {"onSale", K::Boolean},
      {"hasBeenSold", K::Boolean},  {"soldOn", K::Date},          {"askingPrice", K::NumberText},
      {"buyerAddress", K::Text},    {"buyerEmail", K::Text},      {"buyerName", K::Text},
      {"placedForSaleAt", K::Text}, {"soldPrice", K::NumberText}, {"dogTag", K::Text},
      {"localeLanguage", K::Text},
  };
  a.insert(a.end(), kept.begin(), kept.end());
  // New attributes go last, so that a fresh table and an upgraded one have the same column order.
  // Version 6: identifiers for the online lookup.
  a.push_back({"releaseID", K::Text});
  a.push_back({"musicBrainzDiscID", K::Text});
  a.push_back({"barcodeSource", K::Text});
  return a;
}
}  // namespace

const EntitySchema& EntitySchema::cd() {
  // uid is the row key; the derived values are computed from other attributes or relationships.
  static const EntitySchema schema(ModelKeys::entityCD, cdAttributes(),
                                   {ModelKeys::uid, "statusImage", "collectionNames", "hasCoverImage",
                                    "rated", "links", "lentHistory"});
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
