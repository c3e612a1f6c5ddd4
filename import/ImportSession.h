#pragma once

#include <QHash>
#include <QVariantList>
#include <QVariantMap>
#include <optional>

// The state of one import of audio files or library tracks, alive for that import only: which
// entry each album went to, the ratings seen per album, the entries whose cover is settled, the
// player's library asked once for covers, and the custom field keys asked of the settings once.
// Outside an import there is no session: every track then makes an entry of its own.
struct ImportSession {
  QVariantMap albumsAdded;  // album key -> uid of its entry
  QVariantMap ratings;      // album key -> list of ratings 0-10
  QVariantList importedImages;
  std::optional<QVariantList> entireLibrary;  // read when a cover is first looked for
  QHash<QString, QString> customFieldKeys;  // custom field title -> key ("" for none)
};
