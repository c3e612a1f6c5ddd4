#pragma once

#include <QDialog>
#include <QVariantMap>

class Freedb;
class MusicBrainz;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class SitePlugin;

// The internet search panel of the web database ("Freedb") and of MusicBrainz: words (or a
// disc identifier, or a pasted result-page address; for MusicBrainz also a barcode or a
// catalogue number) in, the chosen site's results listed, one chosen.
class InternetSearchDialog : public QDialog {
  Q_OBJECT
 public:
  // The site list starts at MusicBrainz when musicBrainzFirst is set.
  InternetSearchDialog(Freedb& freedb, MusicBrainz& musicBrainz, bool musicBrainzFirst, QWidget* parent = nullptr);
  // Runs the search of the field's text; the list fills when the answer arrives.
  void search();
  int chosenIndex() const;
  // The site whose results are listed.
  SitePlugin& chosenSite() const;
  QLineEdit* field() const { return field_; }
  QComboBox* sites() const { return sites_; }
  // What the field holds for MusicBrainz: words (or a disc identifier), a barcode or a catalogue
  // number, in that order.
  QComboBox* searchBy() const { return searchBy_; }
  QListWidget* results() const { return results_; }
  // What the search came to: searching, the number of results, none, or no answer.
  QLabel* status() const { return status_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void searchReturned(int count, const QStringList& titles);
  // The MusicBrainz request for the field's text; empty when the text cannot be one (the status
  // then says why).
  QVariantMap musicBrainzRequest(const QString& text);

  Freedb& freedb_;
  MusicBrainz& musicBrainz_;
  QComboBox* sites_;
  QComboBox* searchBy_;
  QLineEdit* field_;
  QListWidget* results_;
  QLabel* status_;
};
