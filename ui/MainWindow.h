#pragma once

#include "Store.h"

#include <QMainWindow>
#include <QPointer>

class CatalogueHistory;
class CatalogueWatcher;
class DuplicatesDialog;
class StatisticsDialog;
class Collection;
class QAction;
class CollectionsPanel;
class EmptyCatalogueHint;
class Entry;
class EntryTableModel;
class MyController;
class PageView;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QTableView;
class QTextBrowser;
class QToolButton;
class QUrl;
class QtWindowSystem;

// The catalogue window: collections on the left, the entry list with its footer in the middle,
// the selected entry's page on the right, and the menus and tool bar that act on them.
class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  MainWindow(MyController& controller, QtWindowSystem& windowSystem);
  ~MainWindow() override;

  // For tests and scripts: the parts a person looks at and types into.
  EntryTableModel* listModel() const { return model_; }
  QTableView* listView() const { return list_; }
  QLabel* footer() const { return footer_; }
  QLineEdit* searchField() const { return search_; }
  QTextBrowser* pageView() const;
  CollectionsPanel* collectionsPanel() const { return collections_; }
  // The changes of this session, behind Edit > Undo and Redo.
  CatalogueHistory* history() const { return history_; }
  int searchType() const { return searchType_; }
  void setSearchType(int type);

  // Menu actions, callable directly.
  void showColumn(const QString& identifier, bool shown);
  // A filter menu item ("field", "action"); value is the chosen value for action 1.
  void applyFilter(const QVariantMap& item, const QString& value = {});
  void addEntry();
  void editEntry();
  void deleteSelectedEntries();
  void newCollectionFromSelection();
  void selectEntries(const std::vector<Entry*>& entries);
  // After the catalogue changed underneath (another catalogue opened, entries added elsewhere).
  void reloadAll();
  // View ▸ Statistics and View ▸ Duplicates: one window each, read anew when shown again.
  void showStatistics();
  void showDuplicates();
  // What another process saved, shown in place: the list keeps its selection and the row at its
  // top; footer, collections, the entry page and an open editor follow.
  void showOutsideChanges(const Store::OutsideChanges& changes);
  CatalogueWatcher* catalogueWatcher() const { return watcher_; }
  // Files, folders, URLs and texts handed to the application (at launch, by a later launch):
  // files go to the dispatcher, the rest to the incoming-string handling.
  void openStrings(const QStringList& words);

 protected:
  void closeEvent(QCloseEvent* event) override;
  // Files and folders dropped on the window are imported, each as File > Import... would.
  // A picture dropped on an entry of the list becomes its cover.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void buildMenus();
  QWidget* buildListPane();
  void restoreState();
  void saveState();
  void refreshList();
  void selectionChanged();
  // Menu items that cannot apply to the selection or the shown collection are greyed out.
  void updateActions();
  void showEntryPage(Entry* entry);
  Entry* entryUnder(const QPointF& at) const;
  void setCoverOf(Entry& entry, const QImage& cover);
  void showCollection(Collection* collection);
  void runSearch();
  void chooseFilter(const QVariantMap& item);
  void fillColumnsMenu();
  void showSortIndicator();
  void fillFilterMenu();
  void renameCollection();
  void deleteCollection();
  void dropEntries(Collection* collection, const QList<qint64>& uids);
  void importPaths(const QStringList& paths);
  // The files as one import: one undo step, and the files skipped listed once at the end.
  bool importFiles(const QStringList& paths);
  void newCatalogue();
  void openCatalogue();
  void switchCatalogue(const QString& path);
  void showPreferences();
  void exportShown();
  // A notice of where a saved file went.
  void tellWhere(const QString& path);
  void showFooter(const QString& footer, qsizetype selectedCount);
  void pageLinkClicked(const QUrl& url);
  // Shows the catalogue as an undo or redo left it, with the entries it touched selected.
  void showUndoneStep(const QList<qint64>& uids);

  MyController& controller_;
  QtWindowSystem& windowSystem_;
  CatalogueHistory* history_;
  QPointer<StatisticsDialog> statistics_;
  QPointer<DuplicatesDialog> duplicates_;
  EntryTableModel* model_;
  QTableView* list_;
  CollectionsPanel* collections_;
  PageView* page_;
  QLabel* footer_;
  QLineEdit* search_;
  QSplitter* splitter_;
  QMenu *columnsMenu_, *filterMenu_, *searchMenu_;
  QToolButton *filterButton_, *searchTypeButton_;
  QAction* clearFilter_;
  EmptyCatalogueHint* emptyHint_;
  QAction *editAction_, *deleteAction_, *selectAllAction_, *exportAction_, *renameCollectionAction_, *deleteCollectionAction_;
  int searchType_ = 1;
  bool libraryAsked_ = false;
  CatalogueWatcher* watcher_;
};
