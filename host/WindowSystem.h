#pragma once

#include "PrintRequest.h"

#include <QString>
#include <QStringList>
#include <optional>

class PrintController;

// How the product asks and tells the user things: the GUI shows dialogs and sheets, the command
// line prints and prompts, tests answer from a script.
class WindowSystem {
 public:
  virtual ~WindowSystem() = default;

  // Returns the index of the chosen button, 0 for the first.
  virtual int runAlert(const QString& title, const QString& message, const QStringList& buttons) = 0;
  // count 0 shows an indeterminate bar. One sheet at a time; whoever opens it closes it.
  virtual void showProgressSheet(const QString& title, const QString& subtitle, int count) = 0;
  virtual void setProgressSubtitle(const QString& subtitle) = 0;
  virtual void increaseProgress() = 0;
  virtual void closeProgressSheet() = 0;
  virtual bool progressCancelled() const { return false; }
  // The index of the chosen item, or -1 when the user chose none.
  virtual int choose(const QString& title, const QStringList& items) = 0;
  // An open panel: the chosen paths, empty when cancelled. types are file extensions; with
  // folders set, folders may be chosen too.
  virtual QStringList runOpenPanel(const QString& title, const QStringList& types, bool folders) {
    Q_UNUSED(title);
    Q_UNUSED(types);
    Q_UNUSED(folders);
    return {};
  }
  // A transient notice over the window for that many seconds.
  virtual void displayNotice(const QString& text, double seconds) = 0;
  // Whether the page view showing one entry has the focus of the front window, and printing
  // that page as it is shown.
  virtual bool entryPageHasFocus() const { return false; }
  virtual void printEntryPage() {}
  // Runs the print dialog over the panel's layouts and cover settings; nullopt when cancelled.
  virtual std::optional<PrintRequest> runPrintDialog(const PrintController& panel) {
    Q_UNUSED(panel);
    return std::nullopt;
  }
  // Brings the application in front of the others (un-hiding it without activating it first).
  virtual void bringToFront() {}
  // The internet search panel, searching the site's plug-in for the text (or reading the page
  // the text addresses); site "none" lets the user pick.
  virtual void showInternetSearchPanel(const QString& text, const QString& site) {
    Q_UNUSED(text);
    Q_UNUSED(site);
  }
  // The entries, the list or the selection changed outside the window (a selection made by a
  // link, an import): show them again.
  virtual void entriesDidChange() {}
  // The footer line under the entry list and the number of selected entries beside it.
  virtual void footerDidChange(const QString& footer, qsizetype selectedCount) {
    Q_UNUSED(footer);
    Q_UNUSED(selectedCount);
  }
};
