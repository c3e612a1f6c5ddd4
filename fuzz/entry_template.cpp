// Page templates as a user may write them, filled for one entry: its own fields, then the track rows.
#include "Entry.h"
#include "EntryTemplate.h"
#include "FakePlatform.h"
#include "FuzzEnvironment.h"
#include "TrackData.h"
#include "TrackMarkup.h"

#include <QDateTime>
#include <cstdio>
#include <cstdlib>

namespace {

Entry* entry = nullptr;
TrackData* library = nullptr;

QDateTime utc(int y, int m, int d) { return QDateTime(QDate(y, m, d), QTime(12, 0), Qt::UTC); }

// Values that look like mark-up or markers, so that a value read as a marker shows.
Entry* sampleEntry() {
  auto* e = new Entry(42);
  e->setValue(QStringLiteral("title"), QStringLiteral("Kind of Blue"));
  e->setValue(QStringLiteral("artist"), QStringLiteral("Miles & <Davis>"));
  e->setValue(QStringLiteral("comments"), QStringLiteral("IF_title [artist] END_title [tracksBegin]"));
  e->setValue(QStringLiteral("releaseDate"), utc(1959, 8, 17));
  e->setValue(QStringLiteral("purchasedOn"), utc(1999, 3, 4));
  e->setValue(QStringLiteral("myRating"), 4);
  e->setValue(QStringLiteral("customCheckbox1"), true);
  const char* names[] = {"So What", "Freddie [track:name] Freeloader", "", "Blue in Green"};
  const char* durations[] = {"9:22", "", "5:37", "72:05"};
  for (int i = 0; i < 4; ++i) {
    auto track = std::make_unique<Track>();
    track->setValue(QStringLiteral("position"), qint64(i == 3 ? 100 : i));
    if (*names[i]) track->setValue(QStringLiteral("name"), QString::fromLatin1(names[i]));
    if (*durations[i]) track->setValue(QStringLiteral("duration"), QString::fromLatin1(durations[i]));
    if (i == 0) track->setValue(QStringLiteral("artist"), QStringLiteral("Miles Davis"));
    e->addTrack(std::move(track));
  }
  return e;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char*** argv) {
  FuzzEnvironment::start((*argv)[0]);
  entry = sampleEntry();
  auto* platform = new FakePlatform;
  platform->library = {QVariantMap{{QStringLiteral("Name"), QStringLiteral("So What")},
                                   {QStringLiteral("Album"), QStringLiteral("Kind of Blue")}}};
  library = new TrackData(*platform);
  library->loadItunes();
  return 0;
}

// The first byte holds the options: bit 0 HTML, bit 1 the page view (track names link to the
// player), bit 2 a cover, bit 3 the first line is the release date format. The rest is the
// template, in UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const uint8_t flags = data[0];
  QString text = QString::fromUtf8(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1));
  EntryTemplate::Options options;
  options.html = flags & 1;
  if (flags & 4) options.coverImageAddress = QStringLiteral("file:///covers/42.jpg");
  if (flags & 8) {
    const qsizetype end = text.indexOf(u'\n');
    options.releaseDateFormat = text.left(end);
    text = end < 0 ? QString() : text.mid(end + 1);
  }
  const QString before = text;
  if (!EntryTemplate::render(text, *entry, options) && text != before) {
    std::fprintf(stderr, "a template that could not be filled was changed\n");
    std::abort();
  }
  const QString filled = text;
  const TrackMarkup::Result result = TrackMarkup::apply(text, *entry, {options.html, bool(flags & 2), library});
  if (result.status != TrackMarkup::Status::Filled && text != filled) {
    std::fprintf(stderr, "track rows that could not be filled changed the page\n");
    std::abort();
  }
  return 0;
}
