#include "DiscLookup.h"

#include "Freedb.h"
#include "MusicBrainz.h"
#include "Platform.h"

std::optional<DiscLookup::Source> DiscLookup::sourceNamed(const QString& name) {
  if (name.trimmed().compare(MusicBrainz::name, Qt::CaseInsensitive) == 0) return Source::musicBrainz;
  if (name.trimmed().compare(QLatin1String("CDDB"), Qt::CaseInsensitive) == 0) return Source::cddb;
  return std::nullopt;
}

QList<DiscLookup::Source> DiscLookup::sourcesNamed(const QStringList& names) {
  QList<Source> sources;
  for (const QString& name : names) {
    if (const auto source = sourceNamed(name); source && !sources.contains(*source)) sources << *source;
  }
  return sources;
}

DiscLookup::Outcome DiscLookup::run(const QList<Source>& sources) {
  Outcome outcome;
  // The table of contents as the CDDB query reads it: the durations of this look at the disc
  // are kept for a manual entry after an eject, whichever source answers.
  const auto cddbID = freedb_.discID();
  const auto toc = freedb_.tableOfContents();
  if (!cddbID || !toc) {
    outcome.titles = freedb_.getDiscID();  // shows the no-CD sheet, asks nobody
    return outcome;
  }
  outcome.titles = QStringList();
  for (Source source : sources) {
    if (source == Source::musicBrainz) {
      const QString discID = platform_.musicBrainzDiscID(toc->leadout, toc->starts);
      const QStringList titles = musicBrainz_.lookup(*toc, discID, *cddbID);
      if (!musicBrainz_.lastError().isEmpty()) outcome.problems << QStringLiteral("MusicBrainz: %1").arg(musicBrainz_.lastError());
      if (!titles.isEmpty()) {
        outcome.titles = titles;
        outcome.site = &musicBrainz_;
        return outcome;
      }
    } else {
      const QStringList titles = freedb_.getDiscID().value_or(QStringList());
      if (!freedb_.lastError().isEmpty()) outcome.problems << QStringLiteral("CDDB: %1").arg(freedb_.lastError());
      if (!titles.isEmpty()) {
        outcome.titles = titles;
        outcome.site = &freedb_;
        return outcome;
      }
    }
  }
  return outcome;
}
