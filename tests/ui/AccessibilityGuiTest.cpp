#include "MainWindow.h"
#include "PageView.h"
#include "WindowTestBase.h"
#include "WindowTour.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QApplication>
#include <QMenuBar>
#include <QPalette>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace {

class AccessibilityGuiTest : public WindowTestBase<> {
 protected:
  Entry* entry = nullptr;
  void SetUp() override {
    launch(dir.filePath("a.sqlite"));
    entry = add({{"title", "Kind of Blue"}, {"artist", "Miles Davis"}, {"genre", "Jazz"}});
    controller->saveManagedObjectContext();
  }
};

QString where(const QWidget* widget) {
  QStringList path;
  for (const QWidget* w = widget; w; w = w->parentWidget())
    path.prepend(w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className()) : w->objectName());
  return path.join(QStringLiteral(" / "));
}

// What a screen reader announces: the accessible name, else the label that is its buddy, else
// the button's text; tab bars are read tab by tab.
bool named(QWidget* widget) {
  if (qobject_cast<QTabBar*>(widget)) return true;
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
  return accessible && !accessible->text(QAccessible::Name).trimmed().isEmpty();
}

double luminance(const QColor& c) {
  auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
  return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double la = luminance(a), lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

}  // namespace

TEST_F(AccessibilityGuiTest, EveryControlThatTakesFocusHasAName) {
  WindowTour windows(*controller, windowSystem, entry);
  QStringList unnamed;
  for (QWidget* window : windows.windows())
    for (QWidget* widget : window->findChildren<QWidget*>()) {
      if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisibleTo(window) || widget->focusProxy()) continue;
      if (!named(widget)) unnamed << where(widget);
    }
  EXPECT_TRUE(unnamed.isEmpty()) << unnamed.join(QLatin1Char('\n')).toStdString();
}

TEST_F(AccessibilityGuiTest, EveryMenuCommandHasAKeyAndTabVisitsEachPane) {
  MainWindow window(*controller, windowSystem);
  window.resize(1400, 900);  // room for the whole tool bar, as on a desktop
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QStringList keyless;
  std::function<void(QMenu*)> walk = [&](QMenu* menu) {
    for (QAction* action : menu->actions()) {
      if (action->isSeparator() || action->text().isEmpty()) continue;
      if (action->menu()) walk(action->menu());
      if (!action->text().contains(QLatin1Char('&')) && action->shortcut().isEmpty())
        keyless << menu->title() + QStringLiteral(" > ") + action->text();
    }
  };
  for (QAction* top : window.menuBar()->actions()) {
    if (!top->text().contains(QLatin1Char('&'))) keyless << top->text();
    if (top->menu()) walk(top->menu());
  }
  EXPECT_TRUE(keyless.isEmpty()) << keyless.join(QLatin1Char('\n')).toStdString();

  // Tab goes round the window in reading order: the search field on the tool bar, the
  // collections, the list and the entry page, left to right, and back by the tool bar.
  window.searchField()->setFocus();
  QStringList visited;
  for (int i = 0; i < 12; ++i) {
    QWidget* focus = QApplication::focusWidget();
    ASSERT_TRUE(focus);
    while (focus && focus->objectName().isEmpty()) focus = focus->parentWidget();
    if (!visited.isEmpty() && focus && focus->objectName() == visited.front()) break;
    visited << (focus ? focus->objectName() : QStringLiteral("?"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(visited.join(u' '), "search collections entries page filterButton searchType");
}

TEST_F(AccessibilityGuiTest, TheEntryPageReadsOnADarkPalette) {
  const QPalette light = QApplication::palette();
  QPalette dark;
  dark.setColor(QPalette::Window, QColor(0x20, 0x20, 0x24));
  dark.setColor(QPalette::WindowText, QColor(0xe8, 0xe8, 0xe8));
  dark.setColor(QPalette::Base, QColor(0x18, 0x18, 0x1b));
  dark.setColor(QPalette::AlternateBase, QColor(0x22, 0x22, 0x26));
  dark.setColor(QPalette::Text, QColor(0xea, 0xea, 0xea));
  dark.setColor(QPalette::Button, QColor(0x2a, 0x2a, 0x2e));
  dark.setColor(QPalette::ButtonText, QColor(0xe8, 0xe8, 0xe8));
  dark.setColor(QPalette::Highlight, QColor(0x3d, 0x6e, 0xb5));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  dark.setColor(QPalette::Link, QColor(0x7a, 0xb4, 0xff));
  dark.setColor(QPalette::PlaceholderText, QColor(0x90, 0x90, 0x90));
  for (const bool isDark : {true, false}) {
    const QPalette palette = isDark ? dark : light;
    QApplication::setPalette(palette);
    MainWindow window(*controller, windowSystem);
    window.show();
    window.selectEntries({entry});
    QTextDocument* page = window.pageView()->document();
    ASSERT_TRUE(page->toPlainText().contains("Kind of Blue"));
    const QTextFrameFormat root = page->rootFrame()->frameFormat();
    const QColor background = root.background().style() == Qt::NoBrush ? palette.color(QPalette::Base) : root.background().color();
    double worst = 21;
    QString worstText;
    for (QTextBlock block = page->begin(); block.isValid(); block = block.next())
      for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (fragment.text().trimmed().isEmpty()) continue;
        const QBrush brush = fragment.charFormat().foreground();
        const QColor ink = brush.style() == Qt::NoBrush ? palette.color(QPalette::Text) : brush.color();
        QColor behind = fragment.charFormat().background().style() == Qt::NoBrush
                            ? (block.blockFormat().background().style() == Qt::NoBrush ? background
                                                                                      : block.blockFormat().background().color())
                            : fragment.charFormat().background().color();
        if (const double c = contrast(ink, behind); c < worst) {
          worst = c;
          worstText = fragment.text();
        }
      }
    // 3:1 is the least for large or secondary text; body text reaches more.
    EXPECT_GE(worst, 3.0) << "\"" << worstText.toStdString() << "\" on " << (isDark ? "dark" : "light");
  }
  QApplication::setPalette(light);
}
