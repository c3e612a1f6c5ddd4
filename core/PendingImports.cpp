#include "MyController.h"
#include "WindowSystem.h"

// Audio file and music library import arrive separately; until then these say so.
namespace {
bool unavailable(WindowSystem& windowSystem) {
  windowSystem.runAlert(QStringLiteral("Importing audio files is not available in this build."), QString(),
                        {QStringLiteral("OK")});
  return false;
}
}  // namespace

bool MyController::importAudioFile(const QString&) { return unavailable(windowSystem()); }
bool MyController::openDirectory(const QString&) { return unavailable(windowSystem()); }
bool MyController::importItunesFromTracks(const QVariantList&) { return unavailable(windowSystem()); }
