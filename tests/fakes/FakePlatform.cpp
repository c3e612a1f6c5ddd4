#include "FakePlatform.h"

#include "DiscDrive.h"
#include "PropertyListReader.h"

#include <QFileInfo>

bool FakePlatform::eject(const QString& volumePath) {
  ejected << volumePath;
  volumes.removeAll(volumePath);  // the disc is gone
  return true;
}

QVariantList FakePlatform::musicLibraryTracks() {
  ++libraryReads;
  return library;
}

void FakePlatform::mount(const QString& path) {
  volumes << path;
  for (auto& handler : mountHandlers) handler(path);
}

void FakePlatform::insertAudioDisc(const QString& device, const QVariantMap& toc) {
  drive = toc;
  for (auto& handler : discHandlers) handler(device);
}

bool FakePlatform::fileExists(const QString& path) const { return QFileInfo(path).isFile(); }

std::optional<QVariantMap> FakePlatform::propertyListDictionary(const QString& path) const {
  return PropertyListReader::readDictionary(path);
}

QString FakePlatform::musicBrainzDiscID(qint64 leadout, const QList<qint64>& starts) const {
  return DiscDrive::musicBrainzIdentifier(leadout, starts);
}
