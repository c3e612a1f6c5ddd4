#include "NativeImporter.h"

#include "Entry.h"
#include "ImportRun.h"
#include "MyUpdate.h"
#include "PropertyList.h"
#include "Store.h"
#include "WindowSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

namespace {

bool placeCover(ImportRun& run, const QString& target, const QString& source, const QByteArray& data) {
  QDir().mkpath(QFileInfo(target).absolutePath());
  QFile::remove(target);
  if (!source.isEmpty()) {
    // A copy keeps the picture as it was; garbage is not worth carrying into the catalogue.
    QImageReader reader(source);
    if (!reader.canRead()) {
      run.warn(QStringLiteral("%1 is not a picture; the entry has no cover").arg(source));
      return false;
    }
    QFile file(source);
    if (!file.copy(target)) {
      qWarning("Error: Unable to copy on move file: %s", qPrintable(file.errorString()));
      return false;
    }
    return true;
  }
  QImage image;
  if (!image.loadFromData(data) || !image.save(target, "JPG")) {
    run.warn(QStringLiteral("An embedded cover could not be read as a picture; the entry has no cover"));
    return false;
  }
  return true;
}

}  // namespace

bool NativeImporter::import(ImportRun& run, const QString& path, QString* error) {
  const bool folder = QFileInfo(path).isDir();
  const QString listPath = folder ? path + QStringLiteral("/info.xml") : path;
  const QString coversFolder = path + QStringLiteral("/Covers/");
  QString why;
  const auto list = PropertyList::readFile(listPath, &why);
  if (!list || list->typeId() != QMetaType::QVariantMap) {
    if (error) *error = list ? QStringLiteral("%1 does not hold a dictionary").arg(listPath) : QStringLiteral("%1: %2").arg(listPath, why);
    return false;
  }
  const QVariantMap top = list->toMap();
  WindowSystem& ws = run.windowSystem();
  ws.showProgressSheet(run.progressTitle, QString(), int(top.size()));
  Store& store = run.store();
  for (int n = 1;; ++n) {
    const auto it = top.find(QString::number(n));
    if (it == top.end() || run.cancelled()) break;
    if (it->typeId() != QMetaType::QVariantMap) {
      run.warn(QStringLiteral("Entry %1 is not a dictionary and was skipped").arg(n));
      ws.increaseProgress();
      continue;
    }
    QVariantMap dictionary = it->toMap();
    MyUpdate::updateDate(dictionary, MyUpdate::oldDateKeys());
    QVariantList one{dictionary};
    MyUpdate::updateQuicktimePathsToLinks(one);
    Entry* entry = MyUpdate::entryObjectFromOldDictionary(store, one.first().toMap());
    const QString cover = store.coverPathOf(entry->uid());
    if (!cover.isEmpty()) {
      if (folder) {
        const QString source = coversFolder + QStringLiteral("%1.jpg").arg(n);
        if (QFile::exists(source)) placeCover(run, cover, source, {});
      } else {
        const QVariant data = dictionary.value(QStringLiteral("image%1").arg(n));
        if (data.typeId() == QMetaType::QByteArray) placeCover(run, cover, {}, data.toByteArray());
      }
    }
    run.added(entry);
    ws.increaseProgress();
  }
  ws.closeProgressSheet();
  return true;
}
