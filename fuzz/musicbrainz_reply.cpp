// MusicBrainz web service answers (JSON), as the server's bytes arrive.
#include "FuzzEnvironment.h"
#include "MusicBrainzReply.h"

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray reply = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
  // The disc of the samples, and none: both ways of choosing a medium are taken.
  for (const QString& discID : {QStringLiteral("aHTAZe.MDUz3OgyV0zQLSQiO.Js-"), QString()}) {
    const MusicBrainzReply::Releases releases = MusicBrainzReply::discReleases(reply, discID, 11);
    if (releases.keys.size() != releases.titles.size() || releases.keys.size() != releases.results.size()) std::abort();
    for (const QVariantMap& result : releases.results)
      if (result.value(QStringLiteral("tracks")).toList().size() > 999) std::abort();
    MusicBrainzReply::release(reply, discID, 0);
  }
  const MusicBrainzReply::Releases found = MusicBrainzReply::searchResults(reply);
  if (found.keys.size() != found.titles.size()) std::abort();
  MusicBrainzReply::errorMessage(reply);
  return 0;
}
