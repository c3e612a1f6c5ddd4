#pragma once

#include "WindowSystem.h"

#include <QStringList>
#include <optional>

// Answers alerts and choosers from a script and records what the user would have seen.
class FakeWindowSystem : public WindowSystem {
 public:
  int runAlert(const QString& title, const QString& message, const QStringList&) override {
    alerts << title;
    alertMessages << message;
    return alertAnswers.isEmpty() ? 0 : alertAnswers.takeFirst();
  }
  void showProgressSheet(const QString& title, const QString&, int) override {
    progressTitles << title;
    ++openSheets;
  }
  void setProgressSubtitle(const QString&) override {}
  void increaseProgress() override { ++progressSteps; }
  bool progressCancelled() const override { return cancelAfterSteps >= 0 && progressSteps >= cancelAfterSteps; }
  QStringList runOpenPanel(const QString&, const QStringList& types, bool) override {
    openPanelTypes = types;
    return openPanelAnswer;
  }
  void closeProgressSheet() override { --openSheets; }
  int choose(const QString&, const QStringList& items) override { return items.isEmpty() ? -1 : chooseAnswer; }
  void displayNotice(const QString& text, double seconds) override {
    notices << text;
    noticeSeconds = seconds;
  }

  bool entryPageHasFocus() const override { return entryPageFocused; }
  void printEntryPage() override { ++entryPagesPrinted; }
  std::optional<PrintRequest> runPrintDialog(const PrintController&) override {
    ++printDialogs;
    return printAnswer;
  }

  QList<int> alertAnswers;
  int chooseAnswer = 0;
  QStringList alerts, alertMessages, progressTitles, notices;
  QStringList openPanelAnswer, openPanelTypes;
  int openSheets = 0;
  int progressSteps = 0, cancelAfterSteps = -1;  // the user cancels once that many steps are shown
  double noticeSeconds = 0;
  bool entryPageFocused = false;
  int entryPagesPrinted = 0, printDialogs = 0;
  std::optional<PrintRequest> printAnswer;  // nullopt cancels the print dialog
};
