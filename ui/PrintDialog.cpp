#include "PrintDialog.h"

#include "PrintController.h"
#include "Settings.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>


namespace {

// The product's layouts keep English names (the command line prints by them); the dialog shows
// them, and their descriptions, in the window's language.
[[maybe_unused]] constexpr const char* layoutTexts[] = {
    QT_TRANSLATE_NOOP("PrintLayouts", "Info"),
    QT_TRANSLATE_NOOP("PrintLayouts", "Prints Title, Artist, Genre, My Rating and Duration for the selected collection."),
    QT_TRANSLATE_NOOP("PrintLayouts", "Classical"),
    QT_TRANSLATE_NOOP("PrintLayouts",
                      "Prints Title, Artist, Composer, Conductor and Label. (For landscape orientation, use Page Setup)"),
    QT_TRANSLATE_NOOP("PrintLayouts", "Value"),
    QT_TRANSLATE_NOOP("PrintLayouts",
                      "Prints Title, List Price, Purchase At, Purchased On and Price Paid for the selected collection."),
    QT_TRANSLATE_NOOP("PrintLayouts", "Borrowed"),
    QT_TRANSLATE_NOOP("PrintLayouts", "Prints Title, Artist, Borrowed By, Borrowed On and Due Date for the selected collection."),
    QT_TRANSLATE_NOOP("PrintLayouts", "Custom"),
    QT_TRANSLATE_NOOP("PrintLayouts",
                      "Prints the current view of the entries in your collection. Use Page Setup to control orientation."),
};

QString shownText(const QString& text) { return QCoreApplication::translate("PrintLayouts", text.toUtf8().constData()); }

}  // namespace

PrintDialog::PrintDialog(const PrintController& panel, QWidget* parent) : QDialog(parent), panel_(panel) {
  setWindowTitle(tr("Print"));
  table_ = new QRadioButton(tr("A list of the entries"), this);
  covers_ = new QRadioButton(tr("Their covers"), this);
  table_->setChecked(true);
  layouts_ = new QListWidget(this);
  layouts_->setObjectName(QStringLiteral("layouts"));
  layouts_->setAccessibleName(tr("Layout"));
  for (const QVariant& layout : panel_.listColumns())
    layouts_->addItem(shownText(layout.toMap().value(PrintController::layoutNameKey).toString()));
  description_ = new QLabel(this);
  description_->setWordWrap(true);
  connect(layouts_, &QListWidget::currentRowChanged, this, &PrintDialog::layoutChosen);

  const Settings& settings = panel_.settings();
  coverWidth_ = new QLineEdit(settings.stringForKey(PrintController::coverWidthKey), this);
  coverHeight_ = new QLineEdit(settings.stringForKey(PrintController::coverHeightKey), this);
  for (QLineEdit* e : {coverWidth_, coverHeight_}) e->setValidator(new QDoubleValidator(10, 2000, 1, e));
  const double ratio = panel_.coverRatio() > 0 ? panel_.coverRatio() : 1.0;
  connect(coverWidth_, &QLineEdit::textEdited, this, [this, ratio] { keepRatio(coverWidth_, coverHeight_, 1 / ratio); });
  connect(coverHeight_, &QLineEdit::textEdited, this, [this, ratio] { keepRatio(coverHeight_, coverWidth_, ratio); });
  auto* sizes = new QFormLayout;
  sizes->addRow(tr("Cover width (points):"), coverWidth_);
  sizes->addRow(tr("Cover height (points):"), coverHeight_);
  auto* note = new QLabel(panel_.coverDescriptionField, this);
  note->setWordWrap(true);
  sizes->addRow(note);
  landscape_ = new QCheckBox(tr("Landscape"), this);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  QPushButton* print = buttons->addButton(tr("Print…"), QDialogButtonBox::AcceptRole);
  QPushButton* pdf = buttons->addButton(tr("Save as PDF…"), QDialogButtonBox::AcceptRole);
  print->setDefault(true);
  connect(print, &QPushButton::clicked, this, [this] { destination_ = Destination::Printer; });
  connect(pdf, &QPushButton::clicked, this, [this] { destination_ = Destination::Pdf; });
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    storeCoverSize();
    accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(table_, &QRadioButton::toggled, this, [this](bool on) {
    layouts_->setEnabled(on);
    coverWidth_->setEnabled(!on);
    coverHeight_->setEnabled(!on);
  });

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(table_);
  layout->addWidget(layouts_);
  layout->addWidget(description_);
  layout->addWidget(covers_);
  layout->addLayout(sizes);
  layout->addWidget(landscape_);
  layout->addWidget(buttons);
  coverWidth_->setEnabled(false);
  coverHeight_->setEnabled(false);
  selectLayout(0);
}

void PrintDialog::selectLayout(int index) { layouts_->setCurrentRow(index); }

void PrintDialog::setCovers(bool covers) { (covers ? covers_ : table_)->setChecked(true); }

void PrintDialog::layoutChosen() {
  const QVariantMap layout = panel_.listColumns().value(layouts_->currentRow()).toMap();
  description_->setText(shownText(layout.value(PrintController::layoutDescriptionKey).toString()));
}

void PrintDialog::keepRatio(QLineEdit* changed, QLineEdit* other, double ratio) {
  bool ok = false;
  const double value = changed->text().toDouble(&ok);
  if (ok && value > 0) other->setText(QString::number(qRound(value * ratio)));
}

void PrintDialog::storeCoverSize() {
  Settings& settings = panel_.settings();
  for (auto [key, edit] : {std::pair{PrintController::coverWidthKey, coverWidth_},
                           std::pair{PrintController::coverHeightKey, coverHeight_}})
    if (!edit->text().isEmpty() && edit->text() != settings.stringForKey(key)) settings.setObject(key, edit->text());
}

PrintRequest PrintDialog::request() const {
  PrintRequest request;
  request.layout = qMax(0, layouts_->currentRow());
  request.covers = covers_->isChecked();
  request.landscape = landscape_->isChecked();
  return request;
}
