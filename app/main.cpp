#include "CliApplication.h"
#include "GuiApplication.h"

#include <QApplication>
#include <QCoreApplication>

int main(int argc, char* argv[]) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  QCoreApplication::setApplicationName(QStringLiteral("discary"));
  QCoreApplication::setApplicationVersion(QStringLiteral(DISCARY_VERSION));
  if (GuiApplication::wanted(arguments)) {
    QApplication app(argc, argv);
    return GuiApplication::run(arguments);
  }
  QCoreApplication app(argc, argv);
  return CliApplication::run(arguments);
}
