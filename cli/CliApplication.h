#pragma once

#include <QStringList>

// Runs one command line: parses the global options, sets up the controller on the chosen
// catalogue and settings, and runs the command. Returns the exit status.
class CliApplication {
 public:
  static bool isCommand(const QString& word);
  static int run(const QStringList& arguments);
};
