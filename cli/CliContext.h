#pragma once

#include "CliOptions.h"
#include "Store.h"

#include <QString>

class CliWindowSystem;
class Entry;
class MyController;

// What every command works with, and the two ways a command fails.
struct CliContext {
  const CliOptions& options;
  MyController& controller;
  CliWindowSystem& windowSystem;

  // A usage error: one line on stderr, exit status 2.
  static int usage(const QString& message);
  // The operation did not succeed: one line on stderr, exit status 1.
  static int failure(const QString& message);
  // Prints the text on stdout as it stands.
  static void print(const QString& text);

  // ENTRY as a uid or an exact title; nullptr with the message set when none or several match.
  Entry* findEntry(const QString& reference, QString* message) const;
  // Shows the collection of that name in the list; false, with the message printed, when there is none.
  bool showCollection(const QString& name) const;
  // Saves, or prints why not; false when the save failed.
  bool save() const;
  // Opens the chosen catalogue (the default one without --catalogue), or prints why not.
  bool openCatalogue(Store::Loading loading = Store::Loading::AllEntries) const;
};
