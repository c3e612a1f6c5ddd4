#include <QApplication>
#include <gtest/gtest.h>

// Qt's own singletons expect an application object; a widget one serves the window tests too.
// Without a display (CI, test discovery) it draws off screen.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
