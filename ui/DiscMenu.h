#pragma once

#include <QObject>
#include <functional>

class Entry;
class MainWindow;
class MyController;
class QMenu;

// The Disc menu: scan the inserted disc, eject it, search the web database, or add a disc by
// hand with its durations and identifier read from the disc. The add panel the scan leaves open
// is shown as the entry editor.
class DiscMenu : public QObject {
  Q_OBJECT
 public:
  DiscMenu(MyController& controller, MainWindow& window, QMenu* menu);

  void scanDisc();
  void ejectDisc();
  // The internet search panel, searching for the text at once when there is one.
  void internetSearch(const QString& text = {});
  void addManually();
  // Shows the add panel's values in the entry editor, if the panel is open.
  void showAddPanel();

 private:
  MyController& controller_;
  MainWindow& window_;
};
