#pragma once

#include <QString>

class Entry;
class TrackData;

// Fills the track rows of a page template, after the entry's own fields are in: the text between
// "[tracksBegin]" and "[tracksEnd]" is repeated once per track in position order, "[track:KEY]"
// becomes the track's value, and "IF_TKEY ... END_TKEY" is kept when the value is there and cut
// out when it is not. The rules are literal, as templates written over the years rely on them
// (docs/templates.md). A template it cannot fill is left exactly as it was.
class TrackMarkup {
 public:
  struct Options {
    bool html = false;
    bool webView = false;
    // The player's library, asked which tracks it holds when names link to the player.
    const TrackData* library = nullptr;
  };
  enum class Status { Filled, NoTrackBlock, NoTracks, UnknownKey, UnclosedDurationPattern, TooMuchWork };
  struct Result {
    Status status;
    QString reason;  // why the template was left as it was
  };

  // Characters the literal replacements of one page may go over. Each marker of a row costs a
  // pass over the row, so a hostile template (100,000 markers, a megabyte row times a thousand
  // tracks) reaches this long before it could hang the page view.
  static constexpr qint64 workBudget = 300'000'000;
  // Characters (64 MB as UTF-16) the rows or the page may reach.
  static constexpr qsizetype maximumLength = qsizetype(32) * 1024 * 1024;

  static Result apply(QString& text, Entry& entry, const Options& options);
};
