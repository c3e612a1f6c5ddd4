// CDDB query and read replies, as the server's bytes arrive.
#include "CddbReply.h"
#include "FuzzEnvironment.h"

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Raw, so that a read past the end of the reply is caught rather than landing on a terminator.
  const QByteArray reply = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
  const CddbReply::Matches matches = CddbReply::parseQuery(reply);
  if (matches.keys.size() != matches.titles.size()) std::abort();
  CddbReply::isProbeHit(reply);
  CddbReply::parseRead(reply);
  // The samples are bare xmcd records; a read reply carries one after its status line.
  if (!reply.startsWith("210")) CddbReply::parseRead("210 misc 00000000 CD database entry follows\r\n" + reply);
  return 0;
}
