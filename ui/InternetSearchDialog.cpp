#include "InternetSearchDialog.h"

#include "CdKeys.h"
#include "Freedb.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

InternetSearchDialog::InternetSearchDialog(Freedb& site, QWidget* parent)
    : QDialog(parent), site_(site), field_(new QLineEdit(this)), results_(new QListWidget(this)), status_(new QLabel(this)) {
  status_->setWordWrap(true);
  setWindowTitle(tr("Internet Search: %1").arg(site.pluginName()));
  setObjectName(QStringLiteral("internetSearch"));
  field_->setPlaceholderText(tr("Artist and title, a disc identifier, or a result page address"));
  auto* find = new QPushButton(tr("Search"), this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText(tr("Use Result"));
  connect(find, &QPushButton::clicked, this, &InternetSearchDialog::search);
  connect(field_, &QLineEdit::returnPressed, this, &InternetSearchDialog::search);
  connect(results_, &QListWidget::itemActivated, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* row = new QHBoxLayout;
  row->addWidget(field_);
  row->addWidget(find);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(row);
  layout->addWidget(results_);
  layout->addWidget(status_);
  layout->addWidget(buttons);
  resize(520, 420);
}

void InternetSearchDialog::search() {
  const QString text = field_->text().trimmed();
  if (text.isEmpty()) return;
  results_->clear();
  status_->setText(tr("Searching…"));
  static const QRegularExpression identifier(QStringLiteral("^[0-9a-fA-F]{8}$"));
  const QVariantMap request = identifier.match(text).hasMatch() ? QVariantMap{{CdKeys::discID, text}}
                                                                : QVariantMap{{QStringLiteral("keyword"), text}};
  QPointer<InternetSearchDialog> self(this);
  site_.searchFor(request, [self](int count, Freedb&) {
    if (self) self->searchReturned(count);
  });
}

void InternetSearchDialog::searchReturned(int count) {
  results_->clear();
  results_->addItems(site_.resultsTitles());
  if (results_->count() > 0) results_->setCurrentRow(0);
  if (count == 0)
    status_->setText(site_.serverUnreachable() ? tr("The server could not be reached. Check the connection and the "
                                                    "CDDB server in Preferences.")
                                               : tr("No results."));
  else
    status_->setText(tr("%n result(s)", nullptr, count));
}

void InternetSearchDialog::keyPressEvent(QKeyEvent* event) {
  // Return in the field has run the search: it must not also take the default button's result.
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && field_->hasFocus()) return event->accept();
  QDialog::keyPressEvent(event);
}

int InternetSearchDialog::chosenIndex() const { return results_->currentRow(); }
