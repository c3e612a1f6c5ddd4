#include "PreferencesDialog.h"

#include "CoverCell.h"
#include "MusicBrainz.h"
#include "MyController.h"
#include "Settings.h"
#include "SettingsKeys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

PreferencesDialog::PreferencesDialog(MyController& controller, QWidget* parent)
    : QDialog(parent), controller_(controller) {
  setWindowTitle(tr("Preferences"));
  Settings& settings = controller_.preferencesStandard();
  auto* tabs = new QTabWidget(this);
  auto page = [tabs](const QString& title) {
    auto* widget = new QWidget;
    auto* form = new QFormLayout(widget);
    tabs->addTab(widget, title);
    return form;
  };

  QFormLayout* general = page(tr("General"));
  template_ = new QComboBox;
  template_->setEditable(true);
  QStringList templates{QStringLiteral("Collection.html")};
  const QDir userTemplates(controller_.dataFolderPath() + QStringLiteral("/Templates"));
  for (const QString& name : userTemplates.entryList({QStringLiteral("*.html"), QStringLiteral("*.htm")}, QDir::Files))
    if (!templates.contains(name)) templates << name;
  template_->addItems(templates);
  template_->setCurrentText(settings.stringForKey(SettingsKeys::infoTemplate));
  general->addRow(tr("Entry page template:"), template_);
  releaseDateFormat_ = new QLineEdit(settings.stringForKey(SettingsKeys::releaseDateFormat));
  releaseDateFormat_->setToolTip(tr("yyyy shows the year, MMMM d, yyyy the whole date"));
  general->addRow(tr("Release date format:"), releaseDateFormat_);
  bezelTime_ = new QDoubleSpinBox;
  bezelTime_->setRange(0.5, 30);
  bezelTime_->setSuffix(tr(" s"));
  bezelTime_->setValue(settings.floatForKey(SettingsKeys::bezelDisplayTime));
  general->addRow(tr("Show notices for:"), bezelTime_);
  importDuplicates_ = new QCheckBox(tr("Import entries that are already in the catalogue"));
  importDuplicates_->setChecked(settings.boolForKey(QStringLiteral("Import Duplicates")));
  general->addRow(importDuplicates_);
  refreshLibrary_ = new QCheckBox(tr("Refresh the music library at launch every 30 days"));
  refreshLibrary_->setChecked(settings.boolForKey(SettingsKeys::refreshItunesAuto));
  general->addRow(refreshLibrary_);
  // Empty means the library is found: the exported XML, else the first player's library there is.
  musicLibrary_ = new QLineEdit(settings.stringForKey(SettingsKeys::musicLibrary));
  musicLibrary_->setPlaceholderText(tr("Found automatically"));
  musicLibrary_->setAccessibleName(tr("Music library for play links"));
  auto* chooseLibrary = new QPushButton(tr("Choose…"));
  chooseLibrary->setAccessibleName(tr("Choose the music library"));
  connect(chooseLibrary, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Music Library"), musicLibrary_->text(),
        tr("Music libraries (*.xml *.db);;All files (*)"));
    if (!path.isEmpty()) musicLibrary_->setText(path);
  });
  auto* libraryRow = new QHBoxLayout;
  libraryRow->addWidget(musicLibrary_);
  libraryRow->addWidget(chooseLibrary);
  general->addRow(tr("Music library:"), libraryRow);

  QFormLayout* list = page(tr("List"));
  const QStringList totals = {tr("Number of entries"), tr("Lent out"), tr("Wanted"), tr("Discs"),
                              tr("Play time"),         tr("Value"),    tr("Spent")};
  const QList<bool> shown = controller_.bottomFields();
  for (int i = 0; i < totals.size(); ++i) {
    auto* box = new QCheckBox(totals[i]);
    box->setChecked(shown.value(i));
    bottomFields_ << box;
    list->addRow(i == 0 ? tr("Footer shows:") : QString(), box);
  }

  // How the entry page shows covers: see CoverCell.
  QFormLayout* covers = page(tr("Covers and Printing"));
  cellSize_ = new QSpinBox;
  cellSize_->setObjectName(SettingsKeys::cellSize);
  cellSize_->setRange(CoverCell::minimumSize, CoverCell::maximumSize);
  cellSize_->setSuffix(tr(" px"));
  cellSize_->setValue(int(settings.integerForKey(SettingsKeys::cellSize)));
  covers->addRow(tr("Cover cell size:"), cellSize_);
  coverBorder_ = new QCheckBox(tr("Draw a border around covers"));
  coverBorder_->setObjectName(SettingsKeys::coverBorder);
  coverBorder_->setChecked(settings.boolForKey(SettingsKeys::coverBorder));
  covers->addRow(coverBorder_);
  coverBackground_ = new QDoubleSpinBox;
  coverBackground_->setObjectName(SettingsKeys::coverBackground);
  coverBackground_->setRange(0, 1);
  coverBackground_->setSingleStep(0.1);
  coverBackground_->setToolTip(tr("The grey behind covers: 0 is black, 1 white"));
  coverBackground_->setValue(settings.floatForKey(SettingsKeys::coverBackground));
  covers->addRow(tr("Cover background brightness:"), coverBackground_);
  coverWidth_ = new QLineEdit(settings.stringForKey(QStringLiteral("Print Cover Width")));
  coverHeight_ = new QLineEdit(settings.stringForKey(QStringLiteral("Print Cover Height")));
  for (QLineEdit* e : {coverWidth_, coverHeight_}) e->setPlaceholderText(QStringLiteral("350"));
  covers->addRow(tr("Printed cover width (points):"), coverWidth_);
  covers->addRow(tr("Printed cover height (points):"), coverHeight_);

  QFormLayout* online = page(tr("Online"));
  cddbServer_ = new QLineEdit(settings.stringForKey(SettingsKeys::cddbServer));
  cddbServer_->setPlaceholderText(SettingsKeys::defaultCddbServer);
  online->addRow(tr("CDDB server (host[:port]):"), cddbServer_);
  // The sources in the order they are asked; unticked ones are not asked. Dragging reorders.
  sources_ = new QListWidget;
  sources_->setObjectName(SettingsKeys::lookupSources);
  sources_->setDragDropMode(QAbstractItemView::InternalMove);
  sources_->setMaximumHeight(60);
  const QList<DiscLookup::Source> chosen = controller_.discScan().sources();
  QList<DiscLookup::Source> order = chosen;
  for (DiscLookup::Source source : {DiscLookup::Source::musicBrainz, DiscLookup::Source::cddb})
    if (!order.contains(source)) order << source;
  for (DiscLookup::Source source : order) {
    auto* item = new QListWidgetItem(source == DiscLookup::Source::musicBrainz ? MusicBrainz::name : QStringLiteral("CDDB"));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled);
    item->setCheckState(chosen.contains(source) ? Qt::Checked : Qt::Unchecked);
    sources_->addItem(item);
  }
  online->addRow(tr("Look discs up in:"), sources_);
  for (auto& [edit, key, fallback] :
       {std::tuple{&musicBrainzServer_, SettingsKeys::musicBrainzServer, MusicBrainz::defaultServer},
        std::tuple{&coverServer_, SettingsKeys::coverArtServer, MusicBrainz::defaultCoverServer},
        std::tuple{&contact_, SettingsKeys::musicBrainzContact, tr("an e-mail address or web page")}}) {
    *edit = new QLineEdit(settings.stringForKey(key));
    (*edit)->setObjectName(key);
    (*edit)->setPlaceholderText(fallback);
  }
  online->addRow(tr("MusicBrainz server:"), musicBrainzServer_);
  online->addRow(tr("Cover art server:"), coverServer_);
  online->addRow(tr("Contact sent to MusicBrainz:"), contact_);
  // The disc workflow's switches, each named after its setting; all off until the user turns them on.
  for (const auto& [key, text] : {std::pair{SettingsKeys::scanCD, tr("Look up an audio CD as soon as it is mounted")},
                                  std::pair{SettingsKeys::ejectCD, tr("Eject the disc after the lookup")},
                                  std::pair{SettingsKeys::firstResultAdd, tr("Add the only match at once")}}) {
    auto* box = new QCheckBox(text);
    box->setObjectName(key);
    box->setChecked(settings.boolForKey(key));
    discSwitches_ << box;
    online->addRow(box);
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &PreferencesDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &PreferencesDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs);
  layout->addWidget(buttons);
}

void PreferencesDialog::accept() {
  Settings& settings = controller_.preferencesStandard();
  // Only what the user changed is stored, so registered defaults keep applying elsewhere.
  auto store = [&settings](const QString& key, const QVariant& value) {
    if (settings.objectForKey(key) != value) settings.setObject(key, value);
  };
  const QString name = template_->currentText().trimmed();
  if (!name.isEmpty() && !name.contains(QLatin1Char('/'))) store(SettingsKeys::infoTemplate, name);
  store(SettingsKeys::releaseDateFormat, releaseDateFormat_->text());
  store(SettingsKeys::bezelDisplayTime, bezelTime_->value());
  store(QStringLiteral("Import Duplicates"), importDuplicates_->isChecked());
  store(SettingsKeys::refreshItunesAuto, refreshLibrary_->isChecked());
  const QString library = musicLibrary_->text().trimmed();
  if (library != settings.stringForKey(SettingsKeys::musicLibrary)) {
    if (library.isEmpty()) settings.removeObject(SettingsKeys::musicLibrary);
    else settings.setObject(SettingsKeys::musicLibrary, library);
    controller_.loadMusicLibrary();  // play links follow the new choice without a restart
  }
  QVariantList bottom;
  for (QCheckBox* box : bottomFields_) bottom << box->isChecked();
  store(SettingsKeys::bottomFields, bottom);
  store(SettingsKeys::cellSize, cellSize_->value());
  store(SettingsKeys::coverBorder, coverBorder_->isChecked());
  store(SettingsKeys::coverBackground, coverBackground_->value());
  for (auto [key, edit] : {std::pair{QStringLiteral("Print Cover Width"), coverWidth_},
                           std::pair{QStringLiteral("Print Cover Height"), coverHeight_}})
    if (!edit->text().trimmed().isEmpty()) store(key, edit->text().trimmed());
  for (QCheckBox* box : discSwitches_) store(box->objectName(), box->isChecked());
  QStringList sources;
  for (int i = 0; i < sources_->count(); ++i)
    if (sources_->item(i)->checkState() == Qt::Checked) sources << sources_->item(i)->text();
  // No source at all is stored as empty text: an empty list would read back as no value, and the
  // default order would return.
  store(SettingsKeys::lookupSources, sources.isEmpty() ? QVariant(QString()) : QVariant(sources));
  for (QLineEdit* edit : {musicBrainzServer_, coverServer_, contact_}) {
    if (edit->text().trimmed().isEmpty()) settings.removeObject(edit->objectName());
    else store(edit->objectName(), edit->text().trimmed());
  }
  const QString server = cddbServer_->text().trimmed();
  if (server.isEmpty()) settings.removeObject(SettingsKeys::cddbServer);
  else store(SettingsKeys::cddbServer, server);
  settings.sync();
  QDialog::accept();
}
