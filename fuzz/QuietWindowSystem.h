#pragma once

#include "WindowSystem.h"

// A user who answers every alert with its first button, never cancels and keeps no record, so
// that a long fuzzing run does not grow with what it was shown.
class QuietWindowSystem : public WindowSystem {
 public:
  int runAlert(const QString&, const QString&, const QStringList&) override { return 0; }
  void showProgressSheet(const QString&, const QString&, int) override {}
  void setProgressSubtitle(const QString&) override {}
  void increaseProgress() override {}
  void closeProgressSheet() override {}
  int choose(const QString&, const QStringList& items) override { return items.isEmpty() ? -1 : 0; }
  void displayNotice(const QString&, double) override {}
};
