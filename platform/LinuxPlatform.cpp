#include "LinuxPlatform.h"

#include "DiscDrive.h"
#include "PlayerLibraries.h"
#include "PropertyListReader.h"
#include "UDisksWatcher.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QSocketNotifier>
#include <QSysInfo>

LinuxPlatform::LinuxPlatform(QString mountTable, QString udisksBus)
    : mountTable_(std::move(mountTable)), udisksBus_(std::move(udisksBus)) {}

LinuxPlatform::~LinuxPlatform() = default;

int LinuxPlatform::osVersion() const { return QSysInfo::kernelVersion().section(QLatin1Char('.'), 0, 0).toInt(); }

static QString unescapeMountField(const QByteArray& field) {
  // The mount table writes spaces, tabs, newlines and backslashes as three octal digits.
  QByteArray out;
  for (int i = 0; i < field.size(); ++i) {
    if (field[i] == '\\' && i + 3 < field.size()) {
      bool ok = false;
      const int code = field.mid(i + 1, 3).toInt(&ok, 8);
      if (ok && code < 256) {
        out += char(code);
        i += 3;
        continue;
      }
    }
    out += field[i];
  }
  return QString::fromUtf8(out);
}

QList<LinuxPlatform::Mount> LinuxPlatform::parseMountTable(const QByteArray& table) {
  QList<Mount> mounts;
  for (const QByteArray& line : table.split('\n')) {
    const QList<QByteArray> fields = line.simplified().split(' ');
    if (fields.size() < 3) continue;
    mounts.append({unescapeMountField(fields[0]), unescapeMountField(fields[1]), QString::fromUtf8(fields[2])});
  }
  return mounts;
}

QList<LinuxPlatform::Mount> LinuxPlatform::readMounts() const {
  QFile f(mountTable_);
  if (!f.open(QIODevice::ReadOnly)) return {};
  return parseMountTable(f.readAll());
}

static bool isRemovable(const LinuxPlatform::Mount& m) {
  if (m.type == QLatin1String("iso9660") || m.type == QLatin1String("udf") || m.type == QLatin1String("cdfs")) return true;
  if (!m.device.startsWith(QLatin1String("/dev/"))) return false;
  // /dev/sdb1 -> /sys/block/sdb/removable
  QString disk = QFileInfo(m.device).canonicalFilePath().section(QLatin1Char('/'), -1);
  while (!disk.isEmpty() && !QFileInfo::exists(QStringLiteral("/sys/block/%1").arg(disk))) disk.chop(1);
  if (disk.isEmpty()) return false;
  QFile flag(QStringLiteral("/sys/block/%1/removable").arg(disk));
  return flag.open(QIODevice::ReadOnly) && flag.readAll().trimmed() == "1";
}

QStringList LinuxPlatform::mountedRemovableVolumes() const {
  QStringList volumes;
  for (const Mount& m : readMounts())
    if (isRemovable(m)) volumes << m.mountPoint;
  return volumes;
}

void LinuxPlatform::observeMounts(std::function<void(const QString&)> handler) {
  handlers_.push_back(std::move(handler));
  if (notifier_) return;
  for (const Mount& m : readMounts()) known_.insert(m.mountPoint);
  file_ = std::make_unique<QFile>(mountTable_);
  if (!file_->open(QIODevice::ReadOnly)) return;
  notifier_ = std::make_unique<QSocketNotifier>(file_->handle(), QSocketNotifier::Exception);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { mountTableChanged(); });
}

void LinuxPlatform::mountTableChanged() {
  // The kernel wants the table read again before it signals the next change.
  file_->seek(0);
  file_->readAll();
  QSet<QString> now;
  for (const Mount& m : readMounts()) {
    now.insert(m.mountPoint);
    if (!known_.contains(m.mountPoint))
      for (auto& handler : handlers_) handler(m.mountPoint);
  }
  known_ = now;
}

void LinuxPlatform::observeAudioDiscs(std::function<void(const QString&)> handler) {
  if (!udisks_) udisks_ = std::make_unique<UDisksWatcher>(udisksBus_);
  udisks_->watch(std::move(handler));
}

bool LinuxPlatform::eject(const QString& volumePath) {
  // A mounted volume is left to the eject command, which unmounts it first.
  const bool drive = volumePath.isEmpty() || volumePath.startsWith(QLatin1String("/dev/"));
  if (drive && udisks_ && udisks_->knowsDrives() && udisks_->eject(volumePath)) return true;
  // An empty path ejects the default drive.
  return QProcess::execute(QStringLiteral("eject"), volumePath.isEmpty() ? QStringList() : QStringList{volumePath}) == 0;
}

QVariantList LinuxPlatform::musicLibraryTracks() { return PlayerLibraries::read(PlayerLibraries::find()); }

QVariantList LinuxPlatform::musicLibraryTracksAt(const QString& path) { return PlayerLibraries::read(path); }

bool LinuxPlatform::fileExists(const QString& path) const { return QFileInfo(path).isFile(); }

std::optional<QVariantMap> LinuxPlatform::propertyListDictionary(const QString& path) const {
  return PropertyListReader::readDictionary(path);
}

std::optional<QVariantMap> LinuxPlatform::driveTableOfContents(const QString& device) const {
  return DiscDrive::tableOfContents(device);
}

QString LinuxPlatform::musicBrainzDiscID(qint64 leadout, const QList<qint64>& starts) const {
  return DiscDrive::musicBrainzIdentifier(leadout, starts);
}

QString LinuxPlatform::applicationForFile(const QString& path) const {
  const QString type = QMimeDatabase().mimeTypeForFile(path).name();
  QProcess query;
  query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), type});
  if (!query.waitForFinished(3000) || query.exitStatus() != QProcess::NormalExit || query.exitCode() != 0) {
    query.kill();
    return {};
  }
  QString desktopFile = QString::fromUtf8(query.readAllStandardOutput()).trimmed().section(QLatin1Char('\n'), 0, 0);
  if (desktopFile.endsWith(QLatin1String(".desktop"))) desktopFile.chop(8);
  return desktopFile;
}
