#pragma once

#include <QTextBrowser>

class Settings;

// The entry page: the rendered template, with the covers of the data folder shown as cover
// cells (see CoverCell) instead of at whatever size their files have.
class PageView : public QTextBrowser {
  Q_OBJECT
 public:
  PageView(const Settings& settings, QWidget* parent = nullptr);

  // The data folder: relative addresses resolve there, and its "Covers" are drawn as cells.
  void setDataFolder(const QString& folder);
  QVariant loadResource(int type, const QUrl& name) override;

 private:
  const Settings& settings_;
  QString coversFolder_;
};
