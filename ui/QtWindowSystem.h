#pragma once

#include "WindowSystem.h"

#include <QObject>
#include <QPointer>
#include <QPrinter>
#include <QTextBrowser>
#include <memory>
#include <optional>
#include <utility>


class QProgressDialog;
class QWidget;

// The window system of the desktop application: message boxes for alerts, a window-modal
// progress dialog for the progress sheet, a list dialog for choices, a fading notice.
class QtWindowSystem : public QObject, public WindowSystem {
  Q_OBJECT
 public:
  ~QtWindowSystem() override;
  // Dialogs are shown over the window; until there is one they are free-standing.
  void setWindow(QWidget* window) { window_ = window; }
  // The view that shows the selected entry's page.
  void setPageView(QTextBrowser* page) { page_ = page; }

  int runAlert(const QString& title, const QString& message, const QStringList& buttons) override;
  // While several files are imported at once, alerts that only inform (one button) are kept and
  // shown together, in one alert, when the batch ends.
  void beginAlertBatch();
  // The file the next kept alerts are about, named in the list unless they name it themselves.
  void setAlertBatchSubject(const QString& name) { batchSubject_ = name; }
  void endAlertBatch();
  void showProgressSheet(const QString& title, const QString& subtitle, int count) override;
  void setProgressSubtitle(const QString& subtitle) override;
  void increaseProgress() override;
  void closeProgressSheet() override;
  bool progressCancelled() const override;
  int choose(const QString& title, const QStringList& items) override;
  QStringList runOpenPanel(const QString& title, const QStringList& types, bool folders) override;
  void displayNotice(const QString& text, double seconds) override;
  void footerDidChange(const QString& footer, qsizetype selectedCount) override;
  void entriesDidChange() override { Q_EMIT entriesChanged(); }
  void bringToFront() override;
  void showInternetSearchPanel(const QString& text, const QString& site) override {
    Q_EMIT internetSearchRequested(text, site);
  }
  bool entryPageHasFocus() const override;
  void printEntryPage() override;
  std::optional<PrintRequest> runPrintDialog(const PrintController& panel) override;
  // The PDF file chosen in the print panel since the last call, if any.
  QString takeChosenPdf() { return std::exchange(chosenPdf_, QString()); }

 Q_SIGNALS:
  void footerChanged(const QString& footer, qsizetype selectedCount);
  void entriesChanged();
  void internetSearchRequested(const QString& text, const QString& site);

 private:
  void resumeProgress();

  QPointer<QWidget> window_;
  QPointer<QProgressDialog> progress_;
  bool progressHiddenForAlert_ = false;
  std::optional<QStringList> batchedAlerts_;
  QString batchSubject_;
  QString chosenPdf_;
  QPointer<QTextBrowser> page_;
  // Lives until the next print: the print controller paints on it after the dialog closed.
  std::unique_ptr<QPrinter> printer_;
};
