#include "CliRunner.h"
#include "SqliteDatabase.h"
#include "SqliteStatement.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

namespace {

class SharedCatalogueCliTest : public ::testing::Test {
 protected:
  QTemporaryDir dir;
  CliRunner cli{dir.path()};
  QString catalogue() const { return dir.filePath("c/Discary.sqlite"); }
  // A discary command started and left running, as a second program would be.
  std::unique_ptr<QProcess> start(const QStringList& args) {
    auto process = std::make_unique<QProcess>();
    process->start(DISCARY_BINARY,
                   QStringList{"--catalogue", catalogue(), "--settings", dir.filePath("d.conf"), "--quiet"} + args);
    EXPECT_TRUE(process->waitForStarted());
    return process;
  }
  QJsonArray listed() { return cli.run({"--json", "list"}).json().toArray(); }
};

TEST_F(SharedCatalogueCliTest, TwoProgramsEditingDifferentFieldsOfOneEntryAtOnceKeepBoth) {
  ASSERT_EQ(cli.run({"add", "title=Kind of Blue", "artist=Miles Davis"}).status, 0);
  constexpr int rounds = 8;
  for (int i = 1; i <= rounds; ++i) {
    auto genre = start({"edit", "Kind of Blue", QStringLiteral("genre=Jazz %1").arg(i)});
    auto label = start({"edit", "Kind of Blue", QStringLiteral("label=Columbia %1").arg(i)});
    ASSERT_TRUE(genre->waitForFinished(60000) && label->waitForFinished(60000));
    ASSERT_EQ(genre->exitCode(), 0) << genre->readAllStandardError().toStdString();
    ASSERT_EQ(label->exitCode(), 0) << label->readAllStandardError().toStdString();
    const QJsonObject entry = listed().at(0).toObject();
    EXPECT_EQ(entry.value("genre").toString(), QStringLiteral("Jazz %1").arg(i));
    EXPECT_EQ(entry.value("label").toString(), QStringLiteral("Columbia %1").arg(i));
    EXPECT_EQ(entry.value("artist").toString(), "Miles Davis");
  }
}

TEST_F(SharedCatalogueCliTest, KillingACommandAtAnyMomentLosesNothingThatWasReportedSaved) {
  QElapsedTimer whole;
  whole.start();
  ASSERT_EQ(cli.run({"add", "title=Kept"}).status, 0);
  const int span = int(whole.elapsed()) * 3 / 2 + 1;  // kills land anywhere in a command's life
  QSet<QString> reported;
  int killed = 0;
  for (int i = 0; i < 40; ++i) {
    const QString title = QStringLiteral("Take %1").arg(i);
    auto add =
        start({"--json", "add", "title=" + title, "--collection", "Takes", "--track", "name=Intro;duration=1:00"});
    QThread::msleep(QRandomGenerator::global()->bounded(span));
    add->kill();
    add->waitForFinished(60000);
    killed += add->exitStatus() == QProcess::CrashExit ? 1 : 0;
    if (add->exitStatus() == QProcess::NormalExit && add->exitCode() == 0 &&
        QJsonDocument::fromJson(add->readAllStandardOutput()).object().value("title") == title)
      reported << title;
  }
  SqliteDatabase db;
  ASSERT_TRUE(db.open(catalogue(), SQLITE_OPEN_READWRITE));
  SqliteStatement check(db.handle(), "PRAGMA integrity_check");
  ASSERT_EQ(check.step(), SQLITE_ROW);
  EXPECT_EQ(check.text(0), "ok");

  QSet<QString> present;
  for (const QJsonValue& v : listed()) {
    const QJsonObject entry = v.toObject();
    present << entry.value("title").toString();
    if (entry.value("title").toString().startsWith("Take")) {
      EXPECT_EQ(entry.value("tracks").toArray().size(), 1) << entry.value("title").toString().toStdString();
      EXPECT_EQ(entry.value("collections").toArray(), QJsonArray{"Takes"});
    }
  }
  EXPECT_TRUE(present.contains("Kept"));
  for (const QString& title : reported) EXPECT_TRUE(present.contains(title)) << title.toStdString();
  std::printf("%d of 40 killed, %lld reported saved\n", killed, qint64(reported.size()));
  EXPECT_EQ(cli.run({"add", "title=After"}).status, 0);  // and the file goes on working
}

}  // namespace
