#include "QtWindowSystem.h"

#include "NoticeOverlay.h"
#include "PrintDialog.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextBrowser>
#include <QInputDialog>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <utility>

namespace {

// Fixed texts the product layer hands over without a key of the string table; they are
// translated here, where they are shown. Texts with a value built in (a file name, a count)
// cannot be matched and stay as made.
[[maybe_unused]] constexpr const char* productTexts[] = {
    QT_TRANSLATE_NOOP("ProductText", "OK"),
    QT_TRANSLATE_NOOP("ProductText", "No CD"),
    QT_TRANSLATE_NOOP("ProductText", "No audio CD with a readable table of contents was found."),
    QT_TRANSLATE_NOOP("ProductText", "There is no CD information available in iTunes, make sure a CD has been inserted."),
    QT_TRANSLATE_NOOP("ProductText", "File format not recognized."),
    QT_TRANSLATE_NOOP("ProductText", "No entry matches this request."),
    QT_TRANSLATE_NOOP("ProductText", "The package holds no template."),
    QT_TRANSLATE_NOOP("ProductText", "Import"),
    QT_TRANSLATE_NOOP("ProductText", "File Error"),
    QT_TRANSLATE_NOOP("ProductText",
                      "There was an error moving the file to the data folder and the file has not been moved."),
};

QString shown(const QString& text) { return QCoreApplication::translate("ProductText", text.toUtf8().constData()); }

}  // namespace

void QtWindowSystem::beginAlertBatch() { batchedAlerts_.emplace(); }

void QtWindowSystem::endAlertBatch() {
  const QStringList kept = batchedAlerts_.value_or(QStringList());
  batchedAlerts_.reset();
  batchSubject_.clear();
  if (kept.size() == 1) runAlert(tr("A file was skipped."), kept.front(), {});
  else if (!kept.isEmpty()) runAlert(tr("%n files were skipped.", nullptr, int(kept.size())), kept.join(u'\n'), {});
}

int QtWindowSystem::runAlert(const QString& title, const QString& message, const QStringList& buttons) {
  if (batchedAlerts_ && buttons.size() <= 1) {
    const QString said = message.isEmpty() ? title : message;
    *batchedAlerts_ << (batchSubject_.isEmpty() || said.contains(batchSubject_) ? said : batchSubject_ + QStringLiteral(": ") + said);
    return 0;
  }
  // A window-modal sheet over the window would take the clicks meant for the alert.
  if (progress_) {
    // Nor may it come up by itself while the alert is up, when its minimum duration has passed:
    // its own timer stops when it is shown, here off screen.
    if (!progress_->isVisible()) {
      progress_->setAttribute(Qt::WA_DontShowOnScreen, true);
      progress_->show();
      progress_->setAttribute(Qt::WA_DontShowOnScreen, false);
    }
    progress_->hide();
    progressHiddenForAlert_ = true;
  }
  QMessageBox box(window_);
  box.setIcon(QMessageBox::Warning);
  box.setText(shown(title));
  box.setInformativeText(shown(message));
  box.setWindowModality(Qt::WindowModal);
  QList<QAbstractButton*> added;
  // The first button is the default, as the product orders them.
  for (const QString& label : buttons.isEmpty() ? QStringList{tr("OK")} : buttons)
    added << box.addButton(shown(label), added.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
  box.setDefaultButton(qobject_cast<QPushButton*>(added.first()));
  box.exec();
  const qsizetype index = added.indexOf(box.clickedButton());
  return index < 0 ? 0 : int(index);
}

void QtWindowSystem::showProgressSheet(const QString& title, const QString& subtitle, int count) {
  closeProgressSheet();
  progress_ = new QProgressDialog(subtitle, tr("Cancel"), 0, count, window_);
  progress_->setWindowTitle(shown(title));
  progress_->setWindowModality(Qt::WindowModal);
  progress_->setMinimumDuration(300);
  progress_->setAutoClose(false);
  progress_->setAutoReset(false);
  progress_->setValue(0);
  QApplication::processEvents();
}

void QtWindowSystem::setProgressSubtitle(const QString& subtitle) {
  if (!progress_) return;
  resumeProgress();
  progress_->setLabelText(subtitle);
  QApplication::processEvents();
}

void QtWindowSystem::increaseProgress() {
  if (!progress_) return;
  resumeProgress();
  if (progress_->maximum() > 0) progress_->setValue(qMin(progress_->value() + 1, progress_->maximum()));
  QApplication::processEvents();
}

void QtWindowSystem::closeProgressSheet() {
  if (!progress_) return;
  // Hidden now, and its timer stopped: the deletion waits for the outer event loop, and during an
  // alert's own loop the sheet would stay up, or come up by itself, over the alert.
  progress_->reset();
  progress_->hide();
  progress_->deleteLater();
  progress_.clear();
  progressHiddenForAlert_ = false;
}

void QtWindowSystem::resumeProgress() {
  // Work that goes on after an alert brings its sheet back.
  if (!std::exchange(progressHiddenForAlert_, false)) return;
  progress_->show();
}

bool QtWindowSystem::progressCancelled() const { return progress_ && progress_->wasCanceled(); }

QStringList QtWindowSystem::runOpenPanel(const QString& title, const QStringList& types, bool folders) {
  QStringList patterns;
  for (const QString& type : types)
    if (type != QLatin1String("TEXT")) patterns << QStringLiteral("*.%1").arg(type);
  QFileDialog dialog(window_, title);
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters({tr("Importable files (%1)").arg(patterns.join(u' ')), tr("All files (*)")});
  // Folders open on double-click in this dialog, so a folder export is picked by its info.xml,
  // and a folder of music by the button below.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  QString folder;
  if (folders) {
    auto* button = new QPushButton(tr("Import This Folder"), &dialog);
    button->setObjectName(QStringLiteral("chooseFolder"));
    button->setToolTip(tr("Imports the music files of the folder selected, or else of the folder shown."));
    QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, &folder] {
      const QFileInfo selected(dialog.selectedFiles().value(0));
      folder = selected.isDir() ? selected.absoluteFilePath() : dialog.directory().absolutePath();
      dialog.reject();
    });
    if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
      grid->addWidget(button, grid->rowCount(), 0, 1, grid->columnCount(), Qt::AlignLeft);
  }
  const int answer = dialog.exec();
  if (!folder.isEmpty()) return {folder};
  if (answer != QDialog::Accepted) return {};
  QStringList chosen = dialog.selectedFiles();
  for (QString& path : chosen) {
    const QFileInfo info(path);
    if (folders && info.fileName() == QLatin1String("info.xml") &&
        info.dir().dirName().endsWith(QLatin1String(".discary"), Qt::CaseInsensitive))
      path = info.absolutePath();
  }
  return chosen;
}

int QtWindowSystem::choose(const QString& title, const QStringList& items) {
  if (items.isEmpty()) return -1;
  bool ok = false;
  const QString chosen = QInputDialog::getItem(window_, title, title, items, 0, false, &ok);
  return ok ? int(items.indexOf(chosen)) : -1;
}

void QtWindowSystem::displayNotice(const QString& text, double seconds) {
  if (window_) NoticeOverlay::show(window_, text, seconds);
}

void QtWindowSystem::footerDidChange(const QString& footer, qsizetype selectedCount) {
  Q_EMIT footerChanged(footer, selectedCount);
}

QtWindowSystem::~QtWindowSystem() = default;

bool QtWindowSystem::entryPageHasFocus() const { return page_ && page_->hasFocus(); }

void QtWindowSystem::printEntryPage() {
  if (!page_) return;
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, window_);
  if (dialog.exec() == QDialog::Accepted) page_->print(&printer);
}

std::optional<PrintRequest> QtWindowSystem::runPrintDialog(const PrintController& panel) {
  PrintDialog dialog(panel, window_);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  PrintRequest request = dialog.request();
  if (dialog.destination() == PrintDialog::Destination::Pdf) {
    request.pdfPath = QFileDialog::getSaveFileName(window_, tr("Save as PDF"), tr("Collection.pdf"), tr("PDF files (*.pdf)"));
    if (request.pdfPath.isEmpty()) return std::nullopt;
    chosenPdf_ = request.pdfPath;
    return request;
  }
  printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer_->setPageOrientation(request.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
  QPrintDialog printDialog(printer_.get(), window_);
  if (printDialog.exec() != QDialog::Accepted) return std::nullopt;
  request.device = printer_.get();
  return request;
}

void QtWindowSystem::bringToFront() {
  if (!window_) return;
  if (window_->isMinimized()) window_->showNormal();
  window_->raise();
  window_->activateWindow();
}
