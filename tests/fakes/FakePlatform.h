#pragma once

#include "Platform.h"

#include <QHash>

#include <atomic>
#include <vector>

// A desktop whose volumes and library the test sets, and which records what was asked of it.
class FakePlatform : public Platform {
 public:
  int osVersion() const override { return 6; }
  void observeMounts(std::function<void(const QString&)> handler) override { mountHandlers.push_back(std::move(handler)); }
  void observeAudioDiscs(std::function<void(const QString&)> handler) override { discHandlers.push_back(std::move(handler)); }
  QStringList mountedRemovableVolumes() const override { return volumes; }
  bool eject(const QString& volumePath) override;
  QVariantList musicLibraryTracks() override;
  const TagReader* tagReader() const override { return reader; }
  // Real files: tests put ".TOC.plist" files in temporary folders.
  bool fileExists(const QString& path) const override;
  std::optional<QVariantMap> propertyListDictionary(const QString& path) const override;
  std::optional<QVariantMap> driveTableOfContents(const QString&) const override { return drive; }
  MusicPlayer* musicPlayer() override { return player; }
  // libdiscid's, as on the desktop.
  QString musicBrainzDiscID(qint64 leadout, const QList<qint64>& starts) const override;

  void mount(const QString& path);
  // An audio CD with this table of contents arrives in the drive.
  void insertAudioDisc(const QString& device, const QVariantMap& toc);
  QString applicationForFile(const QString& path) const override { return applications.value(path); }

  QStringList volumes, ejected;
  QVariantList library;
  QHash<QString, QString> applications;  // file path -> the application that opens it
  const TagReader* reader = nullptr;
  std::atomic<int> libraryReads{0};
  std::vector<std::function<void(const QString&)>> mountHandlers, discHandlers;
  std::optional<QVariantMap> drive;  // the audio CD in the drive
  MusicPlayer* player = nullptr;
};
