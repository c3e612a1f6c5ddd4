#include "NewLinkProcessor.h"

#include "FileMover.h"
#include "Link.h"
#include "Platform.h"
#include "Settings.h"
#include "StringTable.h"
#include "WindowSystem.h"

#include <QDir>
#include <QFileInfo>
#include <cstdio>

namespace {
const QString dataFolderPrefix = QStringLiteral("[Data Folder]");
const QString fileScheme = QStringLiteral("file:///");
}  // namespace

void NewLinkProcessor::process(Link& link) {
  const QString url = link.stringValue(QStringLiteral("url"));
  const QString movie = services_.strings.localizedString(QStringLiteral("Movie"));
  if (link.stringValue(QStringLiteral("type")) == movie) {
    link.setValue(QStringLiteral("type"), movie);
    if (services_.settings.boolForKey(QStringLiteral("Move Movies")) && !url.startsWith(dataFolderPrefix) &&
        !fileMovie(link, url))
      return;
  }
  type(link, link.stringValue(QStringLiteral("url")));
}

bool NewLinkProcessor::fileMovie(Link& link, const QString& url) {
  const QString folder = QDir::cleanPath(services_.dataFolder() + QStringLiteral("/QuickTime"));
  const QString name = QFileInfo(url).fileName();
  const QString destination = folder + QLatin1Char('/') + name;
  const QString source = url.startsWith(fileScheme) ? url.mid(7) : url;
  if (QDir::cleanPath(source) == destination) return true;
  if (!QDir(folder).exists() && !QDir().mkpath(folder))
    std::fprintf(stderr, "Error creating QuickTime directory at: %s\nError: %s\n", qPrintable(folder),
                 "the folder could not be created");
  if (QFileInfo::exists(destination)) {
    const int answer = services_.windowSystem.runAlert(
        QStringLiteral("File Exist"),
        QStringLiteral("A file with the same name exist at the destination, do you wish to overwrite it?"),
        {QStringLiteral("OK"), services_.strings.localizedString(QStringLiteral("Cancel"))});
    if (answer != 0) return false;
    // Moved aside rather than removed, so that a move that then fails loses nothing.
    const QString aside = destination + QStringLiteral(".replaced");
    QFile::remove(aside);
    QFile::rename(destination, aside);
    QString error;
    if (!FileMover::move(source, destination, &error)) {
      QFile::rename(aside, destination);
      return moveFailed(url, error);
    }
    QFile::remove(aside);
  } else if (QString error; !FileMover::move(source, destination, &error)) {
    return moveFailed(url, error);
  }
  link.setValue(QStringLiteral("url"), QStringLiteral("%1/QuickTime/%2").arg(dataFolderPrefix, name));
  return true;
}

bool NewLinkProcessor::moveFailed(const QString& url, const QString& error) {
  services_.windowSystem.runAlert(
      QStringLiteral("File Error"),
      QStringLiteral("There was an error moving the file to the data folder and the file has not been moved."),
      {QStringLiteral("OK")});
  std::fprintf(stderr, "Error adding link %s to data folder: %s\n", qPrintable(url), qPrintable(error));
  return false;
}

void NewLinkProcessor::type(Link& link, const QString& url) {
  if (!link.stringValue(QStringLiteral("type")).isEmpty()) return;
  const QString name = link.stringValue(QStringLiteral("name"));
  if (name.contains(QLatin1String("review"), Qt::CaseInsensitive)) {
    link.setValue(QStringLiteral("type"), QStringLiteral("review"));
  } else if (name.contains(QLatin1String("QuickTime"), Qt::CaseInsensitive)) {
    link.setValue(QStringLiteral("type"), QStringLiteral("QuickTime Movie"));
  } else if (url.startsWith(fileScheme)) {
    QString application = services_.platform.applicationForFile(url.mid(7));
    if (application.endsWith(QLatin1String(".app"))) application.chop(4);
    if (!application.isEmpty()) link.setValue(QStringLiteral("type"), QStringLiteral("App: %1").arg(application));
  }
}
