#include "GuiApplication.h"

#include "CliApplication.h"
#include "CliOptions.h"
#include "InterfaceLanguage.h"
#include "LinuxPlatform.h"
#include "MainWindow.h"
#include "MyController.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "SingleInstance.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <cstdio>

namespace {

// Asks for another file until one opens or the user gives up; false when they gave up.
bool openSomeCatalogue(MyController& controller, QString path) {
  for (;;) {
    const Store::OpenResult result = controller.openCatalogue(path);
    if (result.ok()) return true;
    QMessageBox box(QMessageBox::Critical, QObject::tr("Discary"), QObject::tr("The catalogue could not be opened."));
    box.setInformativeText(result.message);
    QPushButton* other = box.addButton(QObject::tr("Open Another…"), QMessageBox::AcceptRole);
    QPushButton* fresh = box.addButton(QObject::tr("New Catalogue…"), QMessageBox::ActionRole);
    box.addButton(QObject::tr("Quit"), QMessageBox::RejectRole);
    box.exec();
    const QString folder = QFileInfo(path).absolutePath();
    if (box.clickedButton() == other)
      path = QFileDialog::getOpenFileName(nullptr, QObject::tr("Open Catalogue"), folder, QObject::tr("Discary catalogues (*.sqlite)"));
    else if (box.clickedButton() == fresh)
      path = QFileDialog::getSaveFileName(nullptr, QObject::tr("New Catalogue"), folder + QStringLiteral("/Discary.sqlite"),
                                          QObject::tr("Discary catalogues (*.sqlite)"));
    else
      return false;
    if (path.isEmpty()) return false;
  }
}

}  // namespace

namespace GuiApplication {

bool wanted(const QStringList& arguments) {
  QString message;
  const auto options = CliOptions::parse(arguments, &message);
  if (!options || options->version) return false;
  const QString first = options->words.value(0);
  if (first.isEmpty()) return true;
  if (CliApplication::isCommand(first) || first.startsWith(QLatin1Char('-'))) return false;
  // Files and URLs go to the window; a bare word is a mistyped command, answered on the terminal.
  return QFileInfo::exists(first) || first.contains(QLatin1Char('/')) || first.contains(QLatin1Char(':')) ||
         first.contains(QLatin1Char('.'));
}

int run(const QStringList& arguments) {
  QString message;
  const auto options = CliOptions::parse(arguments, &message);
  if (!options) {
    std::fprintf(stderr, "discary: %s\n", qPrintable(message));
    return 2;
  }
  // Before the controller: the framework's collection and field names are read in this language.
  InterfaceLanguage::install();
  QApplication::setApplicationDisplayName(QStringLiteral("Discary"));
  // The installed launcher's name and icon, so the desktop groups the window under its menu entry;
  // a build that was never installed shows a stock disc instead.
  QGuiApplication::setDesktopFileName(QStringLiteral("org.discary.Discary"));
  QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("org.discary.Discary"),
                                               QIcon::fromTheme(QStringLiteral("media-optical-audio"))));
  Settings settings(options->settings);
  SingleInstance instance(settings.fileName());
  if (!options->words.isEmpty() && instance.handOver(options->words)) return 0;
  QtWindowSystem windowSystem;
  LinuxPlatform platform;
  MyController controller(settings, windowSystem, platform);
  controller.applicationWillFinishLaunching();
  QString path = options->catalogue;
  if (path.isEmpty()) path = settings.stringForKey(lastCatalogueKey);
  if (path.isEmpty()) path = MyController::defaultCataloguePath();
  if (!openSomeCatalogue(controller, path)) return 1;
  controller.applicationDidFinishLaunching();
  MainWindow window(controller, windowSystem);
  window.show();
  instance.listen([&window](const QStringList& words) { window.openStrings(words); });
  if (!options->words.isEmpty()) window.openStrings(options->words);
  return QApplication::exec();
}

}  // namespace GuiApplication
