#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "PluginManager.h"
#include "Settings.h"
#include "SettingsKeys.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class MyControllerTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;

  std::unique_ptr<MyController> launch() {
    auto controller = std::make_unique<MyController>(settings, windowSystem, platform);
    controller->applicationWillFinishLaunching();
    EXPECT_TRUE(controller->openCatalogue(":memory:").ok());
    controller->applicationDidFinishLaunching();
    controller->waitForLibraryRefresh();
    return controller;
  }
};

TEST_F(MyControllerTest, RegistersTheDefaults) {
  auto controller = launch();
  EXPECT_EQ(MyController::registeredDefaults().keys(),
            (QStringList{"BezelDisplayTime", "Bottom Fields", "CellSize", "Cover Background", "Cover Border",
                         "DefaultColumns", "InfoTemplate", "Refresh Itunes Auto", "releaseDateFormat"}));
  // The program's own settings come from their own table; a mounted volume is never looked up unasked.
  const QVariantMap own = MyController::ownDefaults();
  EXPECT_EQ(own.keys(), (QStringList{"CDDB Hello Host", "CDDB Hello User", "CDDB Server", "CDDB Timeout", "Cover Art Server",
                                     "First Result Add", "Lookup Sources", "MusicBrainz Contact", "MusicBrainz Server",
                                     "ejectCD", "scanCD"}));
  EXPECT_EQ(settings.registeredDefaults().size(), 9 + own.size());
  EXPECT_FALSE(settings.boolForKey("scanCD"));
  EXPECT_FALSE(settings.boolForKey("ejectCD"));
  EXPECT_FALSE(settings.boolForKey("First Result Add"));
  EXPECT_EQ(settings.floatForKey("CDDB Timeout"), 30.0);
  EXPECT_EQ(settings.stringForKey("CDDB Hello User"), "discary");
  EXPECT_EQ(settings.stringForKey("CDDB Hello Host"), "localhost");
  EXPECT_EQ(settings.objectForKey("Lookup Sources").toStringList(), (QStringList{"MusicBrainz", "CDDB"}));
  EXPECT_EQ(settings.stringForKey("MusicBrainz Server"), "https://musicbrainz.org");
  EXPECT_EQ(settings.stringForKey("InfoTemplate"), "Collection.html");
  EXPECT_EQ(settings.stringForKey("releaseDateFormat"), "yyyy");
  EXPECT_TRUE(settings.boolForKey("Cover Border"));
  EXPECT_EQ(settings.floatForKey("Cover Background"), 1.0);
  EXPECT_EQ(settings.integerForKey("CellSize"), 150);
  EXPECT_EQ(settings.floatForKey("BezelDisplayTime"), 3.0);
  EXPECT_EQ(settings.objectForKey("Bottom Fields"), (QVariantList{true, true, false, false, true, true, false}));
  EXPECT_TRUE(settings.boolForKey("Refresh Itunes Auto"));
  QStringList columns;
  QList<double> widths;
  for (const QVariant& c : settings.objectForKey("DefaultColumns").toList()) {
    columns << c.toMap().value("identifier").toString();
    widths << c.toMap().value("width").toDouble();
  }
  EXPECT_EQ(columns, (QStringList{"statusImage", "title", "artist", "label", "myRating", "genre"}));
  EXPECT_EQ(widths, (QList<double>{18, 250, 150, 150, 77, 100}));
  settings.setObject("CellSize", 90);
  EXPECT_EQ(settings.integerForKey("CellSize"), 90);
  settings.removeObject("CellSize");
  EXPECT_EQ(settings.integerForKey("CellSize"), 150);
}

TEST_F(MyControllerTest, LaunchObservesMountsAndRegistersFreedbBeforeOrderingPlugins) {
  settings.setObject(PluginManager::orderKey, QStringList{"Freedb"});
  auto controller = launch();
  EXPECT_EQ(platform.mountHandlers.size(), 1u);
  EXPECT_NE(controller->pluginManager().pluginForName("Freedb"), nullptr);
  EXPECT_EQ(controller->pluginManager().pluginNames().value(0), "Freedb");
}

TEST_F(MyControllerTest, LibraryRefreshRunsAtMostOncePerThirtyDays) {
  const QDateTime now = QDateTime::currentDateTimeUtc();
  {
    auto first = launch();  // never refreshed
    EXPECT_EQ(platform.libraryReads, 1);
    EXPECT_LE(qAbs(settings.objectForKey("Last Itunes").toDateTime().secsTo(now)), 5);
  }
  launch();
  EXPECT_EQ(platform.libraryReads, 1);  // within 30 days
  settings.setObject("Last Itunes", now.addSecs(-MyController::libraryRefreshInterval + 60));
  launch();
  EXPECT_EQ(platform.libraryReads, 1);
  settings.setObject("Last Itunes", now.addSecs(-MyController::libraryRefreshInterval - 1));
  launch();
  EXPECT_EQ(platform.libraryReads, 2);

  const QDateTime old = now.addDays(-100);
  settings.setObject("Last Itunes", old);
  settings.setObject("Refresh Itunes Auto", "NO");
  launch();
  EXPECT_EQ(platform.libraryReads, 2);
  EXPECT_EQ(settings.objectForKey("Last Itunes").toDateTime(), old);
}

TEST_F(MyControllerTest, SearchTypesAutofillAndCollectionNaming) {
  auto controller = launch();
  const struct {
    int type;
    const char* label;
    const char* identifier;
  } types[] = {{1, "Search All", "title"},         {2, "Search", "title"},          {4, "Search Artists", "artist"},
               {6, "Search Composers", "composer"}, {9, "Search Track Names", "title"}, {12, "Search Track Others", "title"},
               {13, "Search", "title"},             {0, "Search", "title"},          {-3, "Search", "title"},
               {40, "Search", "releaseDate"},       {41, "Search", "title"},         {43, "Search", "customTag2"}};
  for (const auto& t : types) {
    EXPECT_EQ(controller->labelForSearchType(t.type), t.label) << t.type;
    EXPECT_EQ(controller->searchIdentifierForSearchType(t.type), t.identifier) << t.type;
  }
  controller->fieldsController()->setClickedField("purchasedAt");
  EXPECT_EQ(controller->searchIdentifierForSearchType(100), "purchasedAt");

  Entry* e = controller->managedObjectContext().insertEntry();
  e->setValue("genre", "Jazz");
  e->setValue("composer", "Monk");
  controller->addValuesToAutofillForEntry(*e);
  EXPECT_EQ(controller->comboBoxData().valuesForField("genre"), QStringList{"Jazz"});
  EXPECT_TRUE(controller->comboBoxData().valuesForField("composer").isEmpty());
  // The four are the product's; the pull-downs and the borrower are fed by the framework.
  e->setValue("purchasedAt", "Amoeba");
  e->setValue("borrowedBy", "Ann");
  controller->addValuesToAutofillForEntry(*e);
  EXPECT_TRUE(controller->comboBoxData().valuesForField("purchasedAt").isEmpty());
  controller->addEntryToAutofill(*e);
  EXPECT_EQ(controller->comboBoxData().valuesForField("purchasedAt"), QStringList{"Amoeba"});
  EXPECT_EQ(controller->comboBoxData().valuesForField("borrowedBy"), QStringList{"Ann"});
  EXPECT_TRUE(controller->comboBoxData().valuesForField("composer").isEmpty());
  EXPECT_EQ(controller->commonAttributesForNamingNewCollection(),
            (QStringList{"artist", "label", "composer", "conductor", "purchasedAt", "borrowedBy", "arrangedBy",
                         "producer", "mixedBy", "awards", "genre"}));
  Entry* f = controller->managedObjectContext().insertEntry();
  f->setValue("genre", "Jazz");
  f->setValue("label", "Blue Note");
  EXPECT_EQ(controller->proposedNameForNewCollection({e, f}), "Jazz");
}

TEST_F(MyControllerTest, AddPanelMakesAnEntryAndSearchFindsIt) {
  auto controller = launch();
  controller->addPanel().setFromDictionary(
      {{"title", "Giant Steps"}, {"artist", "John Coltrane"}, {"releaseDate", "1960"},
       {"tracks", QVariantList{QVariantMap{{"name", "Naima"}, {"duration", "4:21"}},
                               QVariantMap{{"name", "Mr. P.C."}, {"duration", "6:57"}}}}});
  Entry* e = controller->addEntryFromAddPanelCheckForDuplicates(true);
  ASSERT_NE(e, nullptr);
  EXPECT_EQ(e->value("numberOfTracks").toString(), "2");
  EXPECT_EQ(e->value("duration").toString(), "11:18");
  EXPECT_EQ(e->value("releaseDate").toDateTime(), QDateTime(QDate(1960, 7, 1), QTime(12, 0), Qt::UTC));
  EXPECT_TRUE(e->value("dateAdded").isValid());

  windowSystem.alertAnswers = {0};  // "Don't Add"
  EXPECT_EQ(controller->addEntryFromAddPanelCheckForDuplicates(true), nullptr);
  EXPECT_EQ(windowSystem.alerts.size(), 1);

  controller->search("naima", 9);
  EXPECT_EQ(controller->entriesController().arrangedObjects(), std::vector<Entry*>{e});
  controller->search("coltrane", 4);
  EXPECT_EQ(controller->entriesController().arrangedObjects().size(), 1u);
  controller->search("coltrane", 3);
  EXPECT_TRUE(controller->entriesController().arrangedObjects().empty());
  controller->search("", 3);
  EXPECT_EQ(controller->entriesController().arrangedObjects().size(), 1u);
}

}  // namespace
