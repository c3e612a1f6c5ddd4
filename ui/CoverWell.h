#pragma once

#include <QFrame>
#include <QImage>

class QLabel;
class QMimeData;
class QPushButton;

// The entry panel's cover: shows the cover, and takes a new one from a chosen file, a dropped
// image (file or picture) or the clipboard; Remove takes it away. Nothing is written until the
// panel is saved: the panel asks isChanged() and cover().
class CoverWell : public QFrame {
  Q_OBJECT
 public:
  explicit CoverWell(QWidget* parent = nullptr);

  // The cover the entry has now; not a change.
  void showCover(const QImage& cover);
  // A new cover, as if dropped; false (and nothing changes) when it is no picture.
  bool takeImage(const QImage& image);
  bool takeFile(const QString& path);
  // Takes what the clipboard holds: a picture, or the address of a picture file.
  bool paste();
  void removeCover();
  void chooseFile();

  bool isChanged() const { return changed_; }
  // The cover to keep; null when the entry is to have none.
  const QImage& cover() const { return cover_; }

  // The picture in dragged or pasted data: image data, or the first local file that is one.
  static QImage imageIn(const QMimeData& data);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void refresh();

  QLabel* picture_;
  QPushButton* remove_;
  QImage cover_;
  bool changed_ = false;
};
