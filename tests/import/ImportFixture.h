#pragma once

#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "Settings.h"
#include "TagLibReader.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

// A launched controller on a catalogue in a temporary folder, reading tags with TagLib.
class ImportFixture : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  TagLibReader reader;
  std::unique_ptr<MyController> controller;

  void SetUp() override {
    platform.reader = &reader;
    controller = std::make_unique<MyController>(settings, windowSystem, platform);
    controller->applicationWillFinishLaunching();
    ASSERT_TRUE(controller->openCatalogue(dir.filePath("Discary.sqlite")).ok());
    controller->applicationDidFinishLaunching();
    controller->waitForLibraryRefresh();
  }

  static std::vector<Track*> tracksOf(Entry* entry) { return entry->tracksSortedByPosition(); }
  static QStringList trackValues(Entry* entry, const QString& key) {
    QStringList values;
    for (Track* t : entry->tracksSortedByPosition()) values << t->value(key).toString();
    return values;
  }
};
