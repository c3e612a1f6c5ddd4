// The web database's search result page, and addresses pasted into the search field.
#include "FuzzEnvironment.h"
#include "WebSearchPage.h"

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray page = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
  const CddbReply::Matches matches = WebSearchPage::parse(page);
  if (matches.keys.size() != matches.titles.size()) std::abort();
  const QString text = QString::fromUtf8(page);
  WebSearchPage::keyOfResultPageAddress(text);
  WebSearchPage::formBody(text);
  return 0;
}
