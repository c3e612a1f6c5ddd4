#pragma once

#include "Platform.h"
#include "TagLibReader.h"

#include <QObject>
#include <QSet>
#include <memory>

class QFile;
class QSocketNotifier;
class UDisksWatcher;

// The desktop as Linux shows it: mounts from the kernel's mount table (which signals a change
// by polling as exceptional), removable media from /sys, eject through the eject command.
// The player's library is the first found of Rhythmbox, Strawberry and Clementine; no player
// answers for an inserted CD, so the scan goes online. Audio CDs are not mounted on Linux: udisks2
// tells of their arrival, and their table of contents is read from the drive.
class LinuxPlatform : public QObject, public Platform {
  Q_OBJECT
 public:
  // udisksBus: the D-Bus address udisks2 is asked on; the system bus when empty.
  explicit LinuxPlatform(QString mountTable = QStringLiteral("/proc/self/mounts"), QString udisksBus = {});
  ~LinuxPlatform() override;

  int osVersion() const override;
  void observeMounts(std::function<void(const QString& volumePath)> handler) override;
  void observeAudioDiscs(std::function<void(const QString& device)> handler) override;
  QStringList mountedRemovableVolumes() const override;
  // Through udisks2 where it knows the drive, else with the eject command.
  bool eject(const QString& volumePath) override;
  QVariantList musicLibraryTracks() override;
  QVariantList musicLibraryTracksAt(const QString& path) override;
  // The file's MIME type by name and content, then the desktop's default application for it as
  // `xdg-mime query default` answers.
  QString applicationForFile(const QString& path) const override;
  const TagReader* tagReader() const override { return &tagReader_; }
  bool fileExists(const QString& path) const override;
  std::optional<QVariantMap> propertyListDictionary(const QString& path) const override;
  std::optional<QVariantMap> driveTableOfContents(const QString& device) const override;
  QString musicBrainzDiscID(qint64 leadout, const QList<qint64>& starts) const override;

  struct Mount {
    QString device, mountPoint, type;
  };
  static QList<Mount> parseMountTable(const QByteArray& table);

 private:
  void mountTableChanged();
  QList<Mount> readMounts() const;

  TagLibReader tagReader_;
  QString mountTable_, udisksBus_;
  std::unique_ptr<UDisksWatcher> udisks_;
  std::unique_ptr<QFile> file_;
  std::unique_ptr<QSocketNotifier> notifier_;
  QSet<QString> known_;
  std::vector<std::function<void(const QString&)>> handlers_;
};
