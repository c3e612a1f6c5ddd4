#include "EntryJson.h"

#include "Entry.h"
#include "JsonWriter.h"
#include "ModelKeys.h"
#include "Store.h"

static void writeAttributes(JsonWriter& json, const ManagedObject& object) {
  const auto& attributes = object.schema().attributes();
  object.forEachValue([&](int index, const QVariant& value) {
    json.key(attributes[index].key);
    json.variant(value);
  });
}

void writeEntryJson(JsonWriter& json, Entry& entry, const Store& store) {
  json.beginObject();
  json.key(ModelKeys::uid);
  json.value(entry.uid());
  writeAttributes(json, entry);
  json.key(QStringLiteral("tracks"));
  json.beginArray();
  for (Track* track : entry.tracksSortedByPosition()) {
    json.beginObject();
    writeAttributes(json, *track);
    json.endObject();
  }
  json.endArray();
  json.key(QStringLiteral("links"));
  json.beginArray();
  for (Link* link : entry.linksSortedByPosition()) {
    json.beginObject();
    writeAttributes(json, *link);
    json.endObject();
  }
  json.endArray();
  json.key(ModelKeys::collections);
  json.beginArray();
  for (const QString& name : store.collectionNamesOf(entry)) json.value(name);
  json.endArray();
  json.endObject();
}
