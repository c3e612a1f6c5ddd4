#pragma once

#include <QHash>
#include <QPair>
#include <QVariantList>
#include <QVariantMap>
#include <mutex>

class Platform;

// The add panel's track table, and the music player's library kept in memory so the panel can
// tell which tracks the player already has.
class TrackData {
 public:
  explicit TrackData(Platform& platform) : platform_(platform) {}

  QVariantList tracks() const { return tracks_; }
  void setTracks(const QVariantList& tracks) { tracks_ = tracks; }
  // Every track's "duration" summed, as a time text; empty when no track has one.
  QString calculateTotalDuration() const { return totalDuration(tracks_); }
  // The same for any track dictionaries. Times are read as a person types them, so "1:02:03" is
  // an hour; the sum saturates rather than overflow.
  static QString totalDuration(const QVariantList& tracks);
  // The music player's track times summed, or a null text when 0. Only the first ":" counts, as
  // the player writes them, so "1:02:03" is 1 minute 2 seconds.
  static QString playerTotalDuration(const QVariantList& tracks);
  // Gives track k the k-th duration, adding tracks that have only a duration when there are more
  // durations than tracks.
  void setDurationCD(const QStringList& durations);

  // Reads the player's library; safe to run on a background thread.
  void loadItunes();
  // Keeps these tracks as the library; safe on any thread.
  void loadLibrary(QVariantList library);
  bool libraryLoaded() const;
  int libraryTrackCount() const;
  // Whether the library has a track of that name on an album of the main entry's title, ignoring
  // case. Answered from an index, as a page asks it for every track.
  bool isTrackInItunes(const QVariantMap& track, const QVariantMap& mainEntry) const;
  // The library's file of a track of that name on an album of that title, ignoring case, as the
  // library writes it (a file:// URL); empty when the library has none.
  QString libraryLocation(const QString& trackName, const QString& album) const;

 private:
  Platform& platform_;
  QVariantList tracks_;
  mutable std::mutex libraryMutex_;
  QVariantList library_;
  QHash<QPair<QString, QString>, QString> nameAndAlbum_;  // case-folded -> "Location"
  bool libraryLoaded_ = false;
};
