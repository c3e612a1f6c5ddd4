#include "UDisksWatcher.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QFileInfo>
#include <QTimer>
#include <cstdio>

namespace {

const QString rootPath = QStringLiteral("/org/freedesktop/UDisks2");
const QString objectManager = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString driveInterface = QStringLiteral("org.freedesktop.UDisks2.Drive");
const QString blockInterface = QStringLiteral("org.freedesktop.UDisks2.Block");
using Interfaces = QMap<QString, QVariantMap>;

bool holdsAudioDisc(const QVariantMap& drive) {
  const bool optical = drive.value(QStringLiteral("Optical")).toBool() ||
                       drive.value(QStringLiteral("Media")).toString().startsWith(QLatin1String("optical_cd"));
  return optical && drive.value(QStringLiteral("MediaAvailable")).toBool() &&
         drive.value(QStringLiteral("OpticalNumAudioTracks")).toUInt() > 0;
}

QString pathOf(const QVariant& value) {
  const QString path = value.value<QDBusObjectPath>().path();
  return path == QLatin1String("/") ? QString() : path;
}

}  // namespace

UDisksWatcher::UDisksWatcher(const QString& busAddress) : busAddress_(busAddress) {}

UDisksWatcher::~UDisksWatcher() {
  if (ownConnection_) QDBusConnection::disconnectFromBus(connectionName_);
}

void UDisksWatcher::log(const QString& line) {
  if (logged_) return;
  logged_ = true;
  std::fprintf(stderr, "%s\n", qPrintable(line));
}

void UDisksWatcher::watch(std::function<void(const QString&)> audioDiscArrived) {
  const bool first = !arrived_;
  arrived_ = std::move(audioDiscArrived);
  // Once the event loop runs: a command line that never runs one has no discs to hear of.
  if (first) QTimer::singleShot(0, this, &UDisksWatcher::start);
}

void UDisksWatcher::start() {
  if (busAddress_.isEmpty()) {
    connectionName_ = QDBusConnection::systemBus().name();
  } else {
    connectionName_ = QStringLiteral("discary-udisks-%1").arg(quintptr(this));
    QDBusConnection::connectToBus(busAddress_, connectionName_);
    ownConnection_ = true;
  }
  QDBusConnection bus(connectionName_);
  if (!bus.isConnected()) {
    log(QStringLiteral("No D-Bus system bus: inserted discs are not watched (%1)").arg(bus.lastError().message()));
    return;
  }
  bus.connect(service, rootPath, objectManager, QStringLiteral("InterfacesAdded"), this, SLOT(interfacesAdded(QDBusMessage)));
  bus.connect(service, rootPath, objectManager, QStringLiteral("InterfacesRemoved"), this, SLOT(interfacesRemoved(QDBusMessage)));
  bus.connect(service, QString(), propertiesInterface, QStringLiteral("PropertiesChanged"), this,
              SLOT(propertiesChanged(QDBusMessage)));
  // Asked without waiting: starting udisks2 on demand may take a moment the window need not wait for.
  auto* pending = new QDBusPendingCallWatcher(
      bus.asyncCall(QDBusMessage::createMethodCall(service, rootPath, objectManager, QStringLiteral("GetManagedObjects"))), this);
  connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    call->deleteLater();
    managedObjects(call->reply());
  });
}

void UDisksWatcher::managedObjects(const QDBusMessage& reply) {
  if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("a{oa{sa{sv}}}")) {
    log(QStringLiteral("udisks2 does not answer: inserted discs are not watched (%1)").arg(reply.errorMessage()));
    QDBusConnection(connectionName_).disconnect(service, QString(), propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                                                SLOT(propertiesChanged(QDBusMessage)));
    return;
  }
  const QDBusArgument objects = reply.arguments().at(0).value<QDBusArgument>();
  objects.beginMap();
  while (!objects.atEnd()) {
    QDBusObjectPath path;
    Interfaces interfaces;
    objects.beginMapEntry();
    objects >> path >> interfaces;
    objects.endMapEntry();
    // A disc already in a drive at start was put in before; only later arrivals count.
    update(path.path(), interfaces, false);
  }
  objects.endMap();
  ready_ = true;
}

void UDisksWatcher::interfacesAdded(const QDBusMessage& message) {
  if (message.signature() != QLatin1String("oa{sa{sv}}")) return;
  Interfaces interfaces;
  message.arguments().at(1).value<QDBusArgument>() >> interfaces;
  update(message.arguments().at(0).value<QDBusObjectPath>().path(), interfaces, true);
}

void UDisksWatcher::interfacesRemoved(const QDBusMessage& message) {
  if (message.signature() != QLatin1String("oas")) return;
  const QString path = message.arguments().at(0).value<QDBusObjectPath>().path();
  const QStringList gone = message.arguments().at(1).toStringList();
  if (gone.contains(driveInterface)) {
    drives_.remove(path);
    holdingAudio_.remove(path);
    waitingForBlock_.remove(path);
  }
  if (gone.contains(blockInterface)) {
    blockDrive_.remove(path);
    blockDevice_.remove(path);
  }
}

void UDisksWatcher::propertiesChanged(const QDBusMessage& message) {
  if (message.signature() != QLatin1String("sa{sv}as")) return;
  const QString interface = message.arguments().at(0).toString();
  if (interface != driveInterface && interface != blockInterface) return;
  QVariantMap changed;
  message.arguments().at(1).value<QDBusArgument>() >> changed;
  update(message.path(), {{interface, changed}}, true);
}

void UDisksWatcher::update(const QString& path, const Interfaces& interfaces, bool announce) {
  if (interfaces.contains(blockInterface)) {
    const QVariantMap block = interfaces.value(blockInterface);
    if (block.contains(QStringLiteral("Drive"))) blockDrive_[path] = pathOf(block.value(QStringLiteral("Drive")));
    if (block.contains(QStringLiteral("Device"))) {
      // A byte string with its terminating zero.
      QByteArray device = block.value(QStringLiteral("Device")).toByteArray();
      if (const qsizetype zero = device.indexOf('\0'); zero >= 0) device.truncate(zero);
      blockDevice_[path] = QString::fromLocal8Bit(device);
    }
    const QString drive = blockDrive_.value(path);
    if (waitingForBlock_.contains(drive)) driveChanged(drive, announce);
  }
  if (interfaces.contains(driveInterface)) {
    QVariantMap& drive = drives_[path];
    const QVariantMap changed = interfaces.value(driveInterface);
    for (auto it = changed.begin(); it != changed.end(); ++it) drive.insert(it.key(), it.value());
    driveChanged(path, announce);
  }
}

void UDisksWatcher::driveChanged(const QString& drive, bool announce) {
  if (!holdsAudioDisc(drives_.value(drive))) {
    holdingAudio_.remove(drive);
    waitingForBlock_.remove(drive);
    return;
  }
  if (holdingAudio_.contains(drive) && !waitingForBlock_.contains(drive)) return;
  holdingAudio_.insert(drive);
  const QString device = deviceOfDrive(drive);
  if (device.isEmpty()) {
    waitingForBlock_.insert(drive);
    return;
  }
  waitingForBlock_.remove(drive);
  if (announce && arrived_) arrived_(device);
}

QString UDisksWatcher::deviceOfDrive(const QString& drive) const {
  for (auto it = blockDrive_.begin(); it != blockDrive_.end(); ++it)
    if (it.value() == drive && !blockDevice_.value(it.key()).isEmpty()) return blockDevice_.value(it.key());
  return {};
}

QString UDisksWatcher::driveOfDevice(const QString& device) const {
  if (device.isEmpty()) {
    for (auto it = drives_.begin(); it != drives_.end(); ++it)
      if (it->value(QStringLiteral("MediaAvailable")).toBool() && !deviceOfDrive(it.key()).isEmpty() &&
          (it->value(QStringLiteral("Optical")).toBool() || it->value(QStringLiteral("Media")).toString().startsWith(QLatin1String("optical"))))
        return it.key();
    return {};
  }
  // "/dev/cdrom" is a link to the drive's own node.
  const QString canonical = QFileInfo(device).canonicalFilePath();
  for (auto it = blockDevice_.begin(); it != blockDevice_.end(); ++it)
    if (it.value() == device || (!canonical.isEmpty() && it.value() == canonical)) return blockDrive_.value(it.key());
  return {};
}

bool UDisksWatcher::eject(const QString& device) {
  const QString drive = driveOfDevice(device);
  if (drive.isEmpty()) return false;
  QDBusMessage call = QDBusMessage::createMethodCall(service, drive, driveInterface, QStringLiteral("Eject"));
  call << QVariantMap();
  // The tray takes seconds to open; the window need not wait for it.
  auto* pending = new QDBusPendingCallWatcher(QDBusConnection(connectionName_).asyncCall(call, 30000), this);
  connect(pending, &QDBusPendingCallWatcher::finished, this, [drive](QDBusPendingCallWatcher* done) {
    done->deleteLater();
    if (done->isError())
      std::fprintf(stderr, "udisks2 could not eject %s: %s\n", qPrintable(drive), qPrintable(done->error().message()));
  });
  return true;
}
