#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

// Plain HTTP exchanges for the lookups. A reply larger than maximumReplyBytes, an HTTP error
// status, a time-out or a connection failure all give no bytes.
class Http {
 public:
  static constexpr qint64 maximumReplyBytes = 4 * 1024 * 1024;

  // POSTs the form body and waits in a nested event loop, at most timeoutSeconds.
  static std::optional<QByteArray> sendSynchronousRequest(const QUrl& url, const QByteArray& body, double timeoutSeconds);
  // The same exchange without waiting: done is called once, on this thread's event loop.
  static void post(const QUrl& url, const QByteArray& body, double timeoutSeconds,
                   std::function<void(std::optional<QByteArray>)> done);
  // "host[:port]" and a path as an http address; an empty URL when the host text is unusable.
  static QUrl address(const QString& hostAndPort, const QString& path);
};
