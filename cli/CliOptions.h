#pragma once

#include <QString>
#include <QHash>
#include <QStringList>
#include <optional>

// The global options and the words of one command line.
struct CliOptions {
  QString catalogue;
  QString settings;
  QString server;
  QString musicBrainzServer, coverServer;
  bool json = false;
  bool quiet = false;
  bool version = false;
  int button = 0;
  QStringList words;  // the command and its own arguments and options

  // nullopt with the message set on a usage error.
  static std::optional<CliOptions> parse(const QStringList& arguments, QString* message);
};

// The options of one command: "--name value" pairs, repeatable, flags and plain words.
class CommandArguments {
 public:
  // valueOptions take a value; flagOptions do not. Anything else starting with "--" is an error.
  static std::optional<CommandArguments> parse(const QStringList& words, const QStringList& valueOptions,
                                               const QStringList& flagOptions, QString* message);
  QStringList positional;
  bool has(const QString& option) const { return values_.contains(option) || flags_.contains(option); }
  QString value(const QString& option) const { return values_.value(option).value(0); }
  QStringList values(const QString& option) const { return values_.value(option); }

 private:
  QHash<QString, QStringList> values_;
  QStringList flags_;
};
