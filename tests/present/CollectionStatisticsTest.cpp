#include "CollectionStatistics.h"
#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "Settings.h"
#include "Store.h"

#include <QLocale>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using Grouping = CollectionStatistics::Grouping;

// Five entries whose figures are counted by hand in the tests below.
class CollectionStatisticsTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  MyController controller{settings, windowSystem, platform};
  CollectionStatistics statistics;

  void SetUp() override {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    controller.applicationWillFinishLaunching();
    ASSERT_TRUE(controller.openCatalogue(":memory:").ok());
    const auto utc = [](int y, int m, int d) { return QDateTime(QDate(y, m, d), QTime(12, 0), Qt::UTC); };
    add({{"title", "a"}, {"artist", "Ann"}, {"genre", "Rock, Pop"}, {"label", "EMI"}, {"format", "CD"},
         {"releaseDate", utc(1979, 6, 1)}, {"duration", "40:00"}, {"price", "10.50"}, {"dateAdded", utc(2024, 1, 15)}});
    add({{"title", "b"}, {"artist", "ann"}, {"genre", " rock "}, {"label", "EMI"}, {"format", "Vinyl"},
         {"releaseDate", utc(1985, 1, 1)}, {"duration", "45:30"}, {"price", "20"}, {"dateAdded", utc(2024, 3, 2)}});
    add({{"title", "c"}, {"genre", "Jazz"}, {"label", ""}, {"format", "CD"}, {"releaseDate", utc(1989, 12, 31)},
         {"price", "abc"}, {"dateAdded", utc(2024, 3, 20)}});
    add({{"title", "d"}, {"format", "CD"}, {"duration", "1:00:00"}, {"price", "0.25"}, {"dateAdded", QVariant()}});
    add({{"title", "e"}, {"genre", "Jazz"}, {"releaseDate", utc(2001, 7, 7)}, {"duration", "30:00"}, {"price", "5"},
         {"dateAdded", utc(2024, 1, 1)}});
  }
  void TearDown() override { QLocale::setDefault(QLocale::system()); }

  void add(const QVariantMap& values) {
    Entry* e = controller.managedObjectContext().insertEntry();
    for (auto it = values.begin(); it != values.end(); ++it) e->setPrimitiveValue(it.key(), it.value());
  }
  const std::vector<Entry*>& shown() {
    controller.search(QString(), 1);
    return controller.entriesController().arrangedObjects();
  }
  // "name count seconds value" per group.
  QStringList figures(Grouping by) {
    QStringList lines;
    for (const auto& g : statistics.groups(shown(), by))
      lines << QStringLiteral("%1 %2 %3 %4").arg(g.name).arg(g.entries.size()).arg(g.seconds()).arg(g.value().formatted(2));
    return lines;
  }
};

TEST_F(CollectionStatisticsTest, GroupsMatchTheHandCountedFigures) {
  // The first genre decides; case and blanks do not split a group; ties go by name.
  EXPECT_EQ(figures(Grouping::Genre), QStringList({"Jazz 2 1800 5.00", "Rock 2 5130 30.50", "(none) 1 3600 0.25"}));
  EXPECT_EQ(figures(Grouping::Decade),
            QStringList({"1970s 1 2400 10.50", "1980s 2 2730 20.00", "2000s 1 1800 5.00", "(none) 1 3600 0.25"}));
  EXPECT_EQ(figures(Grouping::Label), QStringList({"EMI 2 5130 30.50", "(none) 3 5400 5.25"}));
  EXPECT_EQ(figures(Grouping::Format), QStringList({"CD 3 6000 10.75", "Vinyl 1 2730 20.00", "(none) 1 1800 5.00"}));
  EXPECT_EQ(figures(Grouping::Artist), QStringList({"Ann 2 5130 30.50", "(none) 3 5400 5.25"}));

  EXPECT_EQ(CollectionStatistics::groupingNamed("Decade"), Grouping::Decade);
  EXPECT_FALSE(CollectionStatistics::groupingNamed("year"));
}

TEST_F(CollectionStatisticsTest, GroupsAddUpToTheFooter) {
  const QVariantMap footer = controller.collectionTotalsDictionaryFor(shown(), false);
  ASSERT_EQ(footer["totalPrice"], "35.75");
  for (const QString& name : CollectionStatistics::groupingNames()) {
    EntryFigures::Sums sum;
    for (const auto& g : statistics.groups(shown(), *CollectionStatistics::groupingNamed(name))) sum += g.sums;
    EXPECT_EQ(QString::number(sum.entries), footer["totalEntries"].toString()) << name.toStdString();
    EXPECT_EQ(Decimal::fromCompactSum(sum.price).formatted(2), footer["totalPrice"].toString()) << name.toStdString();
    EXPECT_EQ(qint64(sum.seconds), 10530) << name.toStdString();  // 2.92 hours in the footer
    EXPECT_EQ(QString::number(qint64(sum.discs)), footer["totalDiscs"].toString());
  }
  EXPECT_EQ(footer["totalDuration"], "2.92 Hours");
}

TEST_F(CollectionStatisticsTest, TimelineCountsEntriesAddedPerMonthOrYear) {
  bool byYear = true;
  const auto months = CollectionStatistics::addedOverTime(shown(), &byYear);
  EXPECT_FALSE(byYear);
  ASSERT_EQ(months.size(), 3u);  // February has none but keeps its place
  EXPECT_EQ(months[0].start, QDate(2024, 1, 1));
  EXPECT_EQ(months[0].count, 2);
  EXPECT_EQ(months[1].count, 0);
  EXPECT_EQ(months[2].count, 2);

  add({{"title", "old"}, {"dateAdded", QDateTime(QDate(2019, 5, 5), QTime(), Qt::UTC)}});
  const auto years = CollectionStatistics::addedOverTime(shown(), &byYear);
  EXPECT_TRUE(byYear);
  ASSERT_EQ(years.size(), 6u);
  EXPECT_EQ(years.front().start, QDate(2019, 1, 1));
  EXPECT_EQ(years.front().count, 1);
  EXPECT_EQ(years.back().count, 4);
  EXPECT_TRUE(CollectionStatistics::addedOverTime({}, &byYear).empty());
}

}  // namespace
