#pragma once

#include "EntryPageFiller.h"

class TrackData;

// Fills the track rows of an entry page (see TrackMarkup); a page it cannot fill is logged and
// left as it was.
class TrackRowsFiller : public EntryPageFiller {
 public:
  // library: the player's tracks, asked which of the entry's tracks it holds; may be null.
  explicit TrackRowsFiller(const TrackData* library) : library_(library) {}
  void fillEntryPage(QString& text, Entry& entry, bool html, bool webView) override;

 private:
  const TrackData* library_;
};
