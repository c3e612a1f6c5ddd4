#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QVariantMap>

// The music player's XML library file (a property list), read as a stream: the whole file is
// never held as a tree, and the tracks are kept only when asked for.
class LibraryXml {
 public:
  struct Playlist {
    QString name;
    QList<qint64> trackIDs;  // "Track ID" of each "Playlist Items" entry, in order
  };

  // False with error() set when the file cannot be read or is no property list; what was read
  // before a fault in the file is kept.
  bool read(const QString& path, bool withTracks);
  // Files of this size or more are read with two threads when the machine has two cores.
  void setParallelFrom(qint64 bytes) { parallelFrom_ = bytes; }

  const QList<Playlist>& playlists() const { return playlists_; }
  const QHash<qint64, QVariantMap>& tracks() const { return tracks_; }
  const QString& error() const { return error_; }
  // The track dictionaries of the first playlist of that name, in order; ids without a track are skipped.
  QVariantList tracksOfPlaylistNamed(const QString& name) const;
  // Every track under "Tracks", in the order of their ids.
  QVariantList allTracks() const;

  // Where the library file is when the user has not chosen one: the first of the usual places that exists.
  static QString defaultPath();

 private:
  QList<Playlist> playlists_;
  QHash<qint64, QVariantMap> tracks_;
  QString error_;
  qint64 parallelFrom_ = 8 * 1024 * 1024;
};
