#pragma once

#include "WindowSystem.h"

#include <cstdio>
#include <optional>

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
  // The command line names its files itself.
  QStringList runOpenPanel(const QString&, const QStringList&, bool) override { return {}; }
  int choose(const QString& title, const QStringList& items) override;
  void displayNotice(const QString& text, double seconds) override;
  std::optional<PrintRequest> runPrintDialog(const PrintController& panel) override;

  // The print dialog's answer, taken from the command's options: a layout by name (any case) or
  // the covers, into a PDF. Without one the dialog is cancelled.
  struct PrintAnswer {
    QString layout;
    bool covers = false;
    bool landscape = false;
    QString pdfPath;
  };
  void answerPrintDialogWith(const PrintAnswer& answer) { printAnswer_ = answer; }
  // Why the last print dialog could not be answered (no layout of that name), or empty.
  const QString& printDialogProblem() const { return printDialogProblem_; }

  // The command line has no panel: it remembers what the panel was asked to search.
  void showInternetSearchPanel(const QString& text, const QString& site) override {
    searchPanelText_ = text;
    searchPanelSite_ = site;
  }
  const QString& searchPanelText() const { return searchPanelText_; }
  const QString& searchPanelSite() const { return searchPanelSite_; }

  // Prints an informational line on stderr unless quiet.
  void inform(const QString& text) const;

 private:
  QString searchPanelText_, searchPanelSite_;
  int ask(const QString& prompt, int count) const;
  void drawBar() const;

  int button_;
  bool quiet_;
  bool interactive_;
  bool barShown_ = false;
  QString title_, subtitle_;
  int count_ = 0, done_ = 0;
  std::optional<PrintAnswer> printAnswer_;
  QString printDialogProblem_;
};
