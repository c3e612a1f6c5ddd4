#pragma once

#include <QVariantMap>

class Entry;
struct ImportServices;
struct ImportSession;

// Turns one track metadata dictionary (from file tags or the music library) into catalogue data:
// the track joins the entry this import already made for its album, or starts a new entry.
class LibraryTrackMapping {
 public:
  // wasExisting is set (never cleared) when the track went into an entry made earlier in the
  // session; without a session every track makes an entry of its own.
  static Entry* entryForTrack(const ImportServices& services, ImportSession* session, const QVariantMap& track,
                              bool* wasExisting);
  // The album the track belongs to: album with its album artist, else (not a compilation) with
  // its artist, else the bare album.
  static QString albumKey(const QVariantMap& track, const QString& unknown);
  // Sets the cover of the entry from the library track with that persistent identifier.
  static bool lookForiTunesImage(const ImportServices& services, const QString& persistentID, Entry& entry,
                                 const QVariantList& library);
};
