#include "Http.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QThread>
#include <QTimer>
#include <memory>

QUrl Http::address(const QString& hostAndPort, const QString& path) {
  QUrl url(QStringLiteral("http://") + hostAndPort.trimmed() + path, QUrl::StrictMode);
  if (!url.isValid() || url.host().isEmpty() || url.scheme() != QLatin1String("http")) return {};
  return url;
}

QUrl Http::below(const QString& root, const QString& pathAndQuery) {
  QString base = root.trimmed();
  while (base.endsWith(QLatin1Char('/'))) base.chop(1);
  const QUrl url(base + pathAndQuery, QUrl::TolerantMode);
  const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
  if (!url.isValid() || !web || url.host().isEmpty()) return {};
  return url;
}

namespace {

// Starts the exchange on the manager (a POST when body is set); done is called once, from its
// finished signal.
void start(QNetworkAccessManager& manager, const QUrl& url, const std::optional<QByteArray>& body,
           const Http::Headers& headers, double timeoutSeconds, std::function<void(Http::Reply)> done) {
  QNetworkRequest request(url);
  if (body) request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/x-www-form-urlencoded"));
  for (const auto& [name, value] : headers) request.setRawHeader(name, value);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  const int milliseconds = std::max(1, int(timeoutSeconds * 1000));
  request.setTransferTimeout(milliseconds);
  QNetworkReply* reply = body ? manager.post(request, *body) : manager.get(request);
  auto buffer = std::make_shared<QByteArray>();
  auto tooBig = std::make_shared<bool>(false), timedOut = std::make_shared<bool>(false);
  // The whole exchange has a deadline, not only each silence between packets.
  auto deadline = new QTimer(reply);
  deadline->setSingleShot(true);
  QObject::connect(deadline, &QTimer::timeout, reply, [reply, timedOut] {
    *timedOut = true;
    reply->abort();
  });
  deadline->start(milliseconds);
  QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, buffer, tooBig] {
    buffer->append(reply->read(Http::maximumReplyBytes + 1 - buffer->size()));
    if (buffer->size() > Http::maximumReplyBytes) {
      *tooBig = true;
      reply->abort();
    }
  });
  QObject::connect(reply, &QNetworkReply::finished, reply, [reply, buffer, tooBig, timedOut, timeoutSeconds, done = std::move(done)] {
    if (!*tooBig && reply->isOpen()) buffer->append(reply->read(Http::maximumReplyBytes + 1 - buffer->size()));
    Http::Reply result;
    result.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    bool isNumber = false;
    const int retryAfter = reply->rawHeader("Retry-After").trimmed().toInt(&isNumber);
    if (isNumber && retryAfter >= 0) result.retryAfterSeconds = retryAfter;
    const bool statusError = reply->error() > QNetworkReply::UnknownProxyError && result.status >= 400;
    if (*tooBig || buffer->size() > Http::maximumReplyBytes) {
      result.error = QStringLiteral("the answer is larger than %1 MB").arg(Http::maximumReplyBytes / (1024 * 1024));
    } else if (*timedOut || reply->error() == QNetworkReply::OperationCanceledError ||
               reply->error() == QNetworkReply::TimeoutError) {
      result.error = QStringLiteral("the server could not be reached: no answer within %1 s").arg(timeoutSeconds);
    } else if (reply->error() != QNetworkReply::NoError && !statusError) {
      // What a person can act on first; Qt's own words say why.
      result.error = QStringLiteral("the server could not be reached: %1").arg(reply->errorString());
    } else {
      result.body = *buffer;
    }
    reply->deleteLater();
    done(std::move(result));
  });
}

std::optional<QByteArray> bodyOfSuccess(const Http::Reply& reply) {
  return reply.ok() ? std::optional<QByteArray>(reply.body) : std::nullopt;
}

Http::Reply exchange(const QUrl& url, const std::optional<QByteArray>& body, const Http::Headers& headers,
                     double timeoutSeconds) {
  Http::Reply result;
  if (!url.isValid()) {
    result.error = QStringLiteral("no usable address");
    return result;
  }
  bool finished = false;
  // Owned here, so nothing waits for an event loop to be deleted (the command line has none).
  QNetworkAccessManager manager;
  QEventLoop loop;
  start(manager, url, body, headers, timeoutSeconds, [&](Http::Reply reply) {
    result = std::move(reply);
    finished = true;
    loop.quit();
  });
  if (!finished) loop.exec(QEventLoop::ExcludeUserInputEvents);
  return result;
}

}  // namespace

void Http::post(const QUrl& url, const QByteArray& body, double timeoutSeconds,
                std::function<void(std::optional<QByteArray>)> done) {
  if (!url.isValid()) {
    QTimer::singleShot(0, [done = std::move(done)] { done(std::nullopt); });
    return;
  }
  // A manager per exchange, as a manager belongs to the thread that made it and exchanges are few.
  auto* manager = new QNetworkAccessManager;
  start(*manager, url, body, {}, timeoutSeconds, [manager, done = std::move(done)](Http::Reply reply) {
    manager->deleteLater();
    done(bodyOfSuccess(reply));
  });
}

std::optional<QByteArray> Http::sendSynchronousRequest(const QUrl& url, const QByteArray& body, double timeoutSeconds) {
  return bodyOfSuccess(exchange(url, body, {}, timeoutSeconds));
}

Http::Reply Http::postAndWait(const QUrl& url, const QByteArray& body, double timeoutSeconds) {
  return exchange(url, body, {}, timeoutSeconds);
}

Http::Reply Http::get(const QUrl& url, const Headers& headers, double timeoutSeconds) {
  return exchange(url, std::nullopt, headers, timeoutSeconds);
}
