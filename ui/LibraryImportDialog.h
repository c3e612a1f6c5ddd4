#pragma once

#include <QDialog>

class MyController;
class QComboBox;
class QLabel;

// File ▸ Import Music Library…: choose a playlist of the music player's library file, or another
// library file. The chosen file is kept in the setting "iTunes Library XML".
class LibraryImportDialog : public QDialog {
  Q_OBJECT
 public:
  LibraryImportDialog(MyController& controller, QWidget* parent);
  // Runs the panel and the import; true when entries were imported.
  static bool run(MyController& controller, QWidget* parent);

 private:
  bool load(const QString& path);
  bool chooseAnotherFile();

  MyController& controller_;
  QString path_;
  QLabel* file_;
  QComboBox* playlists_;
};
