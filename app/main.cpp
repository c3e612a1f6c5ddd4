#include "CliApplication.h"

#include <QCoreApplication>

int main(int argc, char* argv[]) {
  QCoreApplication app(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("discary"));
  QCoreApplication::setApplicationVersion(QStringLiteral(DISCARY_VERSION));
  return CliApplication::run(QCoreApplication::arguments().mid(1));
}
