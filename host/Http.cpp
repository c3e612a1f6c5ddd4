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

namespace {

// Starts the exchange on the manager; done is called once, from its finished signal.
void start(QNetworkAccessManager& manager, const QUrl& url, const QByteArray& body, double timeoutSeconds,
           std::function<void(std::optional<QByteArray>)> done) {
  QNetworkRequest request(url);
  request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/x-www-form-urlencoded"));
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  const int milliseconds = std::max(1, int(timeoutSeconds * 1000));
  request.setTransferTimeout(milliseconds);
  QNetworkReply* reply = manager.post(request, body);
  auto buffer = std::make_shared<QByteArray>();
  auto tooBig = std::make_shared<bool>(false);
  // The whole exchange has a deadline, not only each silence between packets.
  auto deadline = new QTimer(reply);
  deadline->setSingleShot(true);
  QObject::connect(deadline, &QTimer::timeout, reply, &QNetworkReply::abort);
  deadline->start(milliseconds);
  QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, buffer, tooBig] {
    buffer->append(reply->read(Http::maximumReplyBytes + 1 - buffer->size()));
    if (buffer->size() > Http::maximumReplyBytes) {
      *tooBig = true;
      reply->abort();
    }
  });
  QObject::connect(reply, &QNetworkReply::finished, reply, [reply, buffer, tooBig, done = std::move(done)] {
    if (!*tooBig && reply->isOpen()) buffer->append(reply->read(Http::maximumReplyBytes + 1 - buffer->size()));
    const bool ok = reply->error() == QNetworkReply::NoError && !*tooBig && buffer->size() <= Http::maximumReplyBytes;
    reply->deleteLater();
    done(ok ? std::optional<QByteArray>(*buffer) : std::nullopt);
  });
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
  start(*manager, url, body, timeoutSeconds, [manager, done = std::move(done)](std::optional<QByteArray> bytes) {
    manager->deleteLater();
    done(std::move(bytes));
  });
}

std::optional<QByteArray> Http::sendSynchronousRequest(const QUrl& url, const QByteArray& body, double timeoutSeconds) {
  std::optional<QByteArray> result;
  if (!url.isValid()) return result;
  bool finished = false;
  // Owned here, so nothing waits for an event loop to be deleted (the command line has none).
  QNetworkAccessManager manager;
  QEventLoop loop;
  start(manager, url, body, timeoutSeconds, [&](std::optional<QByteArray> bytes) {
    result = std::move(bytes);
    finished = true;
    loop.quit();
  });
  if (!finished) loop.exec(QEventLoop::ExcludeUserInputEvents);
  return result;
}
