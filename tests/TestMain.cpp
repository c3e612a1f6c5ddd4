#include <QGuiApplication>
#include <gtest/gtest.h>

// Qt's own singletons expect an application object; without one some leak at exit. Printing
// paints text, which needs a GUI application; tests never show a window.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
