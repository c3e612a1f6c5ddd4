#include "Barcode.h"
#include "CdKeys.h"
#include "CliContext.h"
#include "Commands.h"
#include "EntryJson.h"
#include "DiscLookup.h"
#include "Freedb.h"
#include "JsonWriter.h"
#include "MusicBrainz.h"
#include "MyController.h"
#include "Platform.h"

#include <QImage>
#include <cstdio>
#include <set>

namespace {

// --toc, --volume and --device choose where the table of contents is read; without them, the
// mounted volumes and then the default drive.
std::optional<Freedb::TocSource> tocSource(const CommandArguments& args, QString* message) {
  Freedb::TocSource source{args.value("--toc"), args.value("--volume"), args.value("--device")};
  const int given = int(args.has("--toc")) + int(args.has("--volume")) + int(args.has("--device"));
  if (given > 1) {
    *message = QStringLiteral("--toc, --volume and --device exclude each other");
    return std::nullopt;
  }
  return source;
}

// --source picks one online source for this run; without it, the settings' order.
bool chooseSources(const CliContext& context, const CommandArguments& args, QString* message) {
  if (!args.has("--source")) return true;
  const auto source = DiscLookup::sourceNamed(args.value("--source"));
  if (!source) {
    *message = QStringLiteral("--source takes musicbrainz or cddb, not '%1'").arg(args.value("--source"));
    return false;
  }
  context.controller.discScan().setSourcesOverride({*source});
  return true;
}

void writeMatches(const QStringList& titles, const QStringList& keys, const QVariantMap* result) {
  JsonWriter json(stdout);
  json.beginObject();
  json.key(QStringLiteral("titles"));
  json.variant(titles);
  json.key(QStringLiteral("keys"));
  json.variant(keys);
  if (result) {
    json.key(QStringLiteral("result"));
    json.variant(*result);
  }
  json.endObject();
}

void printMatches(const QStringList& titles, const QStringList& keys) {
  QString text;
  for (qsizetype i = 0; i < keys.size(); ++i) {
    text += QStringLiteral("%1\t%2\t%3\n").arg(i + 1).arg(keys.at(i), titles.value(i).trimmed());
  }
  CliContext::print(text);
}

void printResult(const QVariantMap& result) {
  QString text;
  for (auto it = result.begin(); it != result.end(); ++it) {
    if (it.key() == QLatin1String("tracks")) continue;
    if (it.value().typeId() == QMetaType::QImage) {
      const QImage image = it.value().value<QImage>();
      text += QStringLiteral("%1: %2 x %3\n").arg(it.key()).arg(image.width()).arg(image.height());
      continue;
    }
    text += QStringLiteral("%1: %2\n").arg(it.key(), it.value().toString());
  }
  int number = 1;
  for (const QVariant& track : result.value(QStringLiteral("tracks")).toList()) {
    const QVariantMap map = track.toMap();
    QString line = QStringLiteral("%1. %2").arg(number++).arg(map.value(QStringLiteral("name")).toString());
    if (map.contains(QStringLiteral("artist"))) line += QStringLiteral(" / ") + map.value(QStringLiteral("artist")).toString();
    if (map.contains(QStringLiteral("duration"))) line += QStringLiteral(" (%1)").arg(map.value(QStringLiteral("duration")).toString());
    text += line + QLatin1Char('\n');
  }
  CliContext::print(text);
}

}  // namespace

namespace Commands {

int discid(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--toc", "--volume", "--device"}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  const auto source = tocSource(*args, &message);
  if (!source) return CliContext::usage(message);
  Freedb& site = context.controller.freedb();
  site.setTocSource(*source);
  const auto toc = site.tableOfContents();
  if (!toc) return CliContext::failure(QStringLiteral("no audio CD with a readable table of contents was found"));
  int tracks = 0;
  qint64 seconds = 0;
  QString offsets;
  QStringList lookupDurations;
  const QString identifier = toc->discIdentifier(&tracks, &seconds, &offsets, &lookupDurations);
  const QString musicBrainzID = context.controller.platform().musicBrainzDiscID(toc->leadout, toc->starts);
  const QStringList durations = toc->trackDurations();
  if (context.options.json) {
    JsonWriter json(stdout);
    json.variant(QVariantMap{{CdKeys::discID, identifier},
                             {CdKeys::musicBrainzDiscID, musicBrainzID},
                             {QStringLiteral("totalTracks"), qint64(tracks)},
                             {QStringLiteral("totalSeconds"), seconds},
                             {QStringLiteral("offsets"), offsets},
                             {QStringLiteral("durations"), durations},
                             {QStringLiteral("lookupDurations"), lookupDurations}});
    json.endDocument();
    return 0;
  }
  CliContext::print(QStringLiteral("%1\nMusicBrainz: %2\ntracks: %3\nseconds: %4\noffsets: %5\ndurations: %6\n")
                        .arg(identifier, musicBrainzID)
                        .arg(tracks)
                        .arg(seconds)
                        .arg(offsets, durations.join(QLatin1Char(' '))));
  return 0;
}

int lookupDisc(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--toc", "--volume", "--device", "--pick", "--source"}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  const auto source = tocSource(*args, &message);
  if (!source) return CliContext::usage(message);
  if (!chooseSources(context, *args, &message)) return CliContext::usage(message);
  int pick = 0;
  if (args->has("--pick")) {
    bool ok = false;
    pick = args->value("--pick").toInt(&ok);
    if (!ok || pick < 1) return CliContext::usage(QStringLiteral("--pick takes a result number from 1"));
  }
  context.controller.freedb().setTocSource(*source);
  const DiscLookup::Outcome outcome = context.controller.discScan().lookUpDisc();
  const auto& titles = outcome.titles;
  if (!titles) return 1;
  // Each source that did not answer, in its own words, whatever the others found.
  for (const QString& problem : outcome.problems) std::fprintf(stderr, "discary: %s\n", qPrintable(problem));
  std::optional<QVariantMap> result;
  if (pick > titles->size()) return CliContext::failure(QStringLiteral("there are only %1 results").arg(titles->size()));
  const QStringList keys = outcome.site ? outcome.site->resultKeys() : QStringList();
  if (outcome.site && (pick > 0 || titles->size() == 1)) {
    outcome.site->resultNumber(pick > 0 ? pick - 1 : 0, [&result](const QVariantMap& read) { result = read; });
  }
  if (context.options.json) {
    writeMatches(*titles, keys, result ? &*result : nullptr);
  } else {
    printMatches(*titles, keys);
    if (result) printResult(*result);
  }
  if (titles->isEmpty()) {
    return CliContext::failure(outcome.problems.isEmpty() ? QStringLiteral("no match for this disc")
                                                          : QStringLiteral("the disc could not be looked up"));
  }
  return result && result->isEmpty() ? 1 : 0;
}

int cddb(const CliContext& context, const QStringList& words) {
  const QString action = words.value(0);
  Freedb& site = context.controller.freedb();
  if (action == QLatin1String("read") && words.size() == 3) {
    const QVariantMap result = site.readKey(words.at(1) + QLatin1Char('+') + words.at(2));
    if (context.options.json) {
      JsonWriter json(stdout);
      json.variant(result);
      json.endDocument();
    } else {
      printResult(result);
    }
    return result.isEmpty() ? CliContext::failure(QStringLiteral("no record %1 %2").arg(words.at(1), words.at(2))) : 0;
  }
  if (action == QLatin1String("probe") && words.size() == 2) {
    const int count = site.findPossibleDiscIDs(words.at(1));
    if (context.options.json) {
      writeMatches(site.resultsTitles(), site.queryResults(), nullptr);
    } else {
      printMatches(site.resultsTitles(), site.queryResults());
    }
    return count > 0 ? 0 : CliContext::failure(QStringLiteral("no category holds %1").arg(words.at(1)));
  }
  return CliContext::usage(QStringLiteral("usage: cddb read CATEGORY DISCID | cddb probe DISCID"));
}

int websearch(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(
      words, {"--keyword", "--artist", "--title", "--discid", "--barcode", "--catno", "--site"}, {}, &message);
  if (!args) return CliContext::usage(message);
  const QString siteName = args->has("--site") ? args->value("--site").toLower() : QStringLiteral("freedb");
  const bool musicBrainz = siteName == QLatin1String("musicbrainz");
  if (!musicBrainz && siteName != QLatin1String("freedb"))
    return CliContext::usage(QStringLiteral("--site takes freedb or musicbrainz, not '%1'").arg(args->value("--site")));
  if (!musicBrainz && (args->has("--barcode") || args->has("--catno")))
    return CliContext::usage(QStringLiteral("--barcode and --catno search the musicbrainz site only"));
  QVariantMap search;
  if (args->has("--keyword")) search[QStringLiteral("keyword")] = args->value("--keyword");
  // A disc identifier is the site's own: eight hex digits for freedb, 28 characters for MusicBrainz.
  if (args->has("--discid")) search[musicBrainz ? CdKeys::musicBrainzDiscID : CdKeys::discID] = args->value("--discid");
  if (args->has("--artist")) search[CdKeys::artist] = args->value("--artist");
  if (args->has("--title")) search[CdKeys::title] = args->value("--title");
  if (args->has("--barcode")) {
    // A code that checks wrong is mistyped: the site would only answer that it knows none.
    const QString problem = Barcode::problem(args->value("--barcode"));
    if (!problem.isEmpty()) return CliContext::usage(problem);
    search[CdKeys::upc] = Barcode::digits(args->value("--barcode"));
  }
  if (args->has("--catno")) search[CdKeys::catalogNumber] = args->value("--catno");
  if (search.isEmpty() || !args->positional.isEmpty()) {
    return CliContext::usage(QStringLiteral(
        "usage: websearch (--keyword W | --artist A --title T | --discid ID | --barcode EAN | --catno NUMBER) "
        "[--site freedb|musicbrainz]"));
  }
  SitePlugin* site = nullptr;
  if (musicBrainz) {
    MusicBrainz& mb = context.controller.musicBrainz();
    mb.searchFor(search, {});
    if (!mb.lastError().isEmpty()) std::fprintf(stderr, "discary: MusicBrainz: %s\n", qPrintable(mb.lastError()));
    site = &mb;
  } else {
    Freedb& freedb = context.controller.freedb();
    freedb.searchFor(search, {});
    site = &freedb;
  }
  if (context.options.json) {
    writeMatches(site->resultsTitles(), site->resultKeys(), nullptr);
  } else {
    printMatches(site->resultsTitles(), site->resultKeys());
  }
  return site->resultKeys().isEmpty() ? CliContext::failure(QStringLiteral("no result")) : 0;
}

int scan(const CliContext& context, const QStringList& words) {
  QString message;
  const auto args = CommandArguments::parse(words, {"--volume", "--device", "--source"}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  const auto source = tocSource(*args, &message);
  if (!source) return CliContext::usage(message);
  if (!chooseSources(context, *args, &message)) return CliContext::usage(message);
  MyController& controller = context.controller;
  context.controller.freedb().setTocSource(*source);
  Store& store = controller.managedObjectContext();
  const std::set<Entry*> before(store.entries().begin(), store.entries().end());
  controller.scanDisc();
  // Nobody edits the add panel here: what it holds when the workflow leaves it open is added.
  if (controller.addPanel().isVisible()) {
    controller.addEntryFromAddPanelCheckForDuplicates(true);
    controller.closeAddPanel();
  }
  Entry* added = nullptr;
  for (Entry* entry : store.entries()) {
    if (!before.count(entry)) added = entry;
  }
  if (!added) return CliContext::failure(QStringLiteral("no entry added"));
  if (!context.save()) return 1;
  if (context.options.json) {
    JsonWriter json(stdout);
    writeEntryJson(json, *added, store);
    json.endDocument();
  } else {
    CliContext::print(QStringLiteral("added %1\n").arg(added->uid()));
  }
  return 0;
}

}  // namespace Commands
