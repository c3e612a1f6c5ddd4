#include "InternetSearchDialog.h"

#include "Barcode.h"
#include "CdKeys.h"
#include "Freedb.h"
#include "MusicBrainz.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

InternetSearchDialog::InternetSearchDialog(Freedb& freedb, MusicBrainz& musicBrainz, bool musicBrainzFirst, QWidget* parent)
    : QDialog(parent),
      freedb_(freedb),
      musicBrainz_(musicBrainz),
      sites_(new QComboBox(this)),
      searchBy_(new QComboBox(this)),
      field_(new QLineEdit(this)),
      results_(new QListWidget(this)),
      status_(new QLabel(this)) {
  status_->setWordWrap(true);
  setWindowTitle(tr("Internet Search"));
  setObjectName(QStringLiteral("internetSearch"));
  sites_->addItem(freedb.pluginName());
  sites_->addItem(musicBrainz.pluginName());
  sites_->setCurrentIndex(musicBrainzFirst ? 1 : 0);
  sites_->setAccessibleName(tr("Site"));
  field_->setAccessibleName(tr("Search for"));
  results_->setAccessibleName(tr("Results"));
  searchBy_->setObjectName(QStringLiteral("searchBy"));
  searchBy_->addItems({tr("Words"), tr("Barcode"), tr("Catalogue Number")});
  searchBy_->setAccessibleName(tr("Search by"));
  // Only MusicBrainz knows releases by barcode and catalogue number.
  const auto siteChanged = [this] {
    searchBy_->setEnabled(sites_->currentIndex() == 1);
    if (!searchBy_->isEnabled()) searchBy_->setCurrentIndex(0);
  };
  siteChanged();
  connect(sites_, &QComboBox::currentIndexChanged, this, siteChanged);
  field_->setPlaceholderText(tr("Artist and title, a disc identifier, or a result page address"));
  auto* find = new QPushButton(tr("Search"), this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText(tr("Use Result"));
  connect(find, &QPushButton::clicked, this, &InternetSearchDialog::search);
  connect(field_, &QLineEdit::returnPressed, this, &InternetSearchDialog::search);
  connect(sites_, &QComboBox::currentIndexChanged, results_, &QListWidget::clear);
  connect(results_, &QListWidget::itemActivated, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* row = new QHBoxLayout;
  row->addWidget(sites_);
  row->addWidget(searchBy_);
  row->addWidget(field_);
  row->addWidget(find);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(row);
  layout->addWidget(results_);
  layout->addWidget(status_);
  layout->addWidget(buttons);
  resize(560, 420);
}

SitePlugin& InternetSearchDialog::chosenSite() const {
  return sites_->currentIndex() == 1 ? static_cast<SitePlugin&>(musicBrainz_) : static_cast<SitePlugin&>(freedb_);
}

void InternetSearchDialog::search() {
  const QString text = field_->text().trimmed();
  if (text.isEmpty()) return;
  results_->clear();
  QPointer<InternetSearchDialog> self(this);
  if (sites_->currentIndex() == 1) {
    const QVariantMap request = musicBrainzRequest(text);
    if (request.isEmpty()) return;
    status_->setText(tr("Searching…"));
    musicBrainz_.searchFor(request, [self](int count, MusicBrainz& site) {
      if (!self) return;
      self->searchReturned(count, site.resultsTitles());
      if (!site.lastError().isEmpty()) self->status_->setText(site.lastError());
    });
    return;
  }
  status_->setText(tr("Searching…"));
  static const QRegularExpression identifier(QStringLiteral("^[0-9a-fA-F]{8}$"));
  const QVariantMap request = identifier.match(text).hasMatch() ? QVariantMap{{CdKeys::discID, text}}
                                                                : QVariantMap{{QStringLiteral("keyword"), text}};
  freedb_.searchFor(request, [self](int count, Freedb& site) {
    if (!self) return;
    self->searchReturned(count, site.resultsTitles());
    if (count == 0 && site.serverUnreachable())
      self->status_->setText(tr("The server could not be reached. Check the connection and the CDDB server in Preferences."));
  });
}

QVariantMap InternetSearchDialog::musicBrainzRequest(const QString& text) {
  switch (searchBy_->currentIndex()) {
    case 1:
      // A mistyped code is said here, not sent: the site would only answer that it knows none.
      switch (Barcode::check(text)) {
        case Barcode::Check::Valid:
          return {{CdKeys::upc, Barcode::digits(text)}};
        case Barcode::Check::NotDigits:
          status_->setText(tr("A barcode holds only digits."));
          return {};
        case Barcode::Check::WrongLength:
          status_->setText(tr("A barcode has 8, 12 or 13 digits (EAN-8, UPC-A or EAN-13)."));
          return {};
        case Barcode::Check::WrongCheckDigit: {
          const QString code = Barcode::digits(text);
          status_->setText(tr("The last digit of this barcode should be %1: check the code.")
                               .arg(Barcode::checkDigitFor(code.chopped(1))));
          return {};
        }
      }
      return {};
    case 2:
      return {{CdKeys::catalogNumber, text}};
    default: {
      static const QRegularExpression discIdentifier(QStringLiteral("^[A-Za-z0-9._]{27}-$"));
      return discIdentifier.match(text).hasMatch() ? QVariantMap{{CdKeys::musicBrainzDiscID, text}}
                                                   : QVariantMap{{QStringLiteral("keyword"), text}};
    }
  }
}

void InternetSearchDialog::searchReturned(int count, const QStringList& titles) {
  results_->clear();
  results_->addItems(titles);
  if (results_->count() > 0) results_->setCurrentRow(0);
  status_->setText(count == 0 ? tr("No results.") : tr("%n result(s)", nullptr, count));
}

void InternetSearchDialog::keyPressEvent(QKeyEvent* event) {
  // Return in the field has run the search: it must not also take the default button's result.
  // Asked of the dialog's focus widget, not hasFocus(), which is false until the window manager
  // has activated the window.
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && focusWidget() == field_) return event->accept();
  QDialog::keyPressEvent(event);
}

int InternetSearchDialog::chosenIndex() const { return results_->currentRow(); }
