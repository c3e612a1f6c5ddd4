#include "FakePlatform.h"

bool FakePlatform::eject(const QString& volumePath) {
  ejected << volumePath;
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
