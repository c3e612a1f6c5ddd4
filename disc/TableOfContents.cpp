#include "TableOfContents.h"

#include "Barcode.h"
#include "TimeText.h"

namespace {

bool readBlock(const QVariant& value, qint64* block) {
  bool ok = true;
  const qint64 number = value.isValid() ? value.toLongLong(&ok) : 0;
  if (!ok || number < 0 || number > TableOfContents::maximumBlock) return false;
  *block = number;
  return true;
}

int digitSum(qint64 number) {
  int sum = 0;
  for (; number > 0; number /= 10) sum += int(number % 10);
  return sum;
}

}  // namespace

std::optional<TableOfContents> TableOfContents::fromDictionary(const QVariantMap& dictionary) {
  const QVariantList sessions = dictionary.value(sessionsKey).toList();
  if (sessions.isEmpty() || sessions.first().typeId() != QMetaType::QVariantMap) return std::nullopt;
  const QVariantMap session = sessions.first().toMap();
  const QVariantList tracks = session.value(trackArrayKey).toList();
  bool ok = false;
  const qint64 lastTrack = session.value(lastTrackKey).toLongLong(&ok);
  if (!ok || lastTrack < 1 || lastTrack > maximumTracks || lastTrack > tracks.size()) return std::nullopt;

  TableOfContents toc;
  if (!readBlock(session.value(leadoutKey), &toc.leadout)) return std::nullopt;
  for (qint64 i = 0; i < lastTrack; ++i) {
    qint64 start = 0;
    if (!readBlock(tracks.at(i).toMap().value(startBlockKey), &start)) return std::nullopt;
    toc.starts << start;
  }
  const QString mcn = dictionary.value(mediaCatalogNumberKey).toString().trimmed();
  if (mcn.size() == 13 && mcn != QString(13, u'0') && Barcode::check(mcn) == Barcode::Check::Valid)
    toc.mediaCatalogNumber = mcn;
  return toc;
}

QVariantMap TableOfContents::dictionary() const {
  QVariantList tracks;
  for (qint64 start : starts) tracks << QVariantMap{{startBlockKey, start}};
  const QVariantMap session{{leadoutKey, leadout}, {lastTrackKey, qint64(starts.size())}, {trackArrayKey, tracks}};
  QVariantMap toc{{sessionsKey, QVariantList{session}}};
  if (!mediaCatalogNumber.isEmpty()) toc.insert(mediaCatalogNumberKey, mediaCatalogNumber);
  return toc;
}

QString TableOfContents::discIdentifier(int* totalTracks, qint64* totalSeconds, QString* offsets,
                                        QStringList* durations) const {
  const int n = trackCount();
  const qint64 seconds = (leadout - starts.first()) / 75;
  qint64 checksum = 0;
  qint64 previous = starts.first();
  for (int k = 0; k <= n; ++k) {
    qint64 duration = 0;
    if (k > 0 && k < n) {
      duration = starts.at(k) - previous;
      previous = starts.at(k);
    } else if (k == n) {
      duration = leadout - previous;
    }
    if (durations) *durations << TimeText::timeStringWithSeconds(duration / 75);
    if (k < n) checksum += digitSum(starts.at(k) / 75);
  }
  if (offsets) {
    for (qint64 start : starts) *offsets += QStringLiteral("%1+").arg(start);
  }
  if (totalSeconds) *totalSeconds = seconds;
  if (totalTracks) *totalTracks = n;
  // A lead-out before track 1 gives negative seconds; the identifier keeps the low bits as C would.
  const quint32 id = (quint32(checksum % 255) << 24) | (quint32(seconds) << 8) | quint32(n);
  return QStringLiteral("%1").arg(id, 8, 16, QLatin1Char('0'));
}

QStringList TableOfContents::trackDurations() const {
  QStringList result;
  const int n = trackCount();
  qint32 previous = qint32(starts.first());
  for (int k = 1; k <= n; ++k) {
    qint32 duration;
    if (k != n) {
      duration = qint32(starts.at(k)) - previous;
      previous = qint32(starts.at(k));
    } else {
      duration = qint32(leadout) - previous;
    }
    result << TimeText::timeStringWithSeconds(duration / 75);
  }
  return result;
}
