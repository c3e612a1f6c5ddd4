#include "NativeExporter.h"

#include "Entry.h"
#include "MyUpdate.h"
#include "PropertyList.h"
#include "Store.h"
#include "TransientRelationships.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamWriter>

bool NativeExporter::write(Store& store, const std::vector<Entry*>& entries, const QString& path, Form form, QString* error) {
  auto fail = [error](const QString& why) {
    if (error) *error = why;
    return false;
  };
  const bool folder = form == Form::Folder;
  if (folder) {
    if (QFileInfo(path).exists() && !QFileInfo(path).isDir()) return fail(QStringLiteral("%1 exists and is not a folder").arg(path));
    if (!QDir().mkpath(path + QStringLiteral("/Covers"))) return fail(QStringLiteral("cannot create the folder %1").arg(path));
  }
  if (!folder) QDir().mkpath(QFileInfo(path).absolutePath());
  // Written entry by entry, each entry's tracks let go after it: a catalogue of 100,000 entries
  // is never held as one list, nor its million tracks at once.
  QSaveFile file(folder ? path + QStringLiteral("/info.xml") : path);
  if (!file.open(QIODevice::WriteOnly)) return fail(file.errorString());
  QXmlStreamWriter xml(&file);
  PropertyList::beginDocument(xml);
  xml.writeStartElement(QStringLiteral("dict"));
  int n = 0;
  for (Entry* entry : entries) {
    ++n;
    TransientRelationships reading(*entry);
    QVariantMap dictionary = MyUpdate::oldDictionaryFromEntry(*entry);
    const QString cover = store.coverPathOf(entry->uid());
    if (!cover.isEmpty() && QFile::exists(cover)) {
      QFile coverFile(cover);
      const QByteArray picture = coverFile.open(QIODevice::ReadOnly) ? coverFile.readAll() : QByteArray();
      if (folder) {
        // Replaced in one step, so that an export cut short leaves the earlier one whole.
        const QString target = path + QStringLiteral("/Covers/%1.jpg").arg(n);
        QSaveFile out(target);
        if (!out.open(QIODevice::WriteOnly) || out.write(picture) != picture.size() || !out.commit())
          return fail(QStringLiteral("cannot write %1").arg(target));
      } else if (!picture.isEmpty()) {
        dictionary.insert(QStringLiteral("image%1").arg(n), picture);
      }
    }
    xml.writeTextElement(QStringLiteral("key"), QString::number(n));
    PropertyList::writeValue(xml, dictionary);
  }
  xml.writeEndElement();
  PropertyList::endDocument(xml);
  if (xml.hasError() || !file.commit()) return fail(file.errorString());
  return true;
}
