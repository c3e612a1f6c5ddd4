#include "ColumnText.h"

#include "Entry.h"
#include "Settings.h"
#include "StringTable.h"

#include <QDateTime>
#include <algorithm>

namespace ColumnText {

QString of(const Entry& entry, const QString& key, const Settings& settings, const StringTable& strings) {
  const QVariant v = entry.value(key);
  if (key == QLatin1String("statusImage") || key == QLatin1String("status")) {
    const qint64 status = v.toLongLong();
    return status == 1   ? strings.localizedString(QStringLiteral("Borrowed"))
           : status == 2 ? strings.localizedString(QStringLiteral("Wanted"))
                         : QString();
  }
  if (key == QLatin1String("myRating")) {
    const int stars = int(std::clamp<qint64>(v.toLongLong(), 0, 5));
    return stars ? QString(stars, QChar(0x2605)) : QString();
  }
  switch (v.metaType().id()) {
    case QMetaType::QDateTime: {
      const QString format = key == QLatin1String("releaseDate") ? settings.stringForKey(QStringLiteral("releaseDateFormat"))
                                                                 : QStringLiteral("yyyy-MM-dd");
      return v.toDateTime().toString(format.isEmpty() ? QStringLiteral("yyyy-MM-dd") : format);
    }
    case QMetaType::Bool: return v.toBool() ? QString(QChar(0x2713)) : QString();
    default: return v.toString();
  }
}

}  // namespace ColumnText
