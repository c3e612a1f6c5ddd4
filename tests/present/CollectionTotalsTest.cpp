#include "CollectionTotals.h"
#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "Settings.h"
#include "Store.h"
#include "TimeText.h"
#include "TrackData.h"

#include <QLocale>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString minus = QString(QChar(0x2212));

class CollectionTotalsTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};

  void SetUp() override {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    controller.applicationWillFinishLaunching();
    ASSERT_TRUE(controller.openCatalogue(":memory:").ok());
  }
  void TearDown() override { QLocale::setDefault(QLocale::system()); }

  Entry* add(const QVariantMap& values) {
    Entry* e = controller.managedObjectContext().insertEntry();
    for (auto it = values.begin(); it != values.end(); ++it) EXPECT_TRUE(e->setPrimitiveValue(it.key(), it.value()));
    return e;
  }
  const std::vector<Entry*>& shown() {
    controller.entriesController().rearrangeObjects();
    return controller.entriesController().arrangedObjects();
  }
  QVariantMap everything() { return controller.collectionTotalsDictionaryFor(shown(), false); }
};

TEST_F(CollectionTotalsTest, CountsDiscsMoneyAndStatus) {
  Entry* a = add({{"title", "a"}, {"status", 1}, {"price", "1,234.50"}, {"paid", "$10"}});
  add({{"title", "b"}, {"status", 2}, {"discs", "0"}, {"price", "0.25"}, {"paid", "-23.5"}});
  add({{"title", "c"}, {"status", 1}, {"discs", "3"}, {"price", "abc"}});
  const QVariantMap t = everything();
  EXPECT_EQ(t["totalEntries"], "3");
  EXPECT_EQ(t["totalBorrowed"], "2");
  EXPECT_EQ(t["totalWanted"], "1");
  EXPECT_EQ(t["totalDiscs"], "4");  // one for no count, none for "0", three
  EXPECT_EQ(t["totalPrice"], "1,234.75");
  EXPECT_EQ(t["totalPaid"], minus + "13.50");
  EXPECT_FALSE(t.contains("totalDuration"));

  // Figures are kept between calls; an edit must show at once.
  a->setValue("price", "1");
  a->setValue("status", 0);
  EXPECT_EQ(everything()["totalPrice"], "1.25");
  EXPECT_EQ(everything()["totalBorrowed"], "1");
}

TEST_F(CollectionTotalsTest, SumsAreExactAndStopAtTheEndsOfTheirRange) {
  const QString largestCount = "9223372036854775807";
  add({{"title", "a"}, {"price", "16777217"}, {"paid", QString(400, '9')}, {"discs", largestCount},
       {"duration", "99999999999999999999:00"}});
  add({{"title", "b"}, {"price", "0.1"}, {"paid", "1e308"}, {"discs", largestCount}, {"duration", "99999999999999999999:00"}});
  add({{"title", "c"}, {"price", "0.2"}, {"discs", "2147483647"}});
  add({{"title", "d"}, {"price", "0.005"}});
  const QVariantMap t = everything();
  EXPECT_EQ(t["totalPrice"], "16,777,217.31");  // a float sum says 16,777,216.00
  // One amount counts for some 9.2 trillion at the most; "1e308" reads as 1, as myFloatValue reads it.
  EXPECT_EQ(t["totalPaid"].toString(), "9,223,372,036,855.78");
  EXPECT_EQ(t["totalDiscs"], "9,223,372,036,854,775,807");
  EXPECT_EQ(t["totalDuration"], "106,751,991,167,300.64 Days");
}

TEST_F(CollectionTotalsTest, PlayTimeInDaysHoursOrThePreviousTotal) {
  for (int i = 0; i < 96; ++i) add({{"title", QString::number(i)}, {"duration", "45:00"}});
  EXPECT_EQ(everything()["totalDuration"], "3.00 Days");

  for (Entry* e : std::vector<Entry*>(controller.managedObjectContext().entries()))
    controller.managedObjectContext().deleteEntry(e);
  for (int i = 0; i < 24; ++i) add({{"title", QString::number(i)}, {"duration", "60:00"}});
  EXPECT_EQ(everything()["totalDuration"], "24.00 Hours");  // exactly 1,440 minutes is not yet days

  for (Entry* e : std::vector<Entry*>(controller.managedObjectContext().entries()))
    controller.managedObjectContext().deleteEntry(e);
  add({{"title", "short"}, {"duration", "0:30"}, {"paid", "2"}});
  add({{"title", "untimed"}, {"duration", ""}});
  EXPECT_EQ(everything()["totalDuration"], "2.00");  // under a minute: the last total computed, "totalPaid"
  settings.setObject("Bottom Fields", QVariantList{true, true, false, false, true, false, false});
  EXPECT_EQ(controller.collectionTotalsDictionaryFor(shown(), true)["totalDuration"], "0");  // "totalWanted"
}

TEST_F(CollectionTotalsTest, FooterDescribesTheListOrASelectionOfTwoOrMore) {
  Entry* a = add({{"title", "a"}, {"status", 1}, {"price", "10"}, {"duration", "50:00"}});
  Entry* b = add({{"title", "b"}, {"price", "5"}, {"paid", "4"}, {"duration", "20:00"}});
  add({{"title", "c"}, {"status", 2}, {"price", "1"}, {"discs", "2"}});
  shown();

  controller.entriesController().setSelectedObjects({a});
  controller.refreshCollectionStatistics();
  EXPECT_FALSE(controller.multipleSelection);
  EXPECT_EQ(controller.windowFooterString, "3 Albums | 1 Borrowed | Value: 16.00 | 1.17 Hours");

  settings.setObject("Bottom Fields", QVariantList{false, false, true, true, false, false, true});
  controller.entriesController().setSelectedObjects({a, b});
  controller.refreshCollectionStatistics();
  EXPECT_TRUE(controller.multipleSelection);
  // The count is shown for any selection of two or more; it counts the entries the list shows.
  EXPECT_EQ(controller.windowFooterString, "3 Albums | 0 Wanted | 2 Discs | Spent: 4.00");
}

TEST_F(CollectionTotalsTest, TrackPlayTimeReadsOnlyTheFirstColon) {
  EXPECT_EQ(MyController::totalDuration({QVariantMap{{"duration", "3:45"}}, QVariantMap{{"duration", "4:15"}}}), "8:00");
  EXPECT_EQ(MyController::totalDuration({QVariantMap{{"duration", "1:02:03"}}, QVariantMap{{"duration", "58"}}}), "2:00");
  EXPECT_TRUE(MyController::totalDuration({QVariantMap{{"duration", ""}}, QVariantMap{}}).isNull());
  EXPECT_TRUE(MyController::totalDuration({}).isNull());
  // Times a person typed are read whole, and their sum stops at the largest time.
  EXPECT_EQ(TrackData::totalDuration({QVariantMap{{"duration", "1:02:03"}}, QVariantMap{{"duration", "0:58"}}}), "63:01");
  const QVariantMap endless{{"duration", QString(30, '9')}};
  EXPECT_EQ(TrackData::totalDuration({endless, endless}),
            TimeText::timeStringWithSeconds(std::numeric_limits<qint64>::max()));
}

}  // namespace
