#pragma once

#include "WindowSystem.h"

// A window system that shows nothing and answers every question with its first choice.
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
