#pragma once

#include "Store.h"
#include "AttributeKind.h"

#include <QDialog>
#include <QHash>
#include <vector>

class CoverWell;
class Entry;
class Link;
class MyController;
class LinksTable;
class QLabel;
class QPushButton;
class TrackTable;

// The add / edit panel: one editor per field of the field catalogue (text, long text, combo box
// with the values already used, check box, date, borrower, rating, tokens) on two tabs, the
// status and rating, and the track table.
class EntryEditor : public QDialog {
  Q_OBJECT
 public:
  // With no entry the panel makes a new one, through the add panel, in the shown collection.
  EntryEditor(MyController& controller, Entry* entry, QWidget* parent = nullptr);

  // The entry added or edited, once accepted.
  Entry* entry() const { return entry_; }
  // The editor of a field, by identifier ("title", "status", "myRating"...).
  QWidget* editorFor(const QString& identifier) const { return editors_.value(identifier); }
  TrackTable* trackTable() const { return tracks_; }
  LinksTable* linksTable() const { return links_; }
  CoverWell* coverWell() const { return cover_; }
  // Sets an editor's text or state as a person would; for tests and scripted fills.
  void setFieldText(const QString& identifier, const QString& text);

  // Fills the editors from the add panel's values and tracks. With search results behind the
  // panel, its previous and next buttons step through them.
  void loadFromAddPanel();
  QPushButton* backButtonPanel() const { return back_; }
  QPushButton* nextButtonPanel() const { return next_; }

  void accept() override;

  // Another process saved the entry being edited: fields the user has not touched show the new
  // values, a changed field the user is editing keeps what they typed and the notice says so. An
  // entry deleted elsewhere can be saved back as a new entry, or dropped with Cancel.
  void showOutsideChanges(const Store::OutsideChanges& changes);
  QLabel* outsideChangeNotice() const { return notice_; }

 private:
  QWidget* makeEditor(const QString& identifier, int type, bool longText);
  void showValue(const QString& identifier, const QVariant& value);
  void showResult(int step);
  QString textOf(const QString& identifier) const;
  QVariant editorValue(const QString& identifier) const;
  // The values to store, read as their attributes' kinds, of the fields the user changed (all of
  // them for a new entry); false with the problem when one cannot be read (letters in a date).
  // What was typed that may not be what was meant (an empty title, letters in a number, a date
  // either way round) is added to doubts, for the user to confirm.
  bool readValues(QVariantMap* values, QString* problem, QStringList* doubts = nullptr) const;
  void noteDoubt(const QString& identifier, AttributeKind kind, const QString& typed, const QVariant& value,
                 QStringList* doubts) const;
  bool addEntry(const QVariantMap& values);
  void applyTo(Entry& entry, const QVariantMap& values);
  // New links are finished as every new link is (moved, typed); removed ones go.
  void applyLinks(Entry& entry);
  void showTracks();
  void showLinks();

  MyController& controller_;
  Entry* entry_;
  QHash<QString, QWidget*> editors_;
  QStringList identifiers_;
  QHash<QString, QVariant> shown_;  // the editors' values as first shown for the entry
  QHash<QString, QVariant> stored_;  // the entry's values as last seen
  bool deletedElsewhere_ = false;
  QLabel* notice_;
  QPushButton* save_;
  TrackTable* tracks_;
  LinksTable* links_;
  CoverWell* cover_;
  std::vector<Link*> shownLinks_;  // the entry's links as the table was filled
  QPushButton *back_, *next_;
};
