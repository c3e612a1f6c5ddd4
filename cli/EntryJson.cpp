#include "EntryJson.h"

#include "Entry.h"
#include "JsonWriter.h"
#include "ModelKeys.h"
#include "Store.h"
#include "StoredRow.h"
#include "NaturalDate.h"
#include "ValueKind.h"

#include <QDateTime>
#include <QTimeZone>
#include <map>

// The attribute names of the three schemas in UTF-8, made once: a catalogue has millions of them.
static const std::vector<QByteArray>& utf8Keys(const EntitySchema& schema) {
  static std::map<const EntitySchema*, std::vector<QByteArray>> cache;
  auto& keys = cache[&schema];
  if (keys.empty())
    for (const auto& attribute : schema.attributes()) keys.push_back(attribute.key.toUtf8());
  return keys;
}

static void writeAttributes(JsonWriter& json, const ManagedObject& object) {
  const auto& keys = utf8Keys(object.schema());
  object.forEachValue([&](int index, const QVariant& value) {
    json.utf8Key(keys[index]);
    json.variant(value);
  });
}

// The same JSON as writeAttributes gives for the object this row would load into.
static void writeStoredRow(JsonWriter& json, const StoredRow& row) {
  json.beginObject();
  const auto& attributes = row.schema().attributes();
  const auto& keys = utf8Keys(row.schema());
  for (int i = 0; i < int(attributes.size()); ++i) {
    if (row.isNull(i)) continue;
    json.utf8Key(keys[i]);
    switch (ValueKind::of(attributes[i].kind).storage()) {
      case ValueKind::Storage::Integer: json.value(row.integer(i)); break;
      case ValueKind::Storage::Boolean: json.value(row.integer(i) != 0); break;
      case ValueKind::Storage::Milliseconds:
        json.value(NaturalDate::isoDateString(QDateTime::fromMSecsSinceEpoch(row.integer(i), QTimeZone::utc())));
        break;
      case ValueKind::Storage::Text: json.utf8Value(row.utf8(i)); break;
    }
  }
  json.endObject();
}

template <typename T>
static void writeObjects(JsonWriter& json, const std::vector<T*>& objects) {
  for (T* object : objects) {
    json.beginObject();
    writeAttributes(json, *object);
    json.endObject();
  }
}

void writeEntryJson(JsonWriter& json, Entry& entry, Store& store) {
  json.beginObject();
  json.key(ModelKeys::uid);
  json.value(entry.uid());
  writeAttributes(json, entry);
  const auto writeRow = [&json](const StoredRow& row) { writeStoredRow(json, row); };
  json.key(QStringLiteral("tracks"));
  json.beginArray();
  if (!store.forEachStoredRow(entry, Store::Relationship::Tracks, writeRow)) writeObjects(json, entry.tracksSortedByPosition());
  json.endArray();
  json.key(QStringLiteral("links"));
  json.beginArray();
  if (!store.forEachStoredRow(entry, Store::Relationship::Links, writeRow)) writeObjects(json, entry.linksSortedByPosition());
  json.endArray();
  json.key(ModelKeys::collections);
  json.beginArray();
  for (const QString& name : store.collectionNamesOf(entry)) json.value(name);
  json.endArray();
  json.endObject();
}
