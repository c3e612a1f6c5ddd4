#pragma once

#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "Settings.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// A launched controller on a catalogue file in a temporary folder, so covers have a home.
class ImportTestBase : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;

  std::unique_ptr<MyController> launch(const QString& catalogue = "catalogue/Discary.sqlite") {
    QDir(dir.path()).mkpath(QFileInfo(dir.filePath(catalogue)).path());
    auto controller = std::make_unique<MyController>(settings, windowSystem, platform);
    controller->applicationWillFinishLaunching();
    EXPECT_TRUE(controller->openCatalogue(dir.filePath(catalogue)).ok());
    return controller;
  }

  QString write(const QString& name, const QByteArray& bytes) {
    const QString path = dir.filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return path;
  }

  static Entry* entryTitled(MyController& controller, const QString& title) {
    for (Entry* e : controller.managedObjectContext().entries())
      if (e->stringValue("title") == title) return e;
    return nullptr;
  }
};
