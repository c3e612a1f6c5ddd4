#include "ExportDialog.h"

#include "CsvExporter.h"
#include "HtmlExport.h"
#include "MyController.h"
#include "NativeExporter.h"
#include "Settings.h"
#include "SettingsKeys.h"
#include "WindowSystem.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>

ExportDialog::ExportDialog(MyController& controller, QString title, QWidget* parent)
    : QDialog(parent), controller_(controller), title_(std::move(title)), format_(new QComboBox(this)), output_(new QLineEdit(this)) {
  setWindowTitle(tr("Export \u201C%1\u201D").arg(title_));
  setObjectName(QStringLiteral("exportDialog"));
  output_->setAccessibleName(tr("Save to"));
  format_->addItem(tr("Web pages (a folder with one page per entry)"), int(Format::Html));
  format_->addItem(tr("Discary export, one file (covers inside)"), int(Format::Native));
  format_->addItem(tr("Discary export, a folder (covers as files)"), int(Format::NativeFolder));
  format_->addItem(tr("Comma-separated text (CSV)"), int(Format::Csv));
  auto* browseButton = new QPushButton(tr("Choose…"), this);
  connect(browseButton, &QPushButton::clicked, this, &ExportDialog::browse);
  connect(format_, &QComboBox::currentIndexChanged, this, &ExportDialog::proposeOutput);
  auto* place = new QHBoxLayout;
  place->addWidget(output_, 1);
  place->addWidget(browseButton);
  auto* form = new QFormLayout;
  form->addRow(tr("Format:"), format_);
  form->addRow(tr("Save to:"), place);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText(tr("Export"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(buttons);
  proposeOutput();
  resize(560, sizeHint().height());
}

void ExportDialog::setFormat(Format format) { format_->setCurrentIndex(format_->findData(int(format))); }

ExportDialog::Format ExportDialog::format() const { return Format(format_->currentData().toInt()); }

void ExportDialog::setOutput(const QString& path) { output_->setText(path); }

QString ExportDialog::output() const { return output_->text().trimmed(); }

void ExportDialog::proposeOutput() {
  // Beside the last place, named after what is exported, with the format's ending.
  const QString folder = output().isEmpty() ? QDir::homePath() : QFileInfo(output()).absolutePath();
  QString name = title_;
  name.replace(QLatin1Char('/'), QLatin1Char('-'));
  switch (format()) {
    case Format::Html: break;
    case Format::Native:
    case Format::NativeFolder: name += QStringLiteral(".discary"); break;
    case Format::Csv: name += QStringLiteral(".csv"); break;
  }
  output_->setText(QDir(folder).filePath(name));
}

void ExportDialog::browse() {
  const bool folder = format() == Format::Html;
  const QString chosen = folder ? QFileDialog::getExistingDirectory(this, tr("Export to Folder"), output())
                                : QFileDialog::getSaveFileName(this, tr("Export to File"), output());
  if (!chosen.isEmpty()) output_->setText(chosen);
}

bool ExportDialog::write(const std::vector<Entry*>& entries, QString* error) {
  const QString path = output();
  if (path.isEmpty()) {
    *error = tr("no place to save to was given");
    return false;
  }
  switch (format()) {
    case Format::Html: {
      // The site's own progress sheet counts the pages.
      const QString pageTemplate =
          controller_.templateText(controller_.preferencesStandard().stringForKey(SettingsKeys::infoTemplate));
      if (pageTemplate.isNull()) {
        *error = tr("the entry page template could not be found");
        return false;
      }
      return HtmlExport(controller_.htmlExportServices()).write(entries, title_, pageTemplate, path, error);
    }
    case Format::Native:
    case Format::NativeFolder:
    case Format::Csv: {
      WindowSystem& ws = controller_.windowSystem();
      ws.showProgressSheet(tr("Exporting"), title_, 0);
      const auto closeSheet = qScopeGuard([&] { ws.closeProgressSheet(); });
      if (format() == Format::Csv) return CsvExporter::write(entries, path, error);
      return NativeExporter::write(controller_.managedObjectContext(), entries, path,
                                   format() == Format::Native ? NativeExporter::Form::File : NativeExporter::Form::Folder,
                                   error);
    }
  }
  return false;
}
