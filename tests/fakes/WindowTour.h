#pragma once

#include "EntryEditor.h"
#include "ExportDialog.h"
#include "InternetSearchDialog.h"
#include "LibraryImportDialog.h"
#include "MainWindow.h"
#include "MyController.h"
#include "PreferencesDialog.h"
#include "PrintDialog.h"
#include "QtWindowSystem.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTextDocument>
#include <memory>
#include <vector>

// Every window a person meets, built on a launched controller in whatever language is
// installed, for the tests that look at all of them (texts, accessible names, keyboard).
struct WindowTour {
  std::unique_ptr<MainWindow> main;
  std::vector<std::unique_ptr<QWidget>> dialogs;

  WindowTour(MyController& controller, QtWindowSystem& windowSystem, Entry* entry) {
    main = std::make_unique<MainWindow>(controller, windowSystem);
    main->show();
    // Menus filled as they open (Columns, Filter) show their items too.
    for (QMenu* menu : main->findChildren<QMenu*>()) Q_EMIT menu->aboutToShow();
    dialogs.push_back(std::make_unique<EntryEditor>(controller, entry, main.get()));
    dialogs.push_back(std::make_unique<EntryEditor>(controller, nullptr, main.get()));
    dialogs.push_back(std::make_unique<PreferencesDialog>(controller, main.get()));
    dialogs.push_back(std::make_unique<ExportDialog>(controller, QStringLiteral("Shelf"), main.get()));
    dialogs.push_back(std::make_unique<PrintDialog>(controller.sharedPrint(), main.get()));
    dialogs.push_back(std::make_unique<InternetSearchDialog>(controller.freedb(), controller.musicBrainz(), false, main.get()));
    dialogs.push_back(std::make_unique<LibraryImportDialog>(controller, main.get()));
    for (const auto& dialog : dialogs) dialog->show();
  }
  ~WindowTour() {
    dialogs.clear();  // before the window that parents them
  }

  std::vector<QWidget*> windows() const {
    std::vector<QWidget*> all{main.get()};
    for (const auto& dialog : dialogs) all.push_back(dialog.get());
    return all;
  }

  // The texts a person reads, each with where it was found.
  static std::vector<std::pair<QString, QString>> texts(QWidget* window) {
    std::vector<std::pair<QString, QString>> found;
    const QString windowName = window->metaObject()->className();
    auto add = [&](const QObject* where, const QString& text) {
      const QString name = where->objectName().isEmpty() ? QString::fromLatin1(where->metaObject()->className()) : where->objectName();
      found.emplace_back(windowName + QStringLiteral(" / ") + name, text);
    };
    add(window, window->windowTitle());
    std::vector<QAction*> actions;
    for (QAction* action : window->findChildren<QAction*>()) actions.push_back(action);
    for (QMenu* menu : window->findChildren<QMenu*>()) {
      add(menu, menu->title());
      for (QAction* action : menu->actions()) actions.push_back(action);
    }
    for (QAction* action : actions) {
      add(action, action->text());
      if (action->toolTip() != action->text() && !action->toolTip().isEmpty()) add(action, action->toolTip());
    }
    for (QWidget* widget : window->findChildren<QWidget*>()) {
      if (!widget->toolTip().isEmpty()) add(widget, widget->toolTip());
      if (auto* label = qobject_cast<QLabel*>(widget)) {
        QTextDocument plain;
        plain.setHtml(label->text());
        add(label, plain.toPlainText());
      }
      if (auto* button = qobject_cast<QAbstractButton*>(widget)) add(button, button->text());
      if (auto* box = qobject_cast<QGroupBox*>(widget)) add(box, box->title());
      if (auto* edit = qobject_cast<QLineEdit*>(widget)) add(edit, edit->placeholderText());
      if (auto* tabs = qobject_cast<QTabWidget*>(widget))
        for (int i = 0; i < tabs->count(); ++i) add(tabs, tabs->tabText(i));
      if (auto* header = qobject_cast<QHeaderView*>(widget); header && header->model())
        for (int i = 0; i < header->count(); ++i)
          add(header, header->model()->headerData(i, header->orientation()).toString());
    }
    return found;
  }
};
