#pragma once

#include <QObject>
#include <vector>

class CatalogueHistory;
class Entry;
class MyController;
class QMenu;
class QWidget;

// The Disc menu: scan the inserted disc, eject it, search the web database, or add a disc by
// hand with its durations and identifier read from the disc. The add panel the scan leaves open
// is shown as the entry editor. The window follows through the controller's notice that the
// entries changed.
class DiscMenu : public QObject {
  Q_OBJECT
 public:
  // Dialogs open over the window; entries added are kept in the history as one step.
  DiscMenu(MyController& controller, CatalogueHistory& history, QWidget* window, QMenu* menu);

  void scanDisc();
  void ejectDisc();
  // The internet search panel, searching for the text at once when there is one.
  void internetSearch(const QString& text = {});
  void addManually();
  // Shows the add panel's values in the entry editor, if the panel is open.
  void showAddPanel();

 private:
  // Brings newly added entries into the list and selects them.
  void showAddedEntries(const std::vector<Entry*>& entries);

  MyController& controller_;
  CatalogueHistory& history_;
  QWidget* window_;
};
