#pragma once

#include <QDialog>

class MyController;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QListWidget;
class QSpinBox;

// Every user setting of the application, in three tabs; OK stores them.
class PreferencesDialog : public QDialog {
  Q_OBJECT
 public:
  explicit PreferencesDialog(MyController& controller, QWidget* parent = nullptr);
  void accept() override;

 private:
  MyController& controller_;
  QComboBox* template_;
  QLineEdit *releaseDateFormat_, *cddbServer_, *coverWidth_, *coverHeight_;
  QLineEdit *musicBrainzServer_, *coverServer_, *contact_, *musicLibrary_;
  QListWidget* sources_;
  QDoubleSpinBox *bezelTime_, *coverBackground_;
  QSpinBox* cellSize_;
  QCheckBox *refreshLibrary_, *importDuplicates_, *coverBorder_;
  QList<QCheckBox*> bottomFields_, discSwitches_;
};
