#include "LibraryImport.h"

#include "CdKeys.h"
#include "Entry.h"
#include "LibraryTrackMapping.h"
#include "ImportServices.h"
#include "StringTable.h"
#include "WindowSystem.h"

std::vector<Entry*> LibraryImport::importTracks(const ImportServices& c, ImportSession* session, const QVariantList& tracks,
                                                ImportBatch batch) {
  std::vector<Entry*> entries;
  WindowSystem& ws = c.windowSystem;
  ws.showProgressSheet(
      c.strings.localizedString(QStringLiteral("ImportingFromItunes"), QStringLiteral("Importing from iTunes...")),
      QString(), int(tracks.size()));
  for (const QVariant& value : tracks) {
    if (value.typeId() != QMetaType::QVariantMap) continue;
    const QVariantMap track = value.toMap();
    if (track.value(QStringLiteral("Movie")).toBool() || track.value(QStringLiteral("Podcast")).toBool() ||
        track.value(QStringLiteral("TV Show")).toBool())
      continue;
    bool existed = false;
    Entry* entry = LibraryTrackMapping::entryForTrack(c, session, track, &existed);
    ws.setProgressSubtitle(entry->stringValue(CdKeys::title));
    if (!existed) entries.push_back(entry);
    ws.increaseProgress();
    if (batch.add(!existed) && !c.save()) break;
    if (ws.progressCancelled()) break;
  }
  ws.closeProgressSheet();
  return entries;
}
