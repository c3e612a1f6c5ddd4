#include "TrackMarkup.h"

#include "CdKeys.h"
#include "Entry.h"
#include "HtmlText.h"
#include "TextScanner.h"
#include "TrackData.h"

#include <QUrl>

namespace {

const QString tracksBegin = QStringLiteral("[tracksBegin]");
const QString tracksEnd = QStringLiteral("[tracksEnd]");
const QString trackMarker = QStringLiteral("[track:");
const QString durationSeparation = QStringLiteral("[durationSeparation:");
const QString includeURLInName = QStringLiteral("[IncludeURLInName]");
const QString ifTracks = QStringLiteral("<!--IFtracks");
const QString endTracks = QStringLiteral("ENDtracks-->");
const QString ifTrack = QStringLiteral("IF_T");
const QString endTrack = QStringLiteral("END_T");
// Besides letters, digits and -._~, what a URL path may hold as it is.
const QByteArray pathCharacters = QByteArrayLiteral("!$&'()*+,;=:@/");

// Counts the characters the literal text operations go over against the budget, and refuses an
// operation whose result would pass the length limit.
class Work {
 public:
  bool spend(qsizetype characters) {
    spent_ += characters;
    return spent_ <= TrackMarkup::workBudget;
  }
  // False, the text unchanged, when over the budget or the limit.
  bool replaceAll(QString& text, const QString& before, const QString& after) {
    if (!spend(text.size())) return false;
    const qsizetype growth = after.size() - before.size();
    if (growth > 0) {
      if (!spend(text.size())) return false;
      // Counted only when the most occurrences the text can hold could pass the limit.
      const bool mayPass =
          before.isEmpty() || text.size() + text.size() / before.size() * growth > TrackMarkup::maximumLength;
      if (mayPass && text.size() + text.count(before) * growth > TrackMarkup::maximumLength) return false;
    }
    text.replace(before, after);
    return true;
  }
  bool remove(QString& text, const QString& what) { return replaceAll(text, what, QString()); }
  qsizetype indexOf(const QString& text, const QString& what, qsizetype from) {
    spend(text.size() - from);
    return text.indexOf(what, from);
  }
  bool exhausted() const { return spent_ > TrackMarkup::workBudget; }

 private:
  qint64 spent_ = 0;
};

TrackMarkup::Result tooMuchWork() {
  return {TrackMarkup::Status::TooMuchWork,
          QStringLiteral("the track rows would take more than %1 characters of work or pass %2 characters")
              .arg(TrackMarkup::workBudget)
              .arg(TrackMarkup::maximumLength)};
}

// Track "position" counts from 0 within a disc whose number is in the hundreds.
QString shownPosition(const Track& track) {
  return QString::number(track.value(QStringLiteral("position")).toLongLong() % 100 + 1);
}

bool isInLibrary(const TrackData* library, const Track& track, const QString& album) {
  return library && library->isTrackInItunes({{QStringLiteral("name"), track.stringValue(QStringLiteral("name"))}},
                                             {{CdKeys::title, album}});
}

}  // namespace

TrackMarkup::Result TrackMarkup::apply(QString& text, Entry& entry, const Options& options) {
  if (!text.contains(tracksBegin)) return {Status::NoTrackBlock, {}};
  const std::vector<Track*> tracks = entry.tracksSortedByPosition();
  if (tracks.empty()) return {Status::NoTracks, {}};
  Work work;
  work.spend(text.size());

  TextScanner scanner(text);
  QStringView ignored, block;
  scanner.scanUpTo(tracksBegin, &ignored);
  scanner.scanUpTo(tracksEnd, &block);
  QString blockText = block.toString();
  QString rowTemplate;
  if (blockText.startsWith(tracksBegin)) {
    rowTemplate = blockText.mid(tracksBegin.size());
    blockText += tracksEnd;
  }

  QString durationPattern;
  if (const qsizetype at = text.indexOf(durationSeparation); at >= 0) {
    const qsizetype start = at + durationSeparation.size();
    const qsizetype close = text.indexOf(QLatin1Char(']'), start);
    if (close < 0)
      return {Status::UnclosedDurationPattern, QStringLiteral("\"%1\" has no closing \"]\"").arg(durationSeparation)};
    durationPattern = text.mid(start, close - start);
    if (!work.remove(rowTemplate, durationSeparation + durationPattern + QLatin1Char(']'))) return tooMuchWork();
    if (!durationPattern.contains(QLatin1Char('*'))) durationPattern.clear();
  }
  const bool linkNames = options.webView && text.contains(includeURLInName);
  const QString album = entry.stringValue(CdKeys::title);

  // The row's markers, the same for every track: read once. A marker naming no track field
  // ends the list; the first track stops there.
  struct Marker {
    QString token, key, marker, ifKey, endKey;
    int index;  // in the track's schema
  };
  std::vector<Marker> markers;
  bool unknownKey = false;
  TextScanner rowScanner(rowTemplate);
  for (;;) {
    QStringView skipped, tokenView;
    rowScanner.scanUpTo(trackMarker, &skipped);
    if (rowScanner.isAtEnd()) break;
    rowScanner.scanUpTo(u"]", &tokenView);
    const QString token = tokenView.toString();
    const QString key = token.mid(trackMarker.size());
    const int index = EntitySchema::track().indexOf(key);
    markers.push_back({token, key, token + QLatin1Char(']'), ifTrack + key, endTrack + key, index});
    if (index < 0) {
      unknownKey = true;
      break;
    }
  }

  QString rows;
  for (Track* track : tracks) {
    if (!work.spend(rowTemplate.size())) return tooMuchWork();
    QString row = rowTemplate;
    for (const Marker& m : markers) {
      if (unknownKey && &m == &markers.back())
        return {Status::UnknownKey, QStringLiteral("\"%1]\" names no track field").arg(m.token)};
      const QString& key = m.key;
      const QVariant* stored = track->valueAt(m.index);
      QString value = stored ? stored->toString() : QString();
      if (key == QLatin1String("position") && !value.isEmpty()) value = shownPosition(*track);
      // Only a name linked to the player needs its address form.
      QString linkValue = linkNames ? value : QString();
      if (options.html) {
        if (linkNames) linkValue = QString::fromLatin1(QUrl::toPercentEncoding(value, pathCharacters));
        value = HtmlText::encodeForHTML(value);
      }
      if (key == QLatin1String("duration") && !value.isEmpty() && !durationPattern.isEmpty()) {
        const qsizetype stars = durationPattern.count(QLatin1Char('*'));
        if (durationPattern.size() + stars * value.size() > maximumLength) return tooMuchWork();
        value = QString(durationPattern).replace(QLatin1Char('*'), value);
      }

      const QString& marker = m.marker;
      if (!value.isEmpty()) {
        if (linkNames && key == QLatin1String("name") && isInLibrary(options.library, *track, album)) {
          // The artist goes into the link as stored, as the player's link handler expects it.
          const QString artist = track->stringValue(QStringLiteral("artist"));
          value = artist.isEmpty()
                      ? QStringLiteral("<a href=\"folio://playTrackNamed=%1\">%2</a>").arg(linkValue, value)
                      : QStringLiteral("<a href=\"folio://playTrackNamed=%1&amp;artist=%2\">%3</a>")
                            .arg(linkValue, artist, value);
        }
        if (!work.replaceAll(row, marker, value) || !work.remove(row, m.ifKey) || !work.remove(row, m.endKey))
          return tooMuchWork();
      } else {
        if (!work.remove(row, marker)) return tooMuchWork();
        // One section goes per occurrence of the marker.
        if (const qsizetype start = work.indexOf(row, m.ifKey, 0); start >= 0) {
          const QString& closing = m.endKey;
          if (const qsizetype end = work.indexOf(row, closing, start); end >= 0)
            row.remove(start, end + closing.size() - start);
        }
        if (work.exhausted()) return tooMuchWork();
      }
    }
    rows += row;
    if (rows.size() > maximumLength) return tooMuchWork();
  }

  QString page = text;
  if (!work.remove(page, ifTracks) || !work.remove(page, endTracks)) return tooMuchWork();
  if (!blockText.isEmpty() && !work.replaceAll(page, blockText, rows)) return tooMuchWork();
  text = std::move(page);
  return {Status::Filled, {}};
}
