// Parsing a CDDB read reply of a 200-track record, and a query reply of 50 inexact matches.
#include "CddbReply.h"

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

}  // namespace

BENCHMARK_MAIN();
