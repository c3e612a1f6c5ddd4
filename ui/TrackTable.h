#pragma once

#include <QVariantList>
#include <QWidget>

class QLabel;
class QTableWidget;

// The edit panel's track table: name, artist, composer and play time of each track, with add,
// remove and reorder, and the total play time under it.
class TrackTable : public QWidget {
  Q_OBJECT
 public:
  explicit TrackTable(QWidget* parent = nullptr);

  // Track dictionaries with "name", "artist", "composer", "duration" and "position".
  void setTracks(const QVariantList& tracks);
  // In table order. Positions are kept while the tracks keep their order and number (so disc
  // offsets survive an edit of a name), otherwise they count from 0.
  QVariantList tracks() const;
  bool isModified() const { return modified_; }
  QTableWidget* table() const { return table_; }
  void addTrack();

 private:
  void removeTracks();
  void move(int by);
  void changed();

  QTableWidget* table_;
  QLabel* total_;
  bool modified_ = false;
  bool reordered_ = false;
};
