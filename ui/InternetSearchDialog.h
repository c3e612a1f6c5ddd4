#pragma once

#include <QDialog>

class Freedb;
class MusicBrainz;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class SitePlugin;

// The internet search panel of the web database ("Freedb") and of MusicBrainz: words (or a
// disc identifier, or a pasted result-page address) in, the chosen site's results listed, one
// chosen.
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
  QListWidget* results() const { return results_; }
  // What the search came to: searching, the number of results, none, or no answer.
  QLabel* status() const { return status_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void searchReturned(int count, const QStringList& titles);

  Freedb& freedb_;
  MusicBrainz& musicBrainz_;
  QComboBox* sites_;
  QLineEdit* field_;
  QListWidget* results_;
  QLabel* status_;
};
