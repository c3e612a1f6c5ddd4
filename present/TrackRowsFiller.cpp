#include "TrackRowsFiller.h"

#include "Entry.h"
#include "TrackMarkup.h"

#include <cstdio>

void TrackRowsFiller::fillEntryPage(QString& text, Entry& entry, bool html, bool webView) {
  const TrackMarkup::Result result = TrackMarkup::apply(text, entry, {html, webView, library_});
  if (!result.reason.isEmpty())
    std::fprintf(stderr, "Track rows of entry %lld left unfilled: %s\n", entry.uid(), qPrintable(result.reason));
}
