#include "CannedCddbServer.h"
#include "CannedHttpServer.h"
#include "CannedMusicBrainzServer.h"
#include "DiscScan.h"
#include "Entry.h"
#include "FakePlatform.h"
#include "FakeWindowSystem.h"
#include "Freedb.h"
#include "MusicPlayer.h"
#include "MyController.h"
#include "PropertyListReader.h"
#include "Settings.h"
#include "SettingsKeys.h"

#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString data = QStringLiteral(DISCARY_TEST_DATA "/disc/");

class FakePlayer : public MusicPlayer {
 public:
  std::optional<QVariantList> runScript(const QString& source, QString* errorMessage) override {
    scripts << source;
    if (!answer) *errorMessage = error;
    return answer;
  }
  std::optional<QVariantList> answer;
  QString error;
  QStringList scripts;
};

class DiscScanTest : public ::testing::Test {
 protected:
  CannedCddbServer server;
  QTemporaryDir dir, volume;
  Settings settings{dir.filePath("discary.conf")};
  FakeWindowSystem windowSystem;
  FakePlatform platform;
  std::unique_ptr<MyController> controller;

  void SetUp() override {
    QFile::copy(data + "derived_6a09f20a_10tracks.TOC.plist", volume.filePath(".TOC.plist"));
    controller = std::make_unique<MyController>(settings, windowSystem, platform);
    controller->applicationWillFinishLaunching();
    ASSERT_TRUE(controller->openCatalogue(":memory:").ok());
    settings.setObject(SettingsKeys::refreshItunesAuto, false);
    settings.setObject(SettingsKeys::cddbServer, server.address());
    // The CDDB workflow as it always was; the tests of both sources turn MusicBrainz on again.
    settings.setObject(SettingsKeys::lookupSources, QStringList{"CDDB"});
    controller->applicationDidFinishLaunching();
  }
  QStringList panelTrackNames() const {
    QStringList names;
    for (const QVariant& track : controller->addPanel().trackData().tracks()) names << track.toMap().value("name").toString();
    return names;
  }
};

TEST_F(DiscScanTest, mountingAnAudioCdScansItOnlyWhenAskedTo) {
  platform.mount(volume.path());  // never turned on: nothing goes online
  EXPECT_TRUE(windowSystem.progressTitles.isEmpty());
  EXPECT_TRUE(server.requests().isEmpty());
  settings.setObject(SettingsKeys::scanCD, true);
  QTemporaryDir dataDisc;
  platform.mount(dataDisc.path());
  EXPECT_TRUE(windowSystem.progressTitles.isEmpty());
  platform.mount(volume.path());
  EXPECT_EQ(windowSystem.progressTitles, QStringList{"Scanning..."});
  EXPECT_EQ(windowSystem.openSheets, 0);
  EXPECT_TRUE(controller->addPanel().isVisible());
  EXPECT_EQ(controller->addPanel().valueForKey("title").toString(), QStringLiteral("Chagall Guevara"));
}

TEST_F(DiscScanTest, anAudioCdPutInADriveIsScannedFromThatDriveAndEjectedFromIt) {
  const QVariantMap toc = PropertyListReader::readDictionary(volume.filePath(".TOC.plist")).value();
  platform.insertAudioDisc("/dev/sr1", toc);  // "scanCD" off
  EXPECT_TRUE(windowSystem.progressTitles.isEmpty());
  EXPECT_TRUE(server.requests().isEmpty());

  settings.setObject(SettingsKeys::scanCD, true);
  settings.setObject(SettingsKeys::firstResultAdd, true);
  settings.setObject(SettingsKeys::ejectCD, true);
  platform.insertAudioDisc("/dev/sr1", toc);
  EXPECT_EQ(windowSystem.progressTitles, QStringList{"Scanning..."});
  EXPECT_EQ(platform.ejected, QStringList{"/dev/sr1"});
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  EXPECT_EQ(controller->managedObjectContext().entries().front()->stringValue("title"), QStringLiteral("Chagall Guevara"));
  // Later scans read the default place again.
  EXPECT_TRUE(controller->freedb().tocSource().device.isEmpty());
}

TEST_F(DiscScanTest, oneMatchIsAddedAtOnceAndTheDiscEjectedFirst) {
  platform.volumes = {volume.path()};
  settings.setObject(SettingsKeys::firstResultAdd, true);
  settings.setObject(SettingsKeys::ejectCD, true);
  controller->scanDisc();
  EXPECT_EQ(platform.ejected, QStringList{volume.path()});
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  EXPECT_EQ(controller->managedObjectContext().entries().front()->stringValue("title"), QStringLiteral("Chagall Guevara"));
  EXPECT_EQ(windowSystem.notices, QStringList{"Chagall Guevara"});
  EXPECT_FALSE(controller->addPanel().isVisible());
}

TEST_F(DiscScanTest, noMatchOffersManualEntryWithOneTrackPerTrackOfTheDisc) {
  platform.volumes = {volume.path()};
  server.queryReply = "202 No match found\n";
  windowSystem.alertAnswers = {1};
  controller->scanDisc();
  EXPECT_EQ(windowSystem.alerts, QStringList{"Action Required"});
  ASSERT_TRUE(controller->addPanel().isVisible());
  const QStringList names = panelTrackNames();
  ASSERT_EQ(names.size(), 10);
  EXPECT_EQ(names.first(), QStringLiteral("Track 1"));
  EXPECT_EQ(names.last(), QStringLiteral("Track 10"));
  const QVariantList tracksBefore = controller->addPanel().trackData().tracks();
  EXPECT_EQ(tracksBefore.first().toMap().value("duration").toString(), QStringLiteral("3:39"));

  // Ejected before the answer: the lookup's own durations, with their leading zero entry, so
  // every real track comes one place later.
  windowSystem.alerts.clear();
  windowSystem.alertAnswers = {1};
  settings.setObject(SettingsKeys::ejectCD, true);
  controller->scanDisc();
  EXPECT_EQ(platform.ejected, QStringList{volume.path()});
  EXPECT_TRUE(platform.volumes.isEmpty());
  EXPECT_EQ(windowSystem.alerts, QStringList{"Action Required"});  // no match; no "No CD" after the eject
  ASSERT_TRUE(controller->addPanel().isVisible());
  const QVariantList afterEject = controller->addPanel().trackData().tracks();
  ASSERT_EQ(afterEject.size(), 11);
  for (int k = 0; k < afterEject.size(); ++k)
    EXPECT_EQ(afterEject[k].toMap().value("name").toString(), QStringLiteral("Track %1").arg(k + 1));
  EXPECT_EQ(afterEject.first().toMap().value("duration").toString(), QStringLiteral("0:00"));
  EXPECT_EQ(afterEject.at(1).toMap().value("duration").toString(), QStringLiteral("3:39"));
  EXPECT_EQ(afterEject.last().toMap().value("duration"), tracksBefore.last().toMap().value("duration"));
  EXPECT_TRUE(controller->addPanel().valueForKey("title").toString().isEmpty());
}

TEST_F(DiscScanTest, severalMatchesGoToTheChooserAndTheChosenOneToThePanel) {
  platform.volumes = {volume.path()};
  server.queryReply = "211 inexact\nrock 9a0bed0d A / First\nmisc 9a0bed0d B / Second\n.\n";
  windowSystem.chooseAnswer = 1;
  controller->scanDisc();
  ASSERT_TRUE(controller->addPanel().isVisible());
  EXPECT_EQ(controller->addPanel().valueForKey("title").toString(), QStringLiteral("Chagall Guevara"));
  EXPECT_EQ(controller->addPanel().resultIndex(), 1);
  EXPECT_TRUE(server.requests().last().body.startsWith("cmd=cddb+read+misc+9a0bed0d"));
}

TEST_F(DiscScanTest, fillInformationFromCdAccumulatesTheIdentifiersOfSeveralDiscs) {
  platform.volumes = {volume.path()};
  controller->fillInformationFromCD();
  controller->fillInformationFromCD();
  EXPECT_EQ(controller->addPanel().valueForKey("discID").toString(), QStringLiteral("6a09f20a"));
  EXPECT_EQ(controller->addPanel().trackData().tracks().size(), 10);
  QFile::remove(volume.filePath(".TOC.plist"));
  QFile::copy(data + "derived_9d09130b_11tracks.TOC.plist", volume.filePath(".TOC.plist"));
  controller->fillInformationFromCD();
  EXPECT_EQ(controller->addPanel().valueForKey("discID").toString(), QStringLiteral("6a09f20a, 9d09130b"));
}

TEST_F(DiscScanTest, theDiscsOwnCatalogueNumberBecomesTheEntrysBarcode) {
  // A disc in the drive (no volume) whose subchannel holds the release's EAN-13.
  QVariantMap drive = *platform.propertyListDictionary(data + "derived_6a09f20a_10tracks.TOC.plist");
  drive["Media Catalog Number"] = "4006381333931";
  platform.drive = drive;
  settings.setObject(SettingsKeys::firstResultAdd, true);
  controller->scanDisc();
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  Entry* added = controller->managedObjectContext().entries().front();
  EXPECT_EQ(added->stringValue("title"), QStringLiteral("Chagall Guevara"));
  EXPECT_EQ(added->stringValue("upc"), QStringLiteral("4006381333931"));
  EXPECT_EQ(added->stringValue("barcodeSource"), QStringLiteral("Disc"));

  // No match: the manual entry gets it too. A disc of zeros, or a misread code, gives none.
  server.queryReply = "202 No match found\n";
  windowSystem.alertAnswers = {1};
  controller->scanDisc();
  EXPECT_EQ(controller->addPanel().valueForKey("upc").toString(), QStringLiteral("4006381333931"));
  for (const char* unusable : {"0000000000000", "4006381333932"}) {
    drive["Media Catalog Number"] = unusable;
    platform.drive = drive;
    controller->addPanel().clear();
    controller->fillInformationFromCD();
    EXPECT_EQ(controller->addPanel().valueForKey("discID").toString(), QStringLiteral("6a09f20a"));
    EXPECT_TRUE(controller->addPanel().valueForKey("upc").toString().isEmpty()) << unusable;
  }
}

TEST_F(DiscScanTest, tracksAddedByHandAreNamedByTheirPlaceUnlessNamedAlready) {
  platform.volumes = {volume.path()};
  controller->addPanel().trackData().setTracks({QVariantMap{{"name", "Intro"}}, QVariantMap{}});
  controller->fillInformationFromCD();
  controller->nameUnnamedTracks();
  const QVariantList tracks = controller->addPanel().trackData().tracks();
  ASSERT_EQ(tracks.size(), 10);
  EXPECT_EQ(tracks.first().toMap().value("name").toString(), QStringLiteral("Intro"));
  EXPECT_EQ(tracks.at(1).toMap().value("name").toString(), QStringLiteral("Track 2"));
  EXPECT_EQ(tracks.last().toMap().value("name").toString(), QStringLiteral("Track 10"));
  EXPECT_FALSE(tracks.last().toMap().value("duration").toString().isEmpty());
}

TEST_F(DiscScanTest, aServerThatNeverAnswersEndsInTheNoMatchAlertWithinTheTimeOut) {
  CannedHttpServer silent([](const CannedHttpServer::Request&) { return std::optional<QByteArray>(); });
  settings.setObject(SettingsKeys::cddbServer, silent.address());
  settings.setObject(SettingsKeys::cddbTimeout, 1.0);
  platform.volumes = {volume.path()};
  QElapsedTimer clock;
  clock.start();
  controller->scanDisc();
  EXPECT_LT(clock.elapsed(), 10000);  // generous: the time-out is one second
  EXPECT_EQ(windowSystem.alerts, QStringList{"Action Required"});
  EXPECT_EQ(windowSystem.openSheets, 0);
}

TEST_F(DiscScanTest, aDiscThePlayerKnowsNeverReachesTheNetwork) {
  FakePlayer player;
  platform.player = &player;
  player.answer = QVariantList{"Album", "Rock", "1999", "", 2, QStringList{"One", "Two"}, QStringList{"3:00", "4:30"},
                               QStringList{"Band", "band"}, QStringList{"", ""}};
  platform.volumes = {volume.path()};
  controller->scanDisc();
  EXPECT_TRUE(server.requests().isEmpty());
  EXPECT_TRUE(player.scripts.first().contains("tell application \"iTunes\""));  // the fake system is version 6
  EXPECT_TRUE(player.scripts.first().contains("with timeout 20 seconds"));
  const QVariantMap values = controller->addPanel().values();
  EXPECT_EQ(values.value("discID").toString(), QStringLiteral("6a09f20a"));
  EXPECT_EQ(values.value("artist").toString(), QStringLiteral("Band"));  // differing only in case
  EXPECT_FALSE(values.contains("composer"));
  EXPECT_EQ(values.value("duration").toString(), QStringLiteral("7:30"));
  EXPECT_EQ(values.value("releaseDate").toDateTime().date().year(), 1999);
  EXPECT_FALSE(controller->addPanel().trackData().tracks().first().toMap().contains("artist"));

  // No CD in the player: its sheet, then the online lookup.
  player.answer.reset();
  player.error = QStringLiteral("The variable importedCD is not defined.");
  controller->scanDisc();
  EXPECT_EQ(windowSystem.alerts.first(), QStringLiteral("No CD"));
  EXPECT_FALSE(server.requests().isEmpty());
}

TEST_F(DiscScanTest, thePlayersNineItemsBecomeAResultDictionary) {
  const QVariantList compilation{"Mix", "Pop", "", "Writer", 3, QStringList{"a", "b", "c"}, QStringList{"1:00", "2:00", "3:00"},
                                 QStringList{"X", "Y"}, QStringList{"P", "Q"}};
  const QVariantMap mix = *controller->dictionaryFromPlayerItems(compilation);
  EXPECT_EQ(mix.value("artist").toString(), QStringLiteral("Various"));
  EXPECT_EQ(mix.value("composer").toString(), QStringLiteral("Writer"));
  EXPECT_FALSE(mix.contains("releaseDate"));
  const QVariantList tracks = mix.value("tracks").toList();
  ASSERT_EQ(tracks.size(), 2);  // the artists list decides
  EXPECT_EQ(tracks.at(1).toMap().value("artist").toString(), QStringLiteral("Y"));
  EXPECT_EQ(tracks.at(1).toMap().value("composer").toString(), QStringLiteral("Q"));

  const QVariantMap empty = *controller->dictionaryFromPlayerItems({"T", "G", "", "", 0, QStringList{}, QStringList{},
                                                                   QStringList{}, QStringList{}});
  EXPECT_EQ(empty, (QVariantMap{{"title", "T"}, {"genre", "G"}}));
  EXPECT_FALSE(controller->dictionaryFromPlayerItems({"too", "few"}));
}

class DiscScanSourcesTest : public DiscScanTest {
 protected:
  CannedMusicBrainzServer musicBrainz;
  QTemporaryDir elevenTracks;

  void SetUp() override {
    DiscScanTest::SetUp();
    ASSERT_TRUE(controller->openCatalogue(dir.filePath("Discary.sqlite")).ok());  // covers need a data folder
    settings.removeObject(SettingsKeys::lookupSources);  // the defaults: MusicBrainz, then CDDB
    settings.setObject(SettingsKeys::musicBrainzServer, musicBrainz.root());
    settings.setObject(SettingsKeys::coverArtServer, musicBrainz.root());
    QFile::copy(data + "derived_9d09130b_11tracks.TOC.plist", elevenTracks.filePath(".TOC.plist"));
    platform.volumes = {elevenTracks.path()};
  }
};

TEST_F(DiscScanSourcesTest, musicBrainzAnswersFirstWithLabelBarcodeAndCover) {
  platform.mount(elevenTracks.path());  // "scanCD" is off: nobody is asked anything
  EXPECT_TRUE(musicBrainz.requests().isEmpty());
  settings.setObject(SettingsKeys::firstResultAdd, true);
  controller->scanDisc();
  EXPECT_TRUE(server.requests().isEmpty());  // CDDB is not asked once MusicBrainz knows the disc
  ASSERT_EQ(controller->managedObjectContext().entries().size(), 1u);
  Entry* entry = controller->managedObjectContext().entries().front();
  EXPECT_EQ(entry->stringValue("title"), QStringLiteral("Written Answers"));
  EXPECT_EQ(entry->stringValue("artist"), QStringLiteral("The Sample Ensemble"));
  EXPECT_EQ(entry->stringValue("label"), QStringLiteral("Example Records"));
  EXPECT_EQ(entry->stringValue("upc"), QStringLiteral("0123456789012"));
  EXPECT_EQ(entry->stringValue("releaseID"), QStringLiteral("c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f"));
  EXPECT_EQ(entry->stringValue("musicBrainzDiscID"), QStringLiteral("aHTAZe.MDUz3OgyV0zQLSQiO.Js-"));
  EXPECT_EQ(entry->stringValue("discID"), QStringLiteral("9d09130b"));
  EXPECT_EQ(entry->tracksSortedByPosition().size(), 11u);
  const QImage cover(controller->managedObjectContext().coverPathOf(entry->uid()));
  EXPECT_EQ(cover.size(), QSize(300, 300));
}

TEST_F(DiscScanSourcesTest, aSourceThatDoesNotAnswerIsSaidInItsOwnWordsBeforeTheNextIsTried) {
  musicBrainz.discReplies.clear();  // MusicBrainz knows nothing: CDDB answers, and nobody complains
  controller->scanDisc();
  EXPECT_EQ(controller->addPanel().valueForKey("title").toString(), QStringLiteral("Chagall Guevara"));
  EXPECT_TRUE(windowSystem.notices.isEmpty());

  musicBrainz.slowDowns = 2;
  controller->scanDisc();
  EXPECT_EQ(controller->addPanel().valueForKey("title").toString(), QStringLiteral("Chagall Guevara"));
  ASSERT_EQ(windowSystem.notices.size(), 1);
  EXPECT_TRUE(windowSystem.notices.first().startsWith("MusicBrainz: HTTP status 503"));

  // Neither knows the disc, and the CDDB server refuses the client: not "no match", but why.
  server.queryReply = "500 Unknown developer email\n";
  controller->scanDisc();
  ASSERT_EQ(windowSystem.alertMessages.size(), 1);
  EXPECT_TRUE(windowSystem.alertMessages.first().contains("CDDB: 500 Unknown developer email"));
  EXPECT_FALSE(windowSystem.alertMessages.first().contains("no match"));
  server.queryReply = "202 No match found\n";
  controller->scanDisc();
  EXPECT_TRUE(windowSystem.alertMessages.last().contains("no match"));
}

TEST(DiscScanNamingTest, unnamedTracksAreNumberedByTheirPlaceOnTheDisc) {
  const QVariantList named = DiscScan::namedTracks(
      {QVariantMap{{"duration", "1:00"}}, QVariantMap{{"name", "Intro"}}, QVariant(), QVariantMap{{"name", ""}}});
  EXPECT_EQ(named.value(0).toMap(), (QVariantMap{{"duration", "1:00"}, {"name", "Track 1"}}));
  EXPECT_EQ(named.value(1).toMap(), (QVariantMap{{"name", "Intro"}}));
  EXPECT_EQ(named.value(2).toMap(), (QVariantMap{{"name", "Track 3"}}));
  EXPECT_EQ(named.value(3).toMap(), (QVariantMap{{"name", ""}}));  // a name given empty stays the user's
  EXPECT_TRUE(DiscScan::namedTracks({}).isEmpty());
}

}  // namespace
