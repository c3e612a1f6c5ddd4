#pragma once

#include "Entry.h"
#include "EntryTableModel.h"
#include "FakePlatform.h"
#include "MainWindow.h"
#include "MyController.h"
#include "QtWindowSystem.h"
#include "Settings.h"
#include "Store.h"

#include <QLocale>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

// What the window tests share: a launched controller on a catalogue in a scratch folder, in US
// English so that dates and money read the same on every machine.
template <typename WindowSystem = QtWindowSystem>
class WindowTestBase : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  WindowSystem windowSystem;
  FakePlatform platform;
  std::unique_ptr<MyController> controller;

  void launch(const QString& catalogue) {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    controller = std::make_unique<MyController>(settings, windowSystem, platform);
    controller->applicationWillFinishLaunching();
    ASSERT_TRUE(controller->openCatalogue(catalogue).ok());
  }
  void TearDown() override { QLocale::setDefault(QLocale::system()); }

  Entry* add(const QVariantMap& values) {
    Entry* e = controller->managedObjectContext().insertEntry();
    for (auto it = values.begin(); it != values.end(); ++it) e->setPrimitiveValue(it.key(), it.value());
    return e;
  }
  static QStringList shownTitles(const MainWindow& window) {
    QStringList titles;
    for (int row = 0; row < window.listModel()->rowCount(); ++row) titles << window.listModel()->entryAt(row)->stringValue("title");
    return titles;
  }
};
