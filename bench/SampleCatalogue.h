#pragma once

#include "Entry.h"
#include "MyController.h"
#include "NoDesktop.h"
#include "Settings.h"
#include "SilentWindowSystem.h"

#include <QTemporaryDir>

// An in-memory catalogue of n albums with the fields the list, search and footer read.
struct SampleCatalogue {
  QTemporaryDir dir;
  Settings settings{dir.filePath("bench.conf")};
  SilentWindowSystem windowSystem;
  NoDesktop platform;
  MyController controller{settings, windowSystem, platform};

  explicit SampleCatalogue(int n) {
    controller.applicationWillFinishLaunching();
    controller.openCatalogue(QStringLiteral(":memory:"));
    fill(controller.managedObjectContext(), n);
    controller.entriesController().rearrangeObjects();
  }

  // Adds n such albums to a store, unsaved.
  static void fill(Store& store, int n) {
    for (int i = 0; i < n; ++i) {
      Entry* e = store.insertEntry();
      e->setPrimitiveValue("title", QStringLiteral("Album %1").arg(i));
      e->setPrimitiveValue("artist", QStringLiteral("Artist %1").arg(i % 5000));
      e->setPrimitiveValue("label", QStringLiteral("Label %1").arg(i % 300));
      e->setPrimitiveValue("genre", QString::fromLatin1(i % 3 ? "Jazz" : "Rock"));
      e->setPrimitiveValue("price", QStringLiteral("%1.99").arg(5 + i % 20));
      e->setPrimitiveValue("paid", QStringLiteral("%1.50").arg(3 + i % 15));
      e->setPrimitiveValue("status", qint64(i % 17 == 0 ? 1 : i % 23 == 0 ? 2 : 0));
      e->setPrimitiveValue("duration", QStringLiteral("%1:%2").arg(30 + i % 40).arg(i % 60, 2, 10, QLatin1Char('0')));
      if (i % 9 == 0) e->setPrimitiveValue("discs", QStringLiteral("2"));
    }
  }
};

