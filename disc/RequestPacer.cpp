#include "RequestPacer.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

qint64 RequestPacer::turnAt(qint64 now) {
  const qint64 start = next_ && *next_ > now ? *next_ : now;
  next_ = start + interval_;
  return start - now;
}

void RequestPacer::waitForTurn() {
  const qint64 wait = turnAt(QDeadlineTimer::current().deadline());
  if (wait <= 0) return;
  QEventLoop loop;
  QTimer::singleShot(int(wait), &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}
