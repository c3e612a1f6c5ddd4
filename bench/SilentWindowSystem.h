#pragma once

#include "WindowSystem.h"

// Answers every question with its first choice and shows nothing, so benchmarks time the work.
class SilentWindowSystem : public WindowSystem {
 public:
  int runAlert(const QString&, const QString&, const QStringList&) override { return 0; }
  void showProgressSheet(const QString&, const QString&, int) override {}
  void setProgressSubtitle(const QString&) override {}
  void increaseProgress() override {}
  void closeProgressSheet() override {}
  int choose(const QString&, const QStringList&) override { return -1; }
  void displayNotice(const QString&, double) override {}
};
