#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

// Plain HTTP exchanges for the lookups. A reply larger than maximumReplyBytes, a time-out or a
// connection failure give no bytes; so does an HTTP error status, except to get(), which keeps
// the status and the server's words for the user.
class Http {
 public:
  static constexpr qint64 maximumReplyBytes = 4 * 1024 * 1024;
  using Headers = QList<QPair<QByteArray, QByteArray>>;

  // What a GET brought back. status is 0 when no HTTP answer arrived; error then says why.
  struct Reply {
    int status = 0;
    QByteArray body;
    QString error;          // empty when an answer of any status arrived whole
    int retryAfterSeconds = -1;  // the "Retry-After" of the answer, when it gave one in seconds
    bool ok() const { return error.isEmpty() && status >= 200 && status < 300; }
  };

  // POSTs the form body and waits in a nested event loop, at most timeoutSeconds.
  static std::optional<QByteArray> sendSynchronousRequest(const QUrl& url, const QByteArray& body, double timeoutSeconds);
  // The same exchange without waiting: done is called once, on this thread's event loop.
  static void post(const QUrl& url, const QByteArray& body, double timeoutSeconds,
                   std::function<void(std::optional<QByteArray>)> done);
  // The POST of sendSynchronousRequest, keeping the status and the server's words.
  static Reply postAndWait(const QUrl& url, const QByteArray& body, double timeoutSeconds);
  // A GET with the given headers, waiting in a nested event loop at most timeoutSeconds.
  // Redirects are followed unless they go from https to http.
  static Reply get(const QUrl& url, const Headers& headers, double timeoutSeconds);
  // "host[:port]" and a path as an http address; an empty URL when the host text is unusable.
  static QUrl address(const QString& hostAndPort, const QString& path);
  // A service root ("https://host[/prefix]") and a path below it; an empty URL unless the root
  // is an http or https address with a host.
  static QUrl below(const QString& root, const QString& pathAndQuery);
};
