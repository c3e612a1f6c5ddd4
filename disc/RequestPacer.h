#pragma once

#include <QtGlobal>
#include <optional>

// Spaces requests to one service: each waits until the interval since the previous one has
// passed, so a burst is queued, never dropped.
class RequestPacer {
 public:
  explicit RequestPacer(qint64 intervalMilliseconds) : interval_(intervalMilliseconds) {}

  // The milliseconds a request made at now (on a steady clock) must wait; books its turn.
  qint64 turnAt(qint64 now);
  // Waits for the next turn on the steady clock, in a nested event loop.
  void waitForTurn();

 private:
  qint64 interval_;
  std::optional<qint64> next_;
};
