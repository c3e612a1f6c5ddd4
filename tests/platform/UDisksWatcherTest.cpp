#include "FakeWindowSystem.h"
#include "LinuxPlatform.h"
#include "MyController.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "UDisksWatcher.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using Interfaces = QMap<QString, QVariantMap>;
const QString root = QStringLiteral("/org/freedesktop/UDisks2");
const QString driveInterface = QStringLiteral("org.freedesktop.UDisks2.Drive");
const QString blockInterface = QStringLiteral("org.freedesktop.UDisks2.Block");

QString drivePath(const QString& name) { return root + QStringLiteral("/drives/") + name; }
QString blockPath(const QString& name) { return root + QStringLiteral("/block_devices/") + name; }

QVariantMap driveWith(bool media, uint audioTracks) {
  return {{"Optical", media}, {"MediaAvailable", media}, {"MediaRemovable", true},
          {"Media", media ? QStringLiteral("optical_cd") : QString()}, {"OpticalNumAudioTracks", audioTracks}};
}

QVariantMap blockOf(const QString& drive, const QString& device) {
  return {{"Drive", QVariant::fromValue(QDBusObjectPath(drive))}, {"Device", QByteArray(device.toUtf8() + '\0')}};
}

// udisks2 as far as the watcher asks it: its objects, their signals, and Drive.Eject.
class FakeUDisks : public QDBusVirtualObject {
 public:
  explicit FakeUDisks(QDBusConnection bus) : bus_(bus) {}
  QMap<QString, Interfaces> objects;
  QStringList ejected;

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() == QLatin1String("GetManagedObjects")) {
      QDBusArgument all;
      all.beginMap(QMetaType::fromType<QDBusObjectPath>(), QMetaType::fromType<Interfaces>());
      for (auto it = objects.begin(); it != objects.end(); ++it) {
        all.beginMapEntry();
        all << QDBusObjectPath(it.key()) << it.value();
        all.endMapEntry();
      }
      all.endMap();
      connection.send(message.createReply(QVariant::fromValue(all)));
      return true;
    }
    if (message.interface() == driveInterface && message.member() == QLatin1String("Eject")) {
      ejected << message.path();
      connection.send(message.createReply());
      return true;
    }
    return false;
  }
  void add(const QString& path, const Interfaces& interfaces) {
    objects[path] = interfaces;
    QDBusMessage signal = QDBusMessage::createSignal(root, "org.freedesktop.DBus.ObjectManager", "InterfacesAdded");
    QDBusArgument map;
    map << interfaces;
    signal << QVariant::fromValue(QDBusObjectPath(path)) << QVariant::fromValue(map);
    bus_.send(signal);
  }
  void change(const QString& drive, const QVariantMap& properties) {
    for (auto it = properties.begin(); it != properties.end(); ++it) objects[drive][driveInterface][it.key()] = it.value();
    QDBusMessage signal = QDBusMessage::createSignal(drive, "org.freedesktop.DBus.Properties", "PropertiesChanged");
    signal << driveInterface << properties << QStringList();
    bus_.send(signal);
  }

 private:
  QDBusConnection bus_;
};

class UDisksWatcherTest : public ::testing::Test {
 protected:
  QProcess daemon;
  QString address;
  std::unique_ptr<QDBusConnection> bus;
  std::unique_ptr<FakeUDisks> udisks;

  void SetUp() override {
    qDBusRegisterMetaType<Interfaces>();
    daemon.start("dbus-daemon", {"--session", "--print-address", "--nofork"});
    ASSERT_TRUE(daemon.waitForStarted()) << "dbus-daemon is needed (package dbus)";
    ASSERT_TRUE(daemon.waitForReadyRead(10000));
    address = QString::fromUtf8(daemon.readLine()).trimmed();
    bus = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address, "fake-udisks"));
    ASSERT_TRUE(bus->isConnected());
  }
  void TearDown() override {
    udisks.reset();
    QDBusConnection::disconnectFromBus("fake-udisks");
    daemon.kill();
    daemon.waitForFinished();
  }
  // A drive with an audio CD in it since before the start, and an empty one.
  void serve() {
    udisks = std::make_unique<FakeUDisks>(*bus);
    udisks->objects[drivePath("A")] = {{driveInterface, driveWith(true, 9)}};
    udisks->objects[blockPath("sr0")] = {{blockInterface, blockOf(drivePath("A"), "/dev/sr0")}};
    udisks->objects[drivePath("B")] = {{driveInterface, driveWith(false, 0)}};
    udisks->objects[blockPath("sr1")] = {{blockInterface, blockOf(drivePath("B"), "/dev/sr1")}};
    ASSERT_TRUE(bus->registerVirtualObject(root, udisks.get(), QDBusConnection::SubPath));
    ASSERT_TRUE(bus->registerService(UDisksWatcher::service));
  }
};

TEST_F(UDisksWatcherTest, audioCdsPutInAreAnnouncedOnceWithTheirDrive) {
  serve();
  UDisksWatcher watcher(address);
  QStringList arrived;
  watcher.watch([&](const QString& device) { arrived << device; });
  QTRY_VERIFY(watcher.knowsDrives());
  EXPECT_TRUE(arrived.isEmpty());  // the disc in drive A was there before

  udisks->change(drivePath("B"), {{"MediaAvailable", true}, {"Optical", true}, {"Media", "optical_cd"}});
  udisks->change(drivePath("B"), {{"OpticalNumAudioTracks", 0u}});  // a data CD
  QTest::qWait(200);
  EXPECT_TRUE(arrived.isEmpty());
  udisks->change(drivePath("B"), driveWith(false, 0));
  // udisks2 tells of a new disc in parts: the medium first, its tracks after.
  udisks->change(drivePath("B"), {{"MediaAvailable", true}, {"Optical", true}, {"Media", "optical_cd"}});
  udisks->change(drivePath("B"), {{"OpticalNumAudioTracks", 12u}});
  udisks->change(drivePath("B"), {{"OpticalNumAudioTracks", 12u}});
  QTRY_COMPARE(arrived, QStringList{"/dev/sr1"});

  // A drive plugged in with a disc, its block device told of afterwards.
  udisks->add(drivePath("C"), {{driveInterface, driveWith(true, 5)}});
  QTest::qWait(200);
  EXPECT_EQ(arrived, QStringList{"/dev/sr1"});
  udisks->add(blockPath("sr2"), {{blockInterface, blockOf(drivePath("C"), "/dev/sr2")}});
  QTRY_COMPARE(arrived, (QStringList{"/dev/sr1", "/dev/sr2"}));

  // Hostile or unrelated signals change nothing.
  QDBusMessage odd = QDBusMessage::createSignal(drivePath("B"), "org.freedesktop.DBus.Properties", "PropertiesChanged");
  odd << 42 << QString("x");
  bus->send(odd);
  QDBusMessage oddAdded = QDBusMessage::createSignal(root, "org.freedesktop.DBus.ObjectManager", "InterfacesAdded");
  oddAdded << QString("not a path");
  bus->send(oddAdded);
  QTest::qWait(200);
  EXPECT_EQ(arrived.size(), 2);

  EXPECT_TRUE(watcher.eject("/dev/sr1"));
  EXPECT_FALSE(watcher.eject("/dev/sr9"));
  QTRY_COMPARE(udisks->ejected, QStringList{drivePath("B")});
}

TEST_F(UDisksWatcherTest, withoutUdisksNothingIsWatchedAndNothingFails) {
  UDisksWatcher watcher(address);  // a bus without udisks2
  watcher.watch([](const QString&) { ADD_FAILURE() << "no disc can arrive"; });
  QTest::qWait(300);
  EXPECT_FALSE(watcher.knowsDrives());
  EXPECT_FALSE(watcher.eject({}));

  UDisksWatcher noBus(QStringLiteral("unix:path=/nonexistent/bus"));
  noBus.watch([](const QString&) {});
  QTest::qWait(100);
  EXPECT_FALSE(noBus.knowsDrives());
}

TEST_F(UDisksWatcherTest, anInsertedCdIsScannedWithoutAClickAndEjectedThroughUdisks) {
  serve();
  QTemporaryDir dir;
  QFile mounts(dir.filePath("mounts"));
  ASSERT_TRUE(mounts.open(QIODevice::WriteOnly));
  mounts.close();
  Settings settings(dir.filePath("discary.conf"));
  FakeWindowSystem windowSystem;
  LinuxPlatform platform(mounts.fileName(), address);
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  ASSERT_TRUE(controller.openCatalogue(":memory:").ok());
  settings.setObject(SettingsKeys::refreshItunesAuto, false);
  settings.setObject(SettingsKeys::scanCD, true);
  settings.setObject(SettingsKeys::ejectCD, true);
  settings.setObject(SettingsKeys::cddbServer, QStringLiteral("127.0.0.1:9"));
  controller.applicationDidFinishLaunching();
  QTest::qWait(300);

  udisks->change(drivePath("B"), driveWith(true, 10));
  // The drive here is no real one, so its table of contents cannot be read: the scan says so,
  // then ejects the disc as the settings ask.
  QTRY_COMPARE(windowSystem.progressTitles, QStringList{"Scanning..."});
  QTRY_COMPARE(udisks->ejected, QStringList{drivePath("B")});
  EXPECT_EQ(windowSystem.openSheets, 0);
}

}  // namespace
