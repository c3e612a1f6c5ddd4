#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QVariantMap>
#include <functional>

class QDBusMessage;

// Optical drives as udisks2 shows them on the D-Bus system bus: tells when an audio CD arrives
// in a drive, and ejects a drive's disc. Without a bus or without udisks2 (a server, a container)
// it says so in one log line and watches nothing.
class UDisksWatcher : public QObject {
  Q_OBJECT
 public:
  static inline const QString service = QStringLiteral("org.freedesktop.UDisks2");
  // The bus at that address (a test's private bus), or the system bus when empty.
  explicit UDisksWatcher(const QString& busAddress = {});
  ~UDisksWatcher() override;

  // Watches from the next turn of the event loop on; the handler hears the block device
  // ("/dev/sr0") of each audio CD put in after that. A second call replaces the handler.
  void watch(std::function<void(const QString& device)> audioDiscArrived);
  // Whether udisks2 answered and its drives are known.
  bool knowsDrives() const { return ready_; }
  // Asks udisks2 to eject the disc of the drive of that block device, or of the first optical
  // drive holding a disc when the device is empty; false when udisks2 knows no such drive. A
  // refusal is logged.
  bool eject(const QString& device);

 private Q_SLOTS:
  void interfacesAdded(const QDBusMessage& message);
  void interfacesRemoved(const QDBusMessage& message);
  void propertiesChanged(const QDBusMessage& message);

 private:
  void start();
  void managedObjects(const QDBusMessage& reply);
  void update(const QString& path, const QMap<QString, QVariantMap>& interfaces, bool announce);
  void driveChanged(const QString& drive, bool announce);
  QString deviceOfDrive(const QString& drive) const;
  QString driveOfDevice(const QString& device) const;
  void log(const QString& line);

  QString busAddress_, connectionName_;
  bool ownConnection_ = false;
  bool ready_ = false;
  bool logged_ = false;
  std::function<void(const QString&)> arrived_;
  QHash<QString, QVariantMap> drives_;       // drive object -> its Drive properties
  QSet<QString> holdingAudio_;                // drives with an audio CD in them
  QSet<QString> waitingForBlock_;             // audio CD arrived, its block device not yet known
  QHash<QString, QString> blockDrive_;        // block object -> its drive object
  QHash<QString, QString> blockDevice_;       // block object -> "/dev/sr0"
};
