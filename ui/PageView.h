#pragma once

#include <QTextBrowser>

class Settings;

// The entry page: the rendered template, with the covers of the data folder shown as cover
// cells (see CoverCell) instead of at whatever size their files have. No picture is wider than
// the pane: a narrow pane scales the cover down, and the page is laid out again as it widens.
class PageView : public QTextBrowser {
  Q_OBJECT
 public:
  PageView(const Settings& settings, QWidget* parent = nullptr);

  // The data folder: relative addresses resolve there, and its "Covers" are drawn as cells.
  void setDataFolder(const QString& folder);
  // Shows a page; an empty text clears the view.
  void showPage(const QString& html);
  QVariant loadResource(int type, const QUrl& name) override;
  // The widest a picture may be at the pane's present width.
  int widestPicture() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  const Settings& settings_;
  QString coversFolder_;
  QString html_;
  // The widest picture of the page at its own size, and the width it was laid out for.
  int widestWanted_ = 0, laidOutFor_ = 0;
};
