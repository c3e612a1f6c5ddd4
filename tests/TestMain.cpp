#include <QCoreApplication>
#include <gtest/gtest.h>

// Qt's own singletons expect an application object; without one some leak at exit.
int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
