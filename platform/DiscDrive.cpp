#include "DiscDrive.h"

#include <discid/discid.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace {
using DiscHandle = std::unique_ptr<DiscId, decltype(&discid_free)>;
}

QVariantMap DiscDrive::dictionaryFromOffsets(int first, int last, const int* offsets) {
  QVariantList tracks;
  for (int track = first; track <= last; ++track) {
    tracks << QVariantMap{{QStringLiteral("Start Block"), qint64(offsets[track])}};
  }
  const QVariantMap session{{QStringLiteral("Leadout Block"), qint64(offsets[0])},
                            {QStringLiteral("Last Track"), qint64(last - first + 1)},
                            {QStringLiteral("Track Array"), tracks}};
  return {{QStringLiteral("Sessions"), QVariantList{session}}};
}

std::optional<QVariantMap> DiscDrive::tableOfContents(const QString& device) {
  DiscHandle disc(discid_new(), &discid_free);
  if (!disc) return std::nullopt;
  const QByteArray name = device.toLocal8Bit();
  // The catalogue number costs a second pass over the disc's subchannel, and is worth it: it is
  // the release's barcode.
  const unsigned features = discid_has_feature(DISCID_FEATURE_MCN) ? DISCID_FEATURE_MCN : 0;
  if (!discid_read_sparse(disc.get(), device.isEmpty() ? nullptr : name.constData(), features)) return std::nullopt;
  const int first = discid_get_first_track_num(disc.get());
  const int last = discid_get_last_track_num(disc.get());
  if (first < 1 || last < first || last > 99) return std::nullopt;
  int offsets[100] = {};
  offsets[0] = discid_get_sectors(disc.get());
  for (int track = first; track <= last; ++track) offsets[track] = discid_get_track_offset(disc.get(), track);
  QVariantMap toc = dictionaryFromOffsets(first, last, offsets);
  const char* mcn = features ? discid_get_mcn(disc.get()) : nullptr;
  if (mcn && *mcn) toc.insert(QStringLiteral("Media Catalog Number"), QString::fromLatin1(mcn));
  return toc;
}

QString DiscDrive::musicBrainzIdentifier(qint64 leadout, const QList<qint64>& starts) {
  if (starts.isEmpty() || starts.size() > 99) return {};
  int offsets[100] = {};
  offsets[0] = int(std::clamp<qint64>(leadout, 0, std::numeric_limits<int>::max()));
  for (qsizetype i = 0; i < starts.size(); ++i) offsets[i + 1] = int(std::clamp<qint64>(starts.at(i), 0, std::numeric_limits<int>::max()));
  DiscHandle disc(discid_new(), &discid_free);
  if (!disc || !discid_put(disc.get(), 1, int(starts.size()), offsets)) return {};
  return QString::fromLatin1(discid_get_id(disc.get()));
}

QString DiscDrive::freedbIdentifier(int first, int last, int* offsets) {
  DiscHandle disc(discid_new(), &discid_free);
  if (!disc || !discid_put(disc.get(), first, last, offsets)) return {};
  return QString::fromLatin1(discid_get_freedb_id(disc.get()));
}
