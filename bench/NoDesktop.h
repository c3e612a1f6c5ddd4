#pragma once

#include "Platform.h"

// A desktop with nothing on it, so benchmarks measure the catalogue alone.
class NoDesktop : public Platform {
 public:
  int osVersion() const override { return 0; }
  void observeMounts(std::function<void(const QString&)>) override {}
  QStringList mountedRemovableVolumes() const override { return {}; }
  bool eject(const QString&) override { return false; }
  QVariantList musicLibraryTracks() override { return {}; }
  bool fileExists(const QString&) const override { return false; }
  std::optional<QVariantMap> propertyListDictionary(const QString&) const override { return std::nullopt; }
  std::optional<QVariantMap> driveTableOfContents(const QString&) const override { return std::nullopt; }
};
