#include "EntryEditor.h"

#include "AttributeInput.h"
#include "CatalogueWatcher.h"
#include "CdKeys.h"
#include "Collection.h"
#include "CoverWell.h"
#include "Entry.h"
#include "FieldTypes.h"
#include "HostKeys.h"
#include "LinksTable.h"
#include "MyController.h"
#include "MyFieldsControllerShared.h"
#include "Rating.h"
#include "SitePlugin.h"
#include "Store.h"
#include "TrackData.h"
#include "TrackTable.h"
#include "ValueKind.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDateTime>
#include <QLocale>
#include <QDialogButtonBox>
#include <QFile>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

const QString statusKey = CdKeys::status, ratingKey = CdKeys::myRating;

// A date typed as a bare year is kept as 1 July at noon; show it back as the year.
QString dateText(const QDateTime& date) {
  const QDateTime utc = date.toUTC();
  if (utc.date().month() == 7 && utc.date().day() == 1 && utc.time() == QTime(12, 0)) return QString::number(utc.date().year());
  return utc.time() == QTime(12, 0) ? utc.date().toString(Qt::ISODate) : utc.toString(Qt::ISODate);
}

QWidget* formPage(QFormLayout** form) {
  auto* page = new QWidget;
  *form = new QFormLayout(page);
  (*form)->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  auto* scroll = new QScrollArea;
  scroll->setWidget(page);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  // Tab goes straight to the fields; the area scrolls to the one that has the focus.
  scroll->setFocusPolicy(Qt::NoFocus);
  return scroll;
}

}  // namespace

EntryEditor::EntryEditor(MyController& controller, Entry* entry, QWidget* parent)
    : QDialog(parent),
      controller_(controller),
      entry_(entry),
      tracks_(new TrackTable),
      links_(new LinksTable(controller.dataFolderPath())),
      cover_(new CoverWell) {
  setWindowTitle(entry ? tr("Edit \u201C%1\u201D").arg(entry->stringValue(CdKeys::title)) : tr("Add Entry"));
  setObjectName(QStringLiteral("entryEditor"));
  QFormLayout *mainForm = nullptr, *extraForm = nullptr;
  auto* tabs = new QTabWidget(this);
  auto* album = new QWidget;
  auto* albumRow = new QHBoxLayout(album);
  albumRow->setContentsMargins(0, 0, 0, 0);
  albumRow->addWidget(formPage(&mainForm), 1);
  albumRow->addWidget(cover_, 0, Qt::AlignTop);
  tabs->addTab(album, tr("Album"));
  tabs->addTab(tracks_, tr("Tracks"));
  tabs->addTab(links_, tr("Links"));
  tabs->addTab(formPage(&extraForm), tr("Loan, Purchase and More"));

  MyFieldsControllerShared& fields = *controller_.fieldsController();
  auto addRow = [&](QFormLayout* form, const QString& identifier, int type, bool longText) {
    QWidget* editor = makeEditor(identifier, type, longText);
    editor->setObjectName(identifier);
    editors_.insert(identifier, editor);
    identifiers_ << identifier;
    form->addRow(fields.localizedColumnName(identifier), editor);
  };
  addRow(mainForm, statusKey, 0, false);
  addRow(mainForm, ratingKey, FieldTypeRating, false);
  for (const QVariant& f : fields.editFields()) {
    const QVariantMap field = f.toMap();
    if (field.value(QStringLiteral("isOff")).toBool()) continue;
    const QString identifier = field.value(MKIdentifier).toString();
    if (!EntitySchema::cd().has(identifier) || editors_.contains(identifier)) continue;
    const bool extra = field.value(QStringLiteral("location")).toString() == MKLocationExtra;
    addRow(extra ? extraForm : mainForm, identifier, fields.fieldTypeForIdentifier(identifier),
           field.value(QStringLiteral("long")).toBool());
  }

  if (entry_) {
    for (const QString& identifier : identifiers_) {
      stored_.insert(identifier, entry_->value(identifier));
      showValue(identifier, stored_.value(identifier));
      shown_.insert(identifier, editorValue(identifier));
    }
    showTracks();
    showLinks();
    cover_->showCover(QImage(controller_.managedObjectContext().coverPathOf(entry_->uid())));
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
  back_ = buttons->addButton(tr("Previous Result"), QDialogButtonBox::ActionRole);
  next_ = buttons->addButton(tr("Next Result"), QDialogButtonBox::ActionRole);
  back_->setObjectName(QStringLiteral("backButtonPanel"));
  next_->setObjectName(QStringLiteral("nextButtonPanel"));
  back_->hide();
  next_->hide();
  connect(back_, &QPushButton::clicked, this, [this] { showResult(-1); });
  connect(next_, &QPushButton::clicked, this, [this] { showResult(1); });
  save_ = buttons->button(QDialogButtonBox::Save);
  if (!entry_) save_->setText(tr("Add"));
  connect(buttons, &QDialogButtonBox::accepted, this, &EntryEditor::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &EntryEditor::reject);
  notice_ = new QLabel(this);
  notice_->setObjectName(QStringLiteral("outsideChanges"));
  notice_->setWordWrap(true);
  notice_->setFrameShape(QFrame::StyledPanel);
  notice_->hide();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(notice_);
  layout->addWidget(tabs);
  layout->addWidget(buttons);
  resize(920, 680);
  // A new album starts with its title; an edit starts where the form starts.
  if (QWidget* title = editors_.value(CdKeys::title)) title->setFocus();
}

void EntryEditor::showTracks() {
  QVariantList tracks;
  for (Track* t : entry_->tracksSortedByPosition()) {
    QVariantMap track;
    t->forEachValue(
        [&](int index, const QVariant& value) { track.insert(t->schema().attributes()[index].key, value); });
    tracks << track;
  }
  tracks_->setTracks(tracks);
}

void EntryEditor::showLinks() {
  QVariantList links;
  shownLinks_ = entry_->linksSortedByPosition();
  for (Link* l : shownLinks_)
    links << QVariantMap{{"name", l->stringValue(QStringLiteral("name"))},
                         {"url", l->stringValue(QStringLiteral("url"))},
                         {"type", l->stringValue(QStringLiteral("type"))}};
  links_->setLinks(links);
}

void EntryEditor::showOutsideChanges(const Store::OutsideChanges& changes) {
  auto has = [this](const std::vector<Entry*>& entries) {
    return std::find(entries.begin(), entries.end(), entry_) != entries.end();
  };
  if (!entry_ || deletedElsewhere_) return;
  if (has(changes.removed)) {
    deletedElsewhere_ = true;
    save_->setText(tr("Save as New Entry"));
    notice_->setText(
        tr("Another program deleted this entry. Save as New Entry keeps it, with what you typed, as a new "
           "entry; Cancel lets it go."));
    notice_->show();
    return;
  }
  if (!has(changes.changed)) return;
  QStringList clashes;
  for (const QString& identifier : identifiers_) {
    const QVariant now = entry_->value(identifier);
    if (now == stored_.value(identifier)) continue;
    stored_.insert(identifier, now);
    if (editorValue(identifier) == shown_.value(identifier)) {
      showValue(identifier, now);
      shown_.insert(identifier, editorValue(identifier));
    } else {
      clashes << tr("\u201C%1\u201D").arg(controller_.fieldsController()->localizedColumnName(identifier));
    }
  }
  if (has(changes.relationshipsReplaced)) {
    // The entry's link objects were replaced: the table's rows now stand for the new ones.
    const bool linksEdited = links_->isModified();
    if (linksEdited)
      shownLinks_ = entry_->linksSortedByPosition();
    else
      showLinks();
    if (tracks_->isModified())
      clashes << tr("the tracks");
    else
      showTracks();
    if (linksEdited) clashes << tr("the links");
  }
  if (clashes.isEmpty()) return;
  notice_->setText(tr("Another program changed %1 while you were editing. Save keeps what you typed here; Cancel keeps "
                      "the other program's change.")
                       .arg(clashes.join(tr(", "))));
  notice_->show();
}

void EntryEditor::showValue(const QString& identifier, const QVariant& v) {
  QWidget* editor = editors_.value(identifier);
  const qint64 n = v.toLongLong();
  if (auto* box = qobject_cast<QCheckBox*>(editor)) box->setChecked(v.toBool());
  // Any status but lent out or wanted means in the collection.
  else if (identifier == statusKey) qobject_cast<QComboBox*>(editor)->setCurrentIndex(n == 1 || n == 2 ? int(n) : 0);
  else if (identifier == ratingKey) qobject_cast<QComboBox*>(editor)->setCurrentIndex(int(std::clamp<qint64>(n, 0, Rating::maximum)));
  else setFieldText(identifier, v.metaType().id() == QMetaType::QDateTime ? dateText(v.toDateTime()) : v.toString());
}

void EntryEditor::loadFromAddPanel() {
  const AddPanel& panel = controller_.addPanel();
  for (const QString& identifier : identifiers_) {
    if (identifier != statusKey) showValue(identifier, panel.valueForKey(identifier));
  }
  tracks_->setTracks(panel.trackData().tracks());
  // The cover the shown result came with, kept when the album is added.
  if (const QImage found = panel.valueForKey(MKCoverImage).value<QImage>(); found.isNull())
    cover_->showCover(QImage());
  else
    cover_->takeImage(found);
  SitePlugin* site = panel.resultSite();
  const qsizetype count = site ? site->resultsTitles().size() : 0;
  back_->setVisible(count > 1);
  next_->setVisible(count > 1);
  back_->setEnabled(panel.resultIndex() > 0);
  next_->setEnabled(panel.resultIndex() + 1 < count);
}

void EntryEditor::showResult(int step) {
  SitePlugin* site = controller_.addPanel().resultSite();
  if (!site) return;
  const int index = controller_.addPanel().resultIndex() + step;
  if (index < 0 || index >= site->resultsTitles().size()) return;
  controller_.showResultOfSite(*site, index);
  loadFromAddPanel();
}

QWidget* EntryEditor::makeEditor(const QString& identifier, int type, bool longText) {
  if (identifier == statusKey) {
    auto* combo = new QComboBox;
    combo->addItems({tr("In the collection"), controller_.frameworkBundle().localizedString(QStringLiteral("Borrowed")),
                     controller_.frameworkBundle().localizedString(QStringLiteral("Wanted"))});
    return combo;
  }
  switch (type) {
    case FieldTypeRating: {
      // Item i stands for the stored value i.
      auto* combo = new QComboBox;
      combo->addItem(tr("Not rated"));
      for (qint64 r = 1; r <= Rating::maximum; ++r) combo->addItem(Rating::stars(r));
      return combo;
    }
    case FieldTypeCheckbox: return new QCheckBox;
    case FieldTypeLongText: {
      auto* text = new QPlainTextEdit;
      text->setTabChangesFocus(true);
      text->setMinimumHeight(90);
      return text;
    }
    case FieldTypeComboBox: {
      auto* combo = new QComboBox;
      combo->setEditable(true);
      combo->setInsertPolicy(QComboBox::NoInsert);
      combo->addItem(QString());
      combo->addItems(controller_.comboBoxData().valuesForField(identifier));
      combo->completer()->setCaseSensitivity(Qt::CaseInsensitive);
      combo->completer()->setCompletionMode(QCompleter::InlineCompletion);
      return combo;
    }
    default: {
      auto* line = new QLineEdit;
      if (type == FieldTypeDate) line->setPlaceholderText(tr("a year, or a date such as 1999-03-04"));
      if (type == FieldTypeTokens) line->setPlaceholderText(tr("separate several with commas"));
      if (type == FieldTypeBorrower) {
        auto* completer = new QCompleter(controller_.comboBoxData().valuesForField(identifier), line);
        completer->setCaseSensitivity(Qt::CaseInsensitive);
        line->setCompleter(completer);
      }
      if (longText) line->setMinimumWidth(360);
      return line;
    }
  }
}

void EntryEditor::setFieldText(const QString& identifier, const QString& text) {
  QWidget* editor = editors_.value(identifier);
  if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setText(text);
  else if (auto* combo = qobject_cast<QComboBox*>(editor); combo && combo->isEditable()) combo->setEditText(text);
  else if (auto* plain = qobject_cast<QPlainTextEdit*>(editor)) plain->setPlainText(text);
  else if (auto* box = qobject_cast<QCheckBox*>(editor)) box->setChecked(!text.isEmpty() && text != QLatin1String("0"));
  else if (combo) combo->setCurrentIndex(text.toInt());
}

QString EntryEditor::textOf(const QString& identifier) const {
  QWidget* editor = editors_.value(identifier);
  if (auto* line = qobject_cast<QLineEdit*>(editor)) return line->text().trimmed();
  if (auto* combo = qobject_cast<QComboBox*>(editor); combo && combo->isEditable()) return combo->currentText().trimmed();
  if (auto* plain = qobject_cast<QPlainTextEdit*>(editor)) return plain->toPlainText().trimmed();
  return {};
}

QVariant EntryEditor::editorValue(const QString& identifier) const {
  QWidget* editor = editors_.value(identifier);
  if (auto* box = qobject_cast<QCheckBox*>(editor)) return box->isChecked() ? QVariant(true) : QVariant();
  if (auto* combo = qobject_cast<QComboBox*>(editor); combo && !combo->isEditable())
    return combo->currentIndex() ? QVariant(qint64(combo->currentIndex())) : QVariant();
  const QString text = textOf(identifier);
  return text.isEmpty() ? QVariant() : QVariant(text);
}

void EntryEditor::noteDoubt(const QString& identifier, AttributeKind kind, const QString& typed, const QVariant& value,
                            QStringList* doubts) const {
  const QString field = controller_.fieldsController()->localizedColumnName(identifier);
  static const QRegularExpression letters(QStringLiteral("\\p{L}"));
  if (ValueKind::of(kind).isNumberText() && typed.contains(letters)) {
    *doubts << tr("\u201C%1\u201D in %2 is not a number: it is kept as text and counts as 0 in the totals.").arg(typed, field);
    return;
  }
  // 04/03/1999 is April to some and March to others: say which it was read as.
  static const QRegularExpression numeric(QStringLiteral("^\\s*(\\d{1,2})[/-](\\d{1,2})[/-]\\d{2,4}\\s*$"));
  const QRegularExpressionMatch m = numeric.match(typed);
  if (ValueKind::of(kind).isDate() && m.hasMatch() && m.captured(1).toInt() <= 12 && m.captured(2).toInt() <= 12 &&
      m.captured(1).toInt() != m.captured(2).toInt())
    *doubts << tr("\u201C%1\u201D in %2 is read as %3 (month first). Type %4 to be sure of it.")
                   .arg(typed, field, QLocale().toString(value.toDateTime().toUTC().date(), QStringLiteral("d MMMM yyyy")),
                        value.toDateTime().toUTC().date().toString(Qt::ISODate));
}

bool EntryEditor::readValues(QVariantMap* values, QString* problem, QStringList* doubts) const {
  const EntitySchema& schema = EntitySchema::cd();
  if (doubts && textOf(CdKeys::title).isEmpty() && (!entry_ || !shown_.value(CdKeys::title).isNull()))
    *doubts << tr("The title is empty: the album will be listed without a name.");
  for (const QString& identifier : identifiers_) {
    const QVariant input = editorValue(identifier);
    // A field the user left alone keeps its stored value, even one its editor cannot show.
    if (const auto shown = shown_.constFind(identifier); shown != shown_.cend() && *shown == input) continue;
    if (!input.isValid()) {
      values->insert(identifier, QVariant());
      continue;
    }
    const AttributeKind kind = schema.attributes()[schema.indexOf(identifier)].kind;
    const auto value = AttributeInput::read(kind, input);
    if (value && doubts) noteDoubt(identifier, kind, input.toString(), *value, doubts);
    if (!value) {
      *problem = tr("\u201C%1\u201D is not a date Discary can read for %2. Type a year (1999) or a date (1999-03-04).")
                     .arg(input.toString(), controller_.fieldsController()->localizedColumnName(identifier));
      editors_.value(identifier)->setFocus();
      return false;
    }
    values->insert(identifier, *value);
  }
  return true;
}

void EntryEditor::accept() {
  // Catch up with other programs first: a deletion they made is then the user's choice, not a
  // failed save.
  if (auto* watcher = parentWidget() ? parentWidget()->findChild<CatalogueWatcher*>() : nullptr;
      watcher && entry_ && !deletedElsewhere_ && watcher->checkNow() && deletedElsewhere_)
    return;
  const bool again = deletedElsewhere_;
  if (again) {
    // Everything the panel holds goes into a new entry, links included.
    shown_.clear();
    shownLinks_.clear();
    entry_ = nullptr;
  }
  QVariantMap values;
  QString problem;
  QStringList doubts;
  if (!readValues(&values, &problem, &doubts)) {
    QMessageBox::warning(this, tr("Check the entry"), problem);
    return;
  }
  if (!doubts.isEmpty()) {
    QMessageBox box(QMessageBox::Warning, tr("Check the entry"), tr("Some of what was typed may not be what you meant."),
                    QMessageBox::NoButton, this);
    box.setInformativeText(doubts.join(QStringLiteral("\n\n")));
    QPushButton* back = box.addButton(tr("Go Back"), QMessageBox::RejectRole);
    box.addButton(entry_ ? tr("Save Anyway") : tr("Add Anyway"), QMessageBox::AcceptRole);
    box.setDefaultButton(back);
    box.exec();
    if (box.clickedButton() == back) return;
  }
  if (entry_) {
    applyTo(*entry_, values);
  } else if (!addEntry(values)) {
    return;  // "Don't Add": back to the panel, with what was typed
  }
  if (links_->isModified() || again) applyLinks(*entry_);
  if (cover_->isChanged()) {
    const QString file = controller_.managedObjectContext().coverPathOf(entry_->uid());
    const bool written = cover_->cover().isNull() ? !QFile::exists(file) || QFile::remove(file)
                                                  : controller_.setCoverImage(*entry_, cover_->cover());
    if (!written) QMessageBox::warning(this, tr("Cover"), tr("The cover could not be written to the data folder."));
    entry_->setValue(CdKeys::dateEdited, QDateTime::currentDateTimeUtc());
  }
  controller_.addEntryToAutofill(*entry_);
  controller_.saveManagedObjectContext();
  QDialog::accept();
}

bool EntryEditor::addEntry(const QVariantMap& values) {
  controller_.clearAddPanel();
  for (auto it = values.begin(); it != values.end(); ++it)
    if (it.value().isValid()) controller_.addPanel().setValue(it.value(), it.key());
  controller_.addPanel().trackData().setTracks(tracks_->tracks());
  entry_ = controller_.addEntryFromAddPanelCheckForDuplicates(true);
  if (!entry_) return false;
  if (Collection* shown = controller_.collections().selectedCollection(); shown && shown->isUser())
    controller_.addEntry(entry_, shown);
  return true;
}

void EntryEditor::applyTo(Entry& entry, const QVariantMap& values) {
  for (auto it = values.begin(); it != values.end(); ++it) entry.setValue(it.key(), it.value());
  if (tracks_->isModified()) {
    for (const auto& old : std::vector<Track*>(entry.tracksSortedByPosition())) entry.removeTrack(old);
    const QVariantList tracks = tracks_->tracks();
    for (const QVariant& t : tracks) {
      auto track = Store::newTrack();
      const QVariantMap map = t.toMap();
      for (const auto& attribute : track->schema().attributes())
        if (map.contains(attribute.key))
          if (auto v = AttributeInput::read(attribute.kind, map.value(attribute.key))) track->setPrimitiveValue(attribute.key, *v);
      entry.addTrack(std::move(track));
    }
    entry.setValue(QStringLiteral("numberOfTracks"), tracks.isEmpty() ? QVariant() : QVariant(QString::number(tracks.size())));
    // The album's play time follows its tracks unless the user typed one in this edit.
    const QString sum = TrackData::totalDuration(tracks);
    if (!sum.isEmpty() && !values.contains(CdKeys::duration))
      entry.setValue(CdKeys::duration, sum);
  }
  entry.setValue(CdKeys::dateEdited, QDateTime::currentDateTimeUtc());
}

void EntryEditor::applyLinks(Entry& entry) {
  const QVariantList links = links_->links();
  std::vector<Link*> kept;
  for (const QVariant& l : links) {
    const int row = l.toMap().value(QStringLiteral("row")).toInt();
    if (row >= 0 && size_t(row) < shownLinks_.size()) kept.push_back(shownLinks_[size_t(row)]);
  }
  for (Link* old : shownLinks_)
    if (std::find(kept.begin(), kept.end(), old) == kept.end()) entry.removeLink(old);
  for (int i = 0; i < links.size(); ++i) {
    const QVariantMap map = links[i].toMap();
    const int row = map.value(QStringLiteral("row")).toInt();
    Link* link = row >= 0 && size_t(row) < shownLinks_.size() ? shownLinks_[size_t(row)] : nullptr;
    const bool added = !link;
    if (added) {
      if (map.value(QStringLiteral("url")).toString().isEmpty()) continue;
      link = entry.addLink(Store::newLink());
    }
    for (const char* key : {"name", "url", "type"}) {
      const QString value = map.value(QLatin1String(key)).toString();
      link->setValue(QLatin1String(key), value.isEmpty() ? QVariant() : QVariant(value));
    }
    link->setValue(QStringLiteral("position"), qint64(i));
    if (added) controller_.processNewLink(*link);
  }
}
