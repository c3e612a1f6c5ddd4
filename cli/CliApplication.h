#pragma once

#include <QStringList>

// Runs one command line: parses the global options, sets up the controller on the chosen
// catalogue and settings, and runs the command. Returns the exit status.
class CliApplication {
 public:
  static bool isCommand(const QString& word);
  // Whether the command line runs a command that paints (printing), which needs a
  // QGuiApplication where the others start faster with a QCoreApplication.
  static bool paints(const QStringList& arguments);
  static int run(const QStringList& arguments);
};
