// Parsing a CDDB read reply of a 200-track record, a query reply of 50 inexact matches, and a
// MusicBrainz disc-id answer whose release holds 40 tracks.
#include "CddbReply.h"
#include "MusicBrainzReply.h"

#include <benchmark/benchmark.h>

namespace {

QByteArray readReply(int tracks) {
  QByteArray reply = "210 misc 1234abcd CD database entry follows (until terminating `.')\r\n# xmcd\r\n#\r\n"
                     "# Track frame offsets:\r\n";
  for (int i = 0; i < tracks; ++i) reply += "#\t" + QByteArray::number(150 + i * 1500) + "\r\n";
  reply += "#\r\n# Disc length: " + QByteArray::number((150 + tracks * 1500) / 75) + " seconds\r\n#\r\n";
  reply += "DISCID=1234abcd\r\nDTITLE=Various Artists / A Long Compilation\r\nDYEAR=1999\r\nDGENRE=Pop\r\n";
  for (int i = 0; i < tracks; ++i) {
    reply += "TTITLE" + QByteArray::number(i) + "=Artist Number " + QByteArray::number(i) + " / Song Title " +
             QByteArray::number(i) + "\r\n";
  }
  reply += "EXTD=Liner notes\r\n";
  for (int i = 0; i < tracks; ++i) reply += "EXTT" + QByteArray::number(i) + "=\r\n";
  return reply + "PLAYORDER=\r\n.\r\n";
}

void BM_ParseRead200Tracks(benchmark::State& state) {
  const QByteArray reply = readReply(200);
  for (auto _ : state) benchmark::DoNotOptimize(CddbReply::parseRead(reply));
  state.SetBytesProcessed(state.iterations() * reply.size());
}
BENCHMARK(BM_ParseRead200Tracks)->Unit(benchmark::kMicrosecond);

void BM_ParseQuery50Matches(benchmark::State& state) {
  QByteArray reply = "211 Found inexact matches, list follows (until terminating `.')\r\n";
  for (int i = 0; i < 50; ++i) reply += "rock " + QByteArray::number(0x1000000 + i, 16) + " Artist / Title\r\n";
  reply += ".\r\n";
  for (auto _ : state) benchmark::DoNotOptimize(CddbReply::parseQuery(reply));
}
BENCHMARK(BM_ParseQuery50Matches)->Unit(benchmark::kMicrosecond);

// A disc-id answer as the web service gives it with recordings, labels and artist credits.
QByteArray musicBrainzRelease(int tracks) {
  auto credit = [](const QByteArray& name) {
    return "[{\"name\": \"" + name + "\", \"joinphrase\": \"\", \"artist\": {\"id\": \"5b0f7a1e-6c1d-4b8e-9a55-0a6a3c2f7b11\", "
           "\"name\": \"" + name + "\", \"sort-name\": \"" + name + "\", \"disambiguation\": \"\"}}]";
  };
  QByteArray list;
  for (int i = 0; i < tracks; ++i) {
    const QByteArray n = QByteArray::number(i + 1);
    list += (i ? "," : "") + QByteArray("{\"id\": \"a1b2c3d4-0000-4000-8000-0000000000") + n.rightJustified(2, '0') +
            "\", \"position\": " + n + ", \"number\": \"" + n + "\", \"title\": \"Song Title " + n +
            "\", \"length\": " + QByteArray::number(180000 + i * 1000) + ", \"artist-credit\": " +
            credit(i % 5 ? "Main Artist" : "Guest Artist") + ", \"recording\": {\"id\": \"b1\", \"title\": \"Song Title " + n +
            "\", \"length\": 180000, \"video\": false, \"artist-credit\": " + credit("Main Artist") + "}}";
  }
  return "{\"id\": \"aHTAZe.MDUz3OgyV0zQLSQiO.Js-\", \"sectors\": 174405, \"offset-count\": 40, \"releases\": [{"
         "\"id\": \"c0f1e2d3-4b5a-4c6d-8e7f-9a0b1c2d3e4f\", \"title\": \"A Long Album\", \"status\": \"Official\", "
         "\"date\": \"1999-07-01\", \"country\": \"GB\", \"barcode\": \"0123456789012\", \"artist-credit\": " +
         credit("Main Artist") +
         ", \"label-info\": [{\"catalog-number\": \"EX-1\", \"label\": {\"id\": \"l\", \"name\": \"Example Records\"}}], "
         "\"genres\": [{\"name\": \"rock\", \"count\": 3}], \"media\": [{\"position\": 1, \"format\": \"CD\", "
         "\"track-count\": " + QByteArray::number(tracks) +
         ", \"discs\": [{\"id\": \"aHTAZe.MDUz3OgyV0zQLSQiO.Js-\", \"sectors\": 174405}], \"tracks\": [" + list + "]}]}]}";
}

void BM_ParseMusicBrainzRelease40Tracks(benchmark::State& state) {
  const QByteArray reply = musicBrainzRelease(40);
  if (MusicBrainzReply::discReleases(reply, "aHTAZe.MDUz3OgyV0zQLSQiO.Js-", 40).results.value(0).value("tracks").toList().size() != 40) {
    state.SkipWithError("the generated answer does not parse");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(MusicBrainzReply::discReleases(reply, "aHTAZe.MDUz3OgyV0zQLSQiO.Js-", 40));
  state.SetBytesProcessed(state.iterations() * reply.size());
}
BENCHMARK(BM_ParseMusicBrainzRelease40Tracks)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
