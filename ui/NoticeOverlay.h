#pragma once

#include <QLabel>

// A short message over the middle of a window that fades away by itself.
class NoticeOverlay : public QLabel {
  Q_OBJECT
 public:
  static void show(QWidget* window, const QString& text, double seconds);

 private:
  NoticeOverlay(QWidget* window, const QString& text);
};
