#include "EntitySchema.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "PrintController.h"
#include "Settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class PrintCollectionTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};

  void SetUp() override {
    controller.applicationWillFinishLaunching();
    ASSERT_TRUE(controller.openCatalogue(":memory:").ok());
  }

  QStringList columnIdentifiers(int layout) const {
    QStringList identifiers;
    for (const auto& column : controller.printInstance()->columnsOfLayout(layout)) identifiers << column.identifier;
    return identifiers;
  }
};

TEST_F(PrintCollectionTest, FocusedEntryPageIsPrintedAsItIsAndNothingElseIsTouched) {
  windowSystem.entryPageFocused = true;
  controller.printCollection();
  EXPECT_EQ(windowSystem.entryPagesPrinted, 1);
  EXPECT_EQ(windowSystem.printDialogs, 0);
  EXPECT_EQ(controller.printInstance(), nullptr);
  EXPECT_FALSE(settings.registeredDefaults().contains("Print Cover Width"));
  EXPECT_FALSE(settings.registeredDefaults().contains("Print Cover Height"));
}

TEST_F(PrintCollectionTest, PanelGetsTheCoverSettingsAndAStoredSizeIsKept) {
  settings.setObject("Print Cover Width", "300");
  for (int run = 0; run < 2; ++run) controller.printCollection();
  EXPECT_EQ(windowSystem.printDialogs, 2);
  EXPECT_EQ(windowSystem.entryPagesPrinted, 0);
  EXPECT_EQ(settings.registeredDefaults().value("Print Cover Width"), QVariant("350"));
  EXPECT_EQ(settings.registeredDefaults().value("Print Cover Height"), QVariant("350"));
  EXPECT_EQ(settings.stringForKey("Print Cover Width"), "300");
  EXPECT_EQ(settings.stringForKey("Print Cover Height"), "350");

  const PrintController* panel = controller.printInstance();
  ASSERT_NE(panel, nullptr);
  EXPECT_EQ(panel, &controller.sharedPrint());
  EXPECT_EQ(panel->coverRatio(), 1.0);
  EXPECT_EQ(panel->coverSize(), QSizeF(300, 350));
  EXPECT_EQ(panel->coverDescriptionField, "350 x 350 is the standard case size.");

  controller.frameworkBundle().insert("RealTitles", "PrintSize", "350 x 350 est la taille standard.");
  controller.printCollection();
  EXPECT_EQ(panel->coverDescriptionField, "350 x 350 est la taille standard.");
}

TEST_F(PrintCollectionTest, FiveLayoutsInOrderWithWidthsAddingUpToOne) {
  controller.printCollection();
  const QVariantList layouts = controller.printInstance()->listColumns();
  ASSERT_EQ(layouts.size(), 5);
  QStringList names;
  for (const QVariant& l : layouts) names << l.toMap().value("name").toString();
  EXPECT_EQ(names, (QStringList{"Info", "Classical", "Value", "Borrowed", "Custom"}));

  const QVariantMap info = layouts[0].toMap();
  EXPECT_EQ(info.value("description").toString(),
            "Prints Title, Artist, Genre, My Rating and Duration for the selected collection.");
  EXPECT_EQ(info.value("columns").toStringList(),
            (QStringList{"title", ".34", "artist", ".20", "genre", ".20", "myRating", ".16", "duration", ".10"}));
  EXPECT_TRUE(layouts[1].toMap().value("description").toString().endsWith("use Page Setup)"));
  EXPECT_TRUE(layouts[2].toMap().value("description").toString().contains("Purchase At,"));

  for (int i = 0; i < 4; ++i) {
    const QStringList columns = layouts[i].toMap().value("columns").toStringList();
    ASSERT_EQ(columns.size(), 10) << i;
    int hundredths = 0;
    for (int c = 0; c < columns.size(); c += 2) {
      EXPECT_TRUE(EntitySchema::cd().has(columns[c])) << qPrintable(columns[c]);
      EXPECT_TRUE(columns[c + 1].startsWith('.')) << qPrintable(columns[c + 1]);
      hundredths += qRound(columns[c + 1].toDouble() * 100);
    }
    EXPECT_EQ(hundredths, 100) << i;
  }
  const QVariantMap custom = layouts[4].toMap();
  EXPECT_FALSE(custom.contains("columns"));
  EXPECT_EQ(custom.value("description").toString(),
            "Prints the current view of the entries in your collection. Use Page Setup to control orientation.");
}

TEST_F(PrintCollectionTest, CustomPrintsTheListColumnsInProportionToTheirWidths) {
  controller.printCollection();
  const PrintController& panel = *controller.printInstance();
  EXPECT_EQ(columnIdentifiers(4), (QStringList{"statusImage", "title", "artist", "label", "myRating", "genre"}));
  EXPECT_EQ(columnIdentifiers(1), (QStringList{"title", "artist", "composer", "conductor", "label"}));

  // The user's own column set, with a field that no longer exists.
  settings.setObject("DefaultColumns",
                     QVariantList{QVariantMap{{"identifier", "title"}}, QVariantMap{{"identifier", "gone"}},
                                  QVariantMap{{"identifier", "price"}}});
  const auto columns = panel.columnsOfLayout(4);
  ASSERT_EQ(columns.size(), 2u);
  EXPECT_EQ(columns[0].title, "Title");
  EXPECT_DOUBLE_EQ(columns[0].fraction, 250.0 / 305.0);
  EXPECT_DOUBLE_EQ(columns[0].fraction + columns[1].fraction, 1.0);
  EXPECT_TRUE(columns[1].trailing);  // a price lines up on its decimal places
  EXPECT_FALSE(columns[0].trailing);

  settings.setObject("DefaultColumns", QVariantList{});
  EXPECT_EQ(columnIdentifiers(4), QStringList{"title"});
}

}  // namespace
