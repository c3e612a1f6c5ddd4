#pragma once

#include <QListWidget>

class Collection;
class MyController;

// The collections on the left of the window: every entry, the borrowed and wish-list
// collections, then the user's. Entries dragged from the list onto a user collection join it.
class CollectionsPanel : public QListWidget {
  Q_OBJECT
 public:
  explicit CollectionsPanel(MyController& controller, QWidget* parent = nullptr);

  void reload();
  // The numbers beside the collections, after entries were added, deleted or moved.
  void refreshCounts();
  // nullptr for every entry.
  Collection* currentCollection() const;
  void selectCollection(const Collection* collection);
  // What a person sees: the number of entries beside a collection, and the row a drag would
  // drop on (-1 without one).
  qint64 countShown(int row) const;
  int dropTargetRow() const;

 Q_SIGNALS:
  void collectionChosen(Collection* collection);
  void entriesDropped(Collection* collection, const QList<qint64>& uids);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  Collection* collectionAt(const QPoint& position) const;
  void showDropTarget(QListWidgetItem* target);

  MyController& controller_;
};
