#include "CliRunner.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <gtest/gtest.h>

QJsonValue CliRunner::Outcome::json() const {
  const QJsonDocument document = QJsonDocument::fromJson(out);
  return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

CliRunner::Outcome CliRunner::run(const QStringList& args, const QString& workingDirectory) const {
  const QDir folder(folder_);
  QProcess process;
  if (!workingDirectory.isEmpty()) process.setWorkingDirectory(workingDirectory);
  if (!environment.isEmpty()) process.setProcessEnvironment(environment);
  const QStringList files{"--catalogue", folder.filePath("c/Discary.sqlite"), "--settings", folder.filePath("d.conf")};
  process.start(DISCARY_BINARY, files + QStringList{"--quiet"} + args);
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished(60000));
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
          process.readAllStandardError()};
}
