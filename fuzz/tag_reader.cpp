// Audio files' tags, read through the tag reader port into a track dictionary.
#include "FuzzEnvironment.h"
#include "MyAudioMetadata.h"
#include "ScratchFolder.h"
#include "TagLibReader.h"

#include <array>

namespace {

ScratchFolder* folder = nullptr;
// The content picks the parser; the extension counts where the content names no format.
const std::array<const char*, 7> extensions = {"mp3", "m4a", "flac", "ogg", "opus", "aiff", "wav"};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  folder = new ScratchFolder;
  return 0;
}

// The first byte picks the extension (its value modulo 7, in the order above); the rest is the file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const QString name = QStringLiteral("Track.") + QLatin1String(extensions[data[0] % extensions.size()]);
  const QString path = folder->write(name, data + 1, size - 1);
  if (path.isEmpty()) return 0;
  static const TagLibReader reader;
  MyAudioMetadata::getMetadataForPath(path, &reader);
  return 0;
}
