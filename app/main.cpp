#include "CliApplication.h"
#include "GuiApplication.h"
#include "HugePageHeap.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <memory>

namespace {

QtMessageHandler previousHandler = nullptr;

// Without a session (cron, a container, su) Qt warns on every start of a GUI application that
// XDG_RUNTIME_DIR is unset, and then uses a folder of its own; a printing command line has
// nothing to do with that folder and should not print the warning among its own messages.
void quietAboutRuntimeDir(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))) return;
  previousHandler(type, context, message);
}

}  // namespace

int main(int argc, char* argv[]) {
  HugePageHeap::install();
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  QCoreApplication::setApplicationName(QStringLiteral("discary"));
  QCoreApplication::setApplicationVersion(QStringLiteral(DISCARY_VERSION));
  if (GuiApplication::wanted(arguments)) {
    QApplication app(argc, argv);
    return GuiApplication::run(arguments);
  }
  std::unique_ptr<QCoreApplication> app;
  if (CliApplication::paints(arguments)) {
    // Painting text needs fonts, and so a GUI application; a command line shows no window, so
    // it never needs a display either.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    previousHandler = qInstallMessageHandler(quietAboutRuntimeDir);
    app = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(previousHandler);
    // A cover that is not a picture prints as an empty frame; the decoder's complaints about it
    // would only bury the command's own messages.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio.*.warning=false"));
  } else {
    app = std::make_unique<QCoreApplication>(argc, argv);
  }
  return CliApplication::run(arguments);
}
