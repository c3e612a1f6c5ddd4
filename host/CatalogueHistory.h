#pragma once

#include <QList>
#include <QObject>
#include <QUndoStack>
#include <functional>
#include <vector>

class Entry;
class MyControllerShared;

// The changes made to the catalogue in this session, to undo and redo one at a time. It lives as
// long as the window: a catalogue opened anew starts with nothing to undo.
class CatalogueHistory : public QObject {
  Q_OBJECT
 public:
  // The number of changes kept; the oldest goes when one more is made.
  static constexpr int undoLimit = 100;

  explicit CatalogueHistory(MyControllerShared& controller, QObject* parent = nullptr);

  QUndoStack& stack() { return stack_; }

  // Runs the change (which saves as it always does) and keeps it as one step under the name;
  // with no name an edit names itself after what it changed. touched are the entries it may
  // edit or delete; what it adds (entries, collections, members) is found by itself. withCovers
  // keeps the touched entries' covers, for changes that may replace one. A change made while
  // another is recorded belongs to that one. Nothing is kept when nothing changed.
  void record(const QString& name, const std::vector<Entry*>& touched, const std::function<void()>& change,
              bool withCovers = false);

 Q_SIGNALS:
  // An undo or redo was applied and saved; uids are the entries it put back or changed.
  void stepApplied(const QList<qint64>& uids);

 private:
  MyControllerShared& controller_;
  QUndoStack stack_;
  bool recording_ = false;
};
