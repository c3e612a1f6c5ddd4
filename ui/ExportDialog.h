#pragma once

#include <QDialog>
#include <vector>

class Entry;
class MyController;
class QComboBox;
class QLineEdit;

// File > Export...: the entries shown, as the command line's export writes them: an HTML site
// (a folder), the native export (a file or a folder) or comma-separated text, to a place chosen
// here. The writing runs under the progress sheet and ends in a notice that says where it went.
class ExportDialog : public QDialog {
  Q_OBJECT
 public:
  enum class Format { Html, Native, NativeFolder, Csv };

  ExportDialog(MyController& controller, QString title, QWidget* parent = nullptr);

  void setFormat(Format format);
  Format format() const;
  void setOutput(const QString& path);
  QString output() const;
  // Writes the entries; false with the reason when nothing was written.
  bool write(const std::vector<Entry*>& entries, QString* error);

 private:
  void browse();
  void proposeOutput();

  MyController& controller_;
  QString title_;
  QComboBox* format_;
  QLineEdit* output_;
};
