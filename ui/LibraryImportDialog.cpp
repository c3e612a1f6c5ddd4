#include "LibraryImportDialog.h"

#include "LibraryXml.h"
#include "MyController.h"
#include "Settings.h"
#include "SettingsKeys.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

LibraryImportDialog::LibraryImportDialog(MyController& controller, QWidget* parent)
    : QDialog(parent), controller_(controller), file_(new QLabel(this)), playlists_(new QComboBox(this)) {
  setWindowTitle(tr("Import Music Library"));
  playlists_->setObjectName(QStringLiteral("playlists"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText(tr("Import"));
  QPushButton* another = buttons->addButton(tr("Choose Another Library File…"), QDialogButtonBox::ActionRole);
  connect(another, &QPushButton::clicked, this, &LibraryImportDialog::chooseAnotherFile);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  file_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(file_);
  auto* playlistLabel = new QLabel(tr("Pla&ylist:"), this);
  playlistLabel->setBuddy(playlists_);
  layout->addWidget(playlistLabel);
  layout->addWidget(playlists_);
  layout->addWidget(buttons);
}

bool LibraryImportDialog::load(const QString& path) {
  // The panel starts each use with only its fixed first item.
  playlists_->clear();
  playlists_->addItem(tr("Choose a playlist"));
  LibraryXml library;
  if (path.isEmpty() || !library.read(path, false)) {
    file_->setText(path.isEmpty() ? tr("No music library file is chosen.") : library.error());
    return false;
  }
  path_ = path;
  file_->setText(tr("Library file: %1").arg(QDir::toNativeSeparators(path)));
  for (const LibraryXml::Playlist& playlist : library.playlists()) playlists_->addItem(playlist.name);
  return true;
}

bool LibraryImportDialog::chooseAnotherFile() {
  const QString path = QFileDialog::getOpenFileName(this, tr("Locate iTunes Music Library.xml'"),
                                                    QDir::homePath(), tr("Music library (*.xml)"));
  if (path.isEmpty()) return false;
  controller_.preferencesStandard().setObject(SettingsKeys::iTunesLibraryXML, path);
  return load(path);
}

bool LibraryImportDialog::run(MyController& controller, QWidget* parent) {
  LibraryImportDialog dialog(controller, parent);
  if (!dialog.load(controller.libraryXmlPath()) && !dialog.chooseAnotherFile()) return false;
  if (dialog.exec() != QDialog::Accepted || dialog.playlists_->currentIndex() <= 0) return false;
  QString error;
  if (!controller.importLibraryPlaylist(dialog.path_, dialog.playlists_->currentText(), &error)) {
    if (!error.isEmpty()) QMessageBox::warning(parent, tr("Import Music Library"), error);
    return false;
  }
  return true;
}
