#include "MyUpdate.h"

#include "Entry.h"
#include "Link.h"
#include "Store.h"
#include "NaturalDate.h"
#include "Track.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

namespace {

const QHash<QString, QString>& oldNames() {
  static const QHash<QString, QString> names = {
      {"Status", "status"},       {"BorrowedOn", "borrowedOn"}, {"DateAdded", "dateAdded"},
      {"PurchasedOn", "purchasedOn"}, {"Release", "releaseDate"}, {"DueDate", "dueDate"},
  };
  return names;
}

const QString tracksKey = QStringLiteral("Tracks");
const QString linksKey = QStringLiteral("Links");

std::optional<QDateTime> dateFromText(const QString& text) {
  const QString t = text.trimmed();
  // The older text form, "2004-05-06 07:08:09 +0200".
  static const QRegularExpression older(QStringLiteral(R"(^(\d{4}-\d\d-\d\d) (\d\d:\d\d:\d\d) ([+-]\d\d)(\d\d)$)"));
  const auto match = older.match(t);
  QDateTime date = match.hasMatch()
                       ? QDateTime::fromString(match.captured(1) + u'T' + match.captured(2) + match.captured(3) + u':' +
                                                   match.captured(4),
                                               Qt::ISODate)
                       : QDateTime::fromString(t, Qt::ISODate);
  if (date.isValid()) return date.toUTC();
  return NaturalDate::myDateWithNaturalLanguageString(t);
}

void setAll(ManagedObject& object, const QVariantMap& values) {
  for (auto it = values.begin(); it != values.end(); ++it) {
    if (object.schema().indexOf(it.key()) < 0) continue;
    const QVariant& v = it.value();
    // Containers would print as nothing; a wrong type is left out rather than guessed at.
    if (v.typeId() == QMetaType::QVariantMap || v.typeId() == QMetaType::QVariantList ||
        v.typeId() == QMetaType::QByteArray)
      continue;
    object.setPrimitiveValue(it.key(), v);
  }
}

}  // namespace

const QStringList& MyUpdate::oldDateKeys() {
  static const QStringList keys = {"BorrowedOn", "DateAdded", "PurchasedOn", "Release", "DueDate"};
  return keys;
}

QString MyUpdate::attributeForOldKey(const QString& key) {
  const QString renamed = oldNames().value(key);
  if (!renamed.isEmpty()) return renamed;
  return EntitySchema::cd().indexOf(key) >= 0 ? key : QString();
}

void MyUpdate::updateDate(QVariantMap& entry, const QStringList& fields) {
  for (const QString& key : fields) {
    auto it = entry.find(key);
    if (it == entry.end() || it->typeId() == QMetaType::QDateTime) continue;
    const auto date = it->typeId() == QMetaType::QString ? dateFromText(it->toString()) : std::nullopt;
    if (date) *it = *date;
    else entry.erase(it);
  }
}

void MyUpdate::updateQuicktimePathsToLinks(QVariantList& entries) {
  const QString key = QStringLiteral("QuickTime");
  for (QVariant& item : entries) {
    if (item.typeId() != QMetaType::QVariantMap) continue;
    QVariantMap entry = item.toMap();
    if (!entry.contains(key)) continue;
    const QVariant movies = entry.take(key);
    QStringList paths;
    if (movies.typeId() == QMetaType::QString) paths << movies.toString();
    else if (movies.typeId() == QMetaType::QVariantList)
      for (const QVariant& p : movies.toList())
        if (p.typeId() == QMetaType::QString) paths << p.toString();
    QVariantList links = entry.value(linksKey).toList();
    for (const QString& path : std::as_const(paths)) {
      if (path.isEmpty()) continue;
      links.append(QVariantMap{{"name", QFileInfo(path).completeBaseName()},
                               {"url", QStringLiteral("file://%1").arg(path)},
                               {"type", QStringLiteral("QuickTime Movie")},
                               {"position", qint64(links.size())}});
    }
    entry.insert(linksKey, links);
    item = entry;
  }
}

Entry* MyUpdate::entryObjectFromOldDictionary(Store& store, const QVariantMap& dictionary) {
  Entry* entry = store.insertEntry();
  for (auto it = dictionary.begin(); it != dictionary.end(); ++it) {
    const QString attribute = attributeForOldKey(it.key());
    if (attribute.isEmpty()) continue;
    const QVariant& v = it.value();
    if (v.typeId() == QMetaType::QVariantMap || v.typeId() == QMetaType::QVariantList ||
        v.typeId() == QMetaType::QByteArray)
      continue;
    entry->setPrimitiveValue(attribute, v);
  }
  for (const QVariant& t : dictionary.value(tracksKey).toList()) {
    if (t.typeId() != QMetaType::QVariantMap) continue;
    auto track = Store::newTrack();
    setAll(*track, t.toMap());
    entry->addTrack(std::move(track));
  }
  for (const QVariant& l : dictionary.value(linksKey).toList()) {
    if (l.typeId() != QMetaType::QVariantMap) continue;
    auto link = Store::newLink();
    setAll(*link, l.toMap());
    entry->addLink(std::move(link));
  }
  return entry;
}

QVariantMap MyUpdate::oldDictionaryFromEntry(Entry& entry) {
  QHash<QString, QString> older;
  for (auto it = oldNames().begin(); it != oldNames().end(); ++it) older.insert(it.value(), it.key());
  QVariantMap out;
  const auto& attributes = entry.schema().attributes();
  entry.forEachValue([&](int index, const QVariant& value) {
    const QString& key = attributes[size_t(index)].key;
    out.insert(older.value(key, key), value);
  });
  auto objects = [](const auto& items) {
    QVariantList list;
    for (const auto* item : items) {
      QVariantMap map;
      const auto& keys = item->schema().attributes();
      item->forEachValue([&](int index, const QVariant& value) { map.insert(keys[size_t(index)].key, value); });
      list.append(map);
    }
    return list;
  };
  if (!entry.tracksSet().empty()) out.insert(tracksKey, objects(entry.tracksSortedByPosition()));
  if (!entry.linksSet().empty()) out.insert(linksKey, objects(entry.linksSortedByPosition()));
  return out;
}
