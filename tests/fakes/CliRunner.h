#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// Runs the discary program as a user would, on the catalogue "c/Discary.sqlite" and the settings
// file "d.conf" in the given folder, and keeps what it printed and how it ended.
class CliRunner {
 public:
  struct Outcome {
    int status;  // -1 when the program crashed
    QByteArray out, err;
    // The printed JSON document, an array or an object.
    QJsonValue json() const;
    QJsonObject object() const { return json().toObject(); }
  };

  explicit CliRunner(const QString& folder) : folder_(folder) {}
  // Given to every run when set; empty runs with the test's own environment.
  QProcessEnvironment environment;
  Outcome run(const QStringList& args, const QString& workingDirectory = {}) const;

 private:
  QString folder_;
};
