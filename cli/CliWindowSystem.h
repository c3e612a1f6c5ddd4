#pragma once

#include "WindowSystem.h"

#include <cstdio>

// The window system of the command line: alerts are answered by --button, else asked on the
// terminal, else the first button is taken; progress is a bar on stderr when it is a terminal.
class CliWindowSystem : public WindowSystem {
 public:
  // button: 1-based answer to every alert, 0 to ask or take the first.
  CliWindowSystem(int button, bool quiet);

  int runAlert(const QString& title, const QString& message, const QStringList& buttons) override;
  void showProgressSheet(const QString& title, const QString& subtitle, int count) override;
  void setProgressSubtitle(const QString& subtitle) override;
  void increaseProgress() override;
  void closeProgressSheet() override;
  int choose(const QString& title, const QStringList& items) override;
  void displayNotice(const QString& text, double seconds) override;

  // Prints an informational line on stderr unless quiet.
  void inform(const QString& text) const;

 private:
  int ask(const QString& prompt, int count) const;
  void drawBar() const;

  int button_;
  bool quiet_;
  bool interactive_;
  bool barShown_ = false;
  QString title_, subtitle_;
  int count_ = 0, done_ = 0;
};
