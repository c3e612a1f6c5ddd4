#pragma once

#include <QDialog>

class Freedb;
class QLabel;
class QLineEdit;
class QListWidget;

// The internet search panel of the "Freedb" site: words (or a disc identifier, or a pasted
// result-page address) in, the site's results listed, one chosen.
class InternetSearchDialog : public QDialog {
  Q_OBJECT
 public:
  InternetSearchDialog(Freedb& site, QWidget* parent = nullptr);
  // Runs the search of the field's text; the list fills when the page arrives.
  void search();
  int chosenIndex() const;
  QLineEdit* field() const { return field_; }
  QListWidget* results() const { return results_; }
  // What the search came to: searching, the number of results, none, or no answer.
  QLabel* status() const { return status_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void searchReturned(int count);

  Freedb& site_;
  QLineEdit* field_;
  QListWidget* results_;
  QLabel* status_;
};
