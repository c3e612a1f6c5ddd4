// The music player's library XML, read as a stream by one thread or, for large files, two.
#include "FuzzEnvironment.h"
#include "LibraryXml.h"
#include "ScratchFolder.h"

#include <QDataStream>
#include <cstdio>
#include <cstdlib>

namespace {

ScratchFolder* folder = nullptr;

// Everything a read gives, in a fixed order, to tell two reads apart: a failed read too keeps
// what stood before the fault.
QByteArray outcome(const LibraryXml& library, bool ok) {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << ok << library.error();
  for (const LibraryXml::Playlist& playlist : library.playlists()) out << playlist.name << playlist.trackIDs;
  out << library.allTracks();
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  folder = new ScratchFolder;
  return 0;
}

// The first byte picks the reading: odd reads with two threads whatever the size (and checks the
// result against one thread's), even with one. The rest is the file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const bool parallel = data[0] & 1;
  const QString path = folder->write(QStringLiteral("Library.xml"), data + 1, size - 1);
  if (path.isEmpty()) return 0;
  LibraryXml library;
  if (parallel) library.setParallelFrom(0);
  const bool ok = library.read(path, true);
  library.tracksOfPlaylistNamed(library.playlists().value(0).name);
  if (parallel) {
    LibraryXml alone;
    const bool aloneOk = alone.read(path, true);
    if (outcome(library, ok) != outcome(alone, aloneOk)) {
      std::fprintf(stderr, "two threads read the library otherwise than one\n");
      std::abort();
    }
  }
  return 0;
}
