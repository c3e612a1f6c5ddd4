#pragma once

#include <QDialog>
#include <vector>

class CatalogueHistory;
class Entry;
class MyController;
class QLabel;
class QPushButton;
class QTreeWidget;

// View ▸ Duplicates: groups of entries that are one release, then groups of other editions of
// one album, each entry with the fields that differ in its group highlighted; Merge makes one
// entry of the chosen ones, as one step to undo.
class DuplicatesDialog : public QDialog {
  Q_OBJECT
 public:
  DuplicatesDialog(MyController& controller, CatalogueHistory& history, QWidget* parent = nullptr);

  // Looks for duplicates again in the whole catalogue.
  void refresh();
  QTreeWidget& tree() const { return *tree_; }
  QPushButton& mergeButton() const { return *merge_; }
  // The selected entries, or those of the selected group, in catalogue order.
  std::vector<Entry*> chosenEntries() const;
  // Merges the chosen entries into the first of them.
  void mergeChosen();

 Q_SIGNALS:
  // Entries were merged and saved; uid is the entry that stays.
  void merged(qint64 uid);

 private:
  void updateButton();

  MyController& controller_;
  CatalogueHistory& history_;
  QTreeWidget* tree_;
  QPushButton* merge_;
  QLabel* summary_;
};
