#include "FuzzEnvironment.h"

#include <QCoreApplication>

void FuzzEnvironment::start(const char* program) {
  // Qt keeps argc and argv for the whole run, so they must outlive this call; libFuzzer's own
  // arguments stay away from Qt's option parsing.
  static int argc = 1;
  static char* argv[] = {const_cast<char*>(program), nullptr};
  static QCoreApplication* application = new QCoreApplication(argc, argv);
  Q_UNUSED(application);
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}
