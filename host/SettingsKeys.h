#pragma once

#include <QString>

// Settings keys of the application, spelled as they are stored.
namespace SettingsKeys {
inline const QString infoTemplate = QStringLiteral("InfoTemplate");
inline const QString releaseDateFormat = QStringLiteral("releaseDateFormat");
inline const QString coverBorder = QStringLiteral("Cover Border");
inline const QString coverBackground = QStringLiteral("Cover Background");
inline const QString cellSize = QStringLiteral("CellSize");
inline const QString bezelDisplayTime = QStringLiteral("BezelDisplayTime");
inline const QString bottomFields = QStringLiteral("Bottom Fields");
inline const QString defaultColumns = QStringLiteral("DefaultColumns");
inline const QString refreshItunesAuto = QStringLiteral("Refresh Itunes Auto");
inline const QString lastItunes = QStringLiteral("Last Itunes");
// The music player's XML library file chosen by the user (shown as "Music Library XML").
inline const QString iTunesLibraryXML = QStringLiteral("iTunes Library XML");
// The player's library the user chose for play links: a Rhythmbox, Strawberry or Clementine
// library file, or an exported library XML. Unset: the XML above, else the player found first.
inline const QString musicLibrary = QStringLiteral("Music Library");
// The CDDB and web-search host, "host[:port]"; without a user value, a public freedb-compatible
// server.
inline const QString cddbServer = QStringLiteral("CDDB Server");
inline const QString defaultCddbServer = QStringLiteral("gnudb.gnudb.org");
// Disc insertion: scan a mounted audio CD at once, eject it after the lookup, and with exactly one
// match add the entry without waiting for the user.
inline const QString scanCD = QStringLiteral("scanCD");
inline const QString ejectCD = QStringLiteral("ejectCD");
inline const QString firstResultAdd = QStringLiteral("First Result Add");
// Seconds a CDDB or web-search exchange may take before it counts as failed.
inline const QString cddbTimeout = QStringLiteral("CDDB Timeout");
// The user and host words of the CDDB hello: fixed words by default, never the real user or
// machine name.
inline const QString cddbHelloUser = QStringLiteral("CDDB Hello User");
inline const QString cddbHelloHost = QStringLiteral("CDDB Hello Host");
// The online sources a disc is looked up in, in order ("MusicBrainz", "CDDB"); a source left
// out is switched off.
inline const QString lookupSources = QStringLiteral("Lookup Sources");
// The MusicBrainz web service root and the cover-art service root.
inline const QString musicBrainzServer = QStringLiteral("MusicBrainz Server");
inline const QString coverArtServer = QStringLiteral("Cover Art Server");
// The contact address the MusicBrainz requests name in their User-Agent.
inline const QString musicBrainzContact = QStringLiteral("MusicBrainz Contact");
}  // namespace SettingsKeys
