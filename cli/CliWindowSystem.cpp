#include "CliWindowSystem.h"

#include "PrintController.h"

#include <QTextStream>
#include <unistd.h>

CliWindowSystem::CliWindowSystem(int button, bool quiet)
    : button_(button), quiet_(quiet), interactive_(isatty(STDIN_FILENO) && isatty(STDERR_FILENO)) {}

void CliWindowSystem::inform(const QString& text) const {
  if (!quiet_) std::fprintf(stderr, "%s\n", qPrintable(text));
}

int CliWindowSystem::ask(const QString& prompt, int count) const {
  std::fprintf(stderr, "%s ", qPrintable(prompt));
  QTextStream in(stdin);
  const QString line = in.readLine();
  bool ok = false;
  const int n = line.trimmed().toInt(&ok);
  return ok && n >= 1 && n <= count ? n - 1 : 0;
}

int CliWindowSystem::runAlert(const QString& title, const QString& message, const QStringList& buttons) {
  // Said even when the answer is given in advance: the alert is often the only word of what went wrong.
  std::fprintf(stderr, "%s\n", qPrintable(title));
  if (!message.isEmpty()) std::fprintf(stderr, "%s\n", qPrintable(message));
  if (buttons.isEmpty()) return 0;
  if (button_ > 0) return qMin(button_, int(buttons.size())) - 1;
  // A lone button only acknowledges: nothing to ask.
  if (!interactive_ || buttons.size() == 1) return 0;
  QStringList choices;
  for (int i = 0; i < buttons.size(); ++i) choices << QStringLiteral("%1) %2").arg(i + 1).arg(buttons[i]);
  return ask(choices.join(QStringLiteral("  ")) + QStringLiteral(" [1]:"), int(buttons.size()));
}

int CliWindowSystem::choose(const QString& title, const QStringList& items) {
  if (items.isEmpty()) return -1;
  if (button_ > 0) return qMin(button_, int(items.size())) - 1;
  if (!interactive_) return 0;
  std::fprintf(stderr, "%s\n", qPrintable(title));
  for (int i = 0; i < items.size(); ++i) std::fprintf(stderr, "%3d) %s\n", i + 1, qPrintable(items[i]));
  return ask(QStringLiteral("Choose [1]:"), int(items.size()));
}

void CliWindowSystem::showProgressSheet(const QString& title, const QString& subtitle, int count) {
  title_ = title;
  subtitle_ = subtitle;
  count_ = count;
  done_ = 0;
  barShown_ = !quiet_ && isatty(STDERR_FILENO);
  drawBar();
}

void CliWindowSystem::setProgressSubtitle(const QString& subtitle) {
  subtitle_ = subtitle;
  drawBar();
}

void CliWindowSystem::increaseProgress() {
  ++done_;
  drawBar();
}

void CliWindowSystem::closeProgressSheet() {
  if (barShown_) std::fprintf(stderr, "\r\033[K");
  barShown_ = false;
}

void CliWindowSystem::drawBar() const {
  if (!barShown_) return;
  QString line = title_;
  if (count_ > 0) {
    const int width = 30, filled = int(qint64(width) * qMin(done_, count_) / count_);
    line += QStringLiteral(" [%1%2] %3/%4").arg(QString(filled, QLatin1Char('#')), QString(width - filled, QLatin1Char(' '))).arg(done_).arg(count_);
  }
  if (!subtitle_.isEmpty()) line += QStringLiteral(" ") + subtitle_;
  std::fprintf(stderr, "\r\033[K%s", qPrintable(line.left(120)));
}

void CliWindowSystem::displayNotice(const QString& text, double) { inform(text); }

std::optional<PrintRequest> CliWindowSystem::runPrintDialog(const PrintController& panel) {
  printDialogProblem_.clear();
  if (!printAnswer_) return std::nullopt;
  PrintRequest request;
  request.covers = printAnswer_->covers;
  request.landscape = printAnswer_->landscape;
  request.pdfPath = printAnswer_->pdfPath;
  if (request.covers) return request;
  QStringList names;
  for (const QVariant& layout : panel.listColumns()) {
    const QString name = layout.toMap().value(PrintController::layoutNameKey).toString();
    if (name.compare(printAnswer_->layout, Qt::CaseInsensitive) == 0) return request;
    names << name;
    ++request.layout;
  }
  printDialogProblem_ =
      QStringLiteral("unknown layout '%1' (one of %2)").arg(printAnswer_->layout, names.join(QStringLiteral(", ")));
  return std::nullopt;
}
