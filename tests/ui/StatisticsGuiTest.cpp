#include "BarChart.h"
#include "CatalogueHistory.h"
#include "CliRunner.h"
#include "DuplicatesDialog.h"
#include "Entry.h"
#include "MainWindow.h"
#include "StatisticsDialog.h"
#include "WindowTestBase.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

class StatisticsGuiTest : public WindowTestBase<> {
 protected:
  void SetUp() override {
    QDir().mkpath(dir.filePath("c"));
    launch(dir.filePath("c/Discary.sqlite"));
    const auto added = [](int y, int m) { return QDateTime(QDate(y, m, 10), QTime(9, 0), Qt::UTC); };
    add({{"title", "Kind of Blue"}, {"artist", "Miles Davis"}, {"genre", "Jazz"}, {"releaseID", "kob"},
         {"price", "10"}, {"dateAdded", added(2024, 1)}});
    add({{"title", "Kind Of Blue"}, {"artist", "Miles Davis"}, {"genre", "Jazz"}, {"releaseID", "kob"},
         {"label", "Columbia"}, {"dateAdded", added(2024, 3)}});
    add({{"title", "Abbey Road"}, {"artist", "The Beatles"}, {"genre", "Rock"}, {"dateAdded", added(2024, 3)}});
    add({{"title", "Blue Train"}, {"artist", "John Coltrane"}, {"dateAdded", added(2024, 4)}});
    ASSERT_TRUE(controller->saveManagedObjectContext());
  }
  static QAction* action(MainWindow& window, const char* name) { return window.findChild<QAction*>(QLatin1String(name)); }
};

TEST_F(StatisticsGuiTest, StatisticsShowABarPerGroupAndATimeline) {
  MainWindow window(*controller, windowSystem);
  ASSERT_TRUE(action(window, "showStatistics"));
  action(window, "showStatistics")->trigger();
  auto* dialog = window.findChild<StatisticsDialog*>();
  ASSERT_TRUE(dialog && dialog->isVisible());
  EXPECT_FALSE(dialog->grouping().accessibleName().isEmpty());
  // Genre first: Jazz (2), Rock (1), none (1).
  ASSERT_EQ(dialog->groupChart().bars().size(), 3u);
  EXPECT_EQ(dialog->groupChart().bars()[0].label, "Jazz");
  EXPECT_EQ(dialog->groupChart().bars()[0].value, 2);
  EXPECT_EQ(dialog->table().item(0, 3)->text(), "10.00");
  EXPECT_EQ(dialog->table().rowCount(), 3);
  // January to April, each month in its place.
  ASSERT_EQ(dialog->timeline().bars().size(), 4u);
  EXPECT_EQ(dialog->timeline().bars()[2].value, 2);

  dialog->grouping().setCurrentIndex(int(CollectionStatistics::Grouping::Artist));
  ASSERT_EQ(dialog->groupChart().bars().size(), 3u);
  EXPECT_EQ(dialog->groupChart().bars()[0].label, "Miles Davis");
  EXPECT_FALSE(dialog->groupChart().grab().isNull());
}

TEST_F(StatisticsGuiTest, DuplicatesMergeIntoOneEntryAsOneUndoStep) {
  MainWindow window(*controller, windowSystem);
  action(window, "showDuplicates")->trigger();
  auto* dialog = window.findChild<DuplicatesDialog*>();
  ASSERT_TRUE(dialog && dialog->isVisible());
  QTreeWidget& tree = dialog->tree();
  ASSERT_EQ(tree.topLevelItemCount(), 2);
  QTreeWidgetItem* same = tree.topLevelItem(0);
  ASSERT_EQ(same->childCount(), 1);
  QTreeWidgetItem* group = same->child(0);
  ASSERT_EQ(group->childCount(), 2);
  // The title differs in case and the label is only in one: both are marked.
  const int titleColumn = 0;
  EXPECT_TRUE(group->child(0)->font(titleColumn).bold());
  EXPECT_EQ(tree.topLevelItem(1)->childCount(), 0);
  EXPECT_FALSE(dialog->mergeButton().isEnabled());

  group->setSelected(true);
  ASSERT_TRUE(dialog->mergeButton().isEnabled());
  dialog->mergeButton().click();
  EXPECT_EQ(tree.topLevelItem(0)->childCount(), 0);
  EXPECT_EQ(shownTitles(window).size(), 3);

  // Saved before it says so: another program reads one entry with both entries' values.
  const QJsonArray listed = CliRunner(dir.path()).run({"--json", "list", "--search", "Blue"}).json().toArray();
  ASSERT_EQ(listed.size(), 2);
  const QJsonObject merged = listed[0].toObject()["title"] == "Kind of Blue" ? listed[0].toObject() : listed[1].toObject();
  EXPECT_EQ(merged["label"], "Columbia");
  EXPECT_EQ(merged["price"], "10");

  window.history()->stack().undo();
  EXPECT_EQ(controller->managedObjectContext().entries().size(), 4u);
  EXPECT_EQ(CliRunner(dir.path()).run({"--json", "list"}).json().toArray().size(), 4);
}

}  // namespace
