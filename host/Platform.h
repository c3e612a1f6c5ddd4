#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <functional>
#include <optional>

class MusicPlayer;

class TagReader;

// What the product needs of the desktop it runs on.
class Platform {
 public:
  virtual ~Platform() = default;

  // The major release number of the operating system.
  virtual int osVersion() const = 0;
  // Calls the handler on the main thread with the mount point of every newly mounted volume.
  virtual void observeMounts(std::function<void(const QString& volumePath)> handler) = 0;
  // Calls the handler on the main thread with the drive ("/dev/sr0") of every audio CD put in;
  // audio CDs are not mounted, so observeMounts never hears of them. Nothing where the desktop
  // cannot tell.
  virtual void observeAudioDiscs(std::function<void(const QString& device)> handler) { Q_UNUSED(handler); }
  virtual QStringList mountedRemovableVolumes() const = 0;
  virtual bool eject(const QString& volumePath) = 0;
  // The tracks of the music player's library as track dictionaries; empty when there is no
  // player library to read. May be called on a background thread.
  virtual QVariantList musicLibraryTracks() = 0;
  // The tracks of the player's library file at path, whichever player wrote it; empty when it is
  // none the desktop reads. May be called on a background thread.
  virtual QVariantList musicLibraryTracksAt(const QString& path) {
    Q_UNUSED(path);
    return {};
  }
  // The name of the application the desktop opens the file with (without ".desktop" or ".app"),
  // or empty when it names none.
  virtual QString applicationForFile(const QString& path) const {
    Q_UNUSED(path);
    return {};
  }
  // The reader of audio tags; null where no media framework is available.
  virtual const TagReader* tagReader() const { return nullptr; }

  virtual bool fileExists(const QString& path) const = 0;
  // A property-list file read as a dictionary; nullopt when it is missing, unreadable or no
  // dictionary.
  virtual std::optional<QVariantMap> propertyListDictionary(const QString& path) const = 0;
  // The table of contents of the audio CD in the drive (the system's default drive when empty),
  // as a ".TOC.plist" dictionary holds it; nullopt when there is no readable audio CD.
  virtual std::optional<QVariantMap> driveTableOfContents(const QString& device) const = 0;
  // The MusicBrainz disc identifier of a table of contents (the lead-out and each track's start
  // in frames, track 1 first); empty when none can be made of them.
  virtual QString musicBrainzDiscID(qint64 leadout, const QList<qint64>& starts) const {
    Q_UNUSED(leadout);
    Q_UNUSED(starts);
    return {};
  }
  // The player to ask about an inserted CD; null when the system has none that answers.
  virtual MusicPlayer* musicPlayer() { return nullptr; }
};
