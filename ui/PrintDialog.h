#pragma once

#include "PrintRequest.h"

#include <QDialog>

class PrintController;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;

// The print panel: a list layout (with its description) or the covers at a chosen size, the
// orientation, and whether the pages go to a printer or a PDF file.
class PrintDialog : public QDialog {
  Q_OBJECT
 public:
  enum class Destination { Printer, Pdf };

  explicit PrintDialog(const PrintController& panel, QWidget* parent = nullptr);

  void selectLayout(int index);
  void setCovers(bool covers);
  Destination destination() const { return destination_; }
  // The choice, for a device or PDF path the caller fills in.
  PrintRequest request() const;

 private:
  void layoutChosen();
  void keepRatio(QLineEdit* changed, QLineEdit* other, double ratio);
  void storeCoverSize();

  const PrintController& panel_;
  QListWidget* layouts_;
  QLabel* description_;
  QRadioButton *table_, *covers_;
  QLineEdit *coverWidth_, *coverHeight_;
  QCheckBox* landscape_;
  Destination destination_ = Destination::Printer;
};
