#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTest>
#include <QTimer>
#include <functional>

// Plays the person at a real window: acts on a dialog as soon as it is up, while the code that
// opened it waits in the dialog's own event loop.
namespace GuiScript {

// The watch ends with the context object, so that a watch whose dialog never came does not
// outlive its test.
template <typename Widget>
void whenShown(std::function<void(Widget*)> act, const QObject* context = qApp) {
  QTimer::singleShot(20, context, [act, context] {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* widget = qobject_cast<Widget*>(w); widget && widget->isVisible()) return act(widget);
    whenShown<Widget>(act, context);
  });
}

// Runs the work from inside an event loop, as a menu command runs in the application: what the
// work leaves for "later" (deleteLater) then waits for that loop, as it does for a person.
inline void fromEventLoop(const std::function<void()>& work) {
  QEventLoop loop;
  QTimer::singleShot(0, &loop, [&] {
    work();
    loop.quit();
  });
  loop.exec();
}

// What an alert said, and whether a progress sheet showed while it was up.
struct AlertSeen {
  QString title, text;
  bool underASheet = false;
  QObject watch;  // ends the watch for the alert when this goes
};

// Answers the next alert with the button of that text. The alert stays up long enough for a
// sheet's own timer to bring a forgotten sheet over it.
inline void answerAlert(AlertSeen* seen, const QString& button = QStringLiteral("OK")) {
  whenShown<QMessageBox>([seen, button](QMessageBox* box) {
    QTest::qWait(500);
    for (QWidget* w : QApplication::topLevelWidgets())
      if (qobject_cast<QProgressDialog*>(w) && w->isVisible()) seen->underASheet = true;
    seen->title = box->text();
    seen->text = box->informativeText();
    for (QAbstractButton* b : box->buttons())
      if (b->text() == button) return b->click();
  }, &seen->watch);
}

}  // namespace GuiScript
