#include "Clock.h"

#include <QtGlobal>

QDateTime Clock::now() {
  const QString given = qEnvironmentVariable(overrideVariable);
  if (!given.isEmpty()) {
    const QDateTime set = QDateTime::fromString(given, Qt::ISODate);
    if (set.isValid()) return set.toUTC();
  }
  return QDateTime::currentDateTimeUtc();
}
