#include "EntryMerger.h"

#include "CdKeys.h"
#include "Entry.h"
#include "MyControllerShared.h"
#include "Store.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

bool hasContent(const QVariant& v) {
  return v.isValid() && !v.isNull() && !(v.typeId() == QMetaType::QString && v.toString().isEmpty());
}

template <typename Object>
std::unique_ptr<Object> copyOf(const Object& source, std::unique_ptr<Object> copy) {
  const auto& attributes = source.schema().attributes();
  for (const auto& a : attributes)
    if (const QVariant v = source.value(a.key); v.isValid()) copy->setPrimitiveValue(a.key, v);
  return copy;
}

QString trackIdentity(const Track& t) {
  return QString::number(t.position()) + QLatin1Char('\n') + t.stringValue(QStringLiteral("name")).trimmed().toCaseFolded();
}

}  // namespace

bool EntryMerger::merge(Entry& keep, Entry& other) {
  if (&keep == &other) return false;
  Store& store = controller_.managedObjectContext();
  for (const auto& a : EntitySchema::cd().attributes()) {
    if (hasContent(keep.value(a.key))) continue;
    if (const QVariant v = other.value(a.key); hasContent(v)) keep.setValue(a.key, v);
  }

  QSet<QString> tracks, urls;
  for (const auto& t : keep.tracksSet()) tracks.insert(trackIdentity(*t));
  for (const auto& l : keep.linksSet()) urls.insert(l->stringValue(QStringLiteral("url")));
  for (Track* t : other.tracksSortedByPosition())
    if (!tracks.contains(trackIdentity(*t))) keep.addTrack(copyOf(*t, Store::newTrack()));
  for (Link* l : other.linksSortedByPosition()) {
    const QString url = l->stringValue(QStringLiteral("url"));
    if (url.isEmpty() || !urls.contains(url)) {
      urls.insert(url);
      keep.addLink(copyOf(*l, Store::newLink()));
    }
  }
  if (!keep.value(CdKeys::numberOfTracks).toString().isEmpty() || !keep.tracksSet().empty())
    keep.setValue(CdKeys::numberOfTracks, QString::number(keep.tracksSet().size()));

  for (Collection* c : store.collections())
    if (c->contains(other.uid()) && !c->contains(keep.uid())) store.addEntryToCollection(&keep, c);

  const QString keptCover = store.coverPathOf(keep.uid()), otherCover = store.coverPathOf(other.uid());
  if (!keptCover.isEmpty() && !QFileInfo::exists(keptCover) && QFileInfo::exists(otherCover)) {
    QDir().mkpath(QFileInfo(keptCover).absolutePath());
    QFile::copy(otherCover, keptCover);
  }

  keep.setValue(CdKeys::dateEdited, QDateTime::currentDateTimeUtc());
  controller_.deleteEntries({&other});
  return controller_.saveManagedObjectContext();
}
