#include "NoticeOverlay.h"

#include <QGraphicsOpacityEffect>
#include <QPropertyAnimation>
#include <QTimer>

NoticeOverlay::NoticeOverlay(QWidget* window, const QString& text) : QLabel(text, window) {
  setObjectName(QStringLiteral("notice"));
  setAlignment(Qt::AlignCenter);
  setWordWrap(true);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setStyleSheet(QStringLiteral("QLabel#notice { background: rgba(30, 30, 30, 210); color: white; border-radius: 14px;"
                               " padding: 18px 28px; font-size: 15pt; }"));
  setMaximumWidth(qMax(200, window->width() * 2 / 3));
  adjustSize();
  move((window->width() - width()) / 2, (window->height() - height()) / 2);
}

void NoticeOverlay::show(QWidget* window, const QString& text, double seconds) {
  auto* notice = new NoticeOverlay(window, text);
  auto* opacity = new QGraphicsOpacityEffect(notice);
  notice->setGraphicsEffect(opacity);
  notice->QLabel::show();
  notice->raise();
  const int shownMs = int(qBound(0.5, seconds, 60.0) * 1000);
  auto* fade = new QPropertyAnimation(opacity, "opacity", notice);
  fade->setStartValue(1.0);
  fade->setEndValue(0.0);
  fade->setDuration(400);
  QObject::connect(fade, &QPropertyAnimation::finished, notice, &QObject::deleteLater);
  QTimer::singleShot(shownMs, fade, [fade] { fade->start(); });
}
