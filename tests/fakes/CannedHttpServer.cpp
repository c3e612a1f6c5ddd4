#include "CannedHttpServer.h"

#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>

CannedHttpServer::CannedHttpServer(Handler handler) : handler_(std::move(handler)) {
  thread_.start();
  QSemaphore ready;
  server_ = new QTcpServer;
  server_->moveToThread(&thread_);
  QMetaObject::invokeMethod(server_, [this, &ready] {
    server_->listen(QHostAddress::LocalHost, 0);
    port_ = server_->serverPort();
    QObject::connect(server_, &QTcpServer::newConnection, server_, [this] {
      while (QTcpSocket* socket = server_->nextPendingConnection()) {
        auto buffer = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, buffer] {
          buffer->append(socket->readAll());
          const qsizetype headerEnd = buffer->indexOf("\r\n\r\n");
          if (headerEnd < 0) return;
          const QByteArray header = buffer->left(headerEnd);
          qsizetype length = 0;
          for (const QByteArray& line : header.split('\n')) {
            if (line.toLower().startsWith("content-length:")) length = line.mid(15).trimmed().toLongLong();
          }
          if (buffer->size() < headerEnd + 4 + length) return;
          const QList<QByteArray> words = header.left(header.indexOf('\r')).split(' ');
          Request request{words.value(0), words.value(1), buffer->mid(headerEnd + 4, length), header};
          buffer->clear();
          {
            QMutexLocker lock(&mutex_);
            requests_ << request;
          }
          if (const auto reply = handler_(request)) {
            socket->write(*reply);
            socket->disconnectFromHost();
          }
        });
      }
    });
    ready.release();
  });
  ready.acquire();
}

CannedHttpServer::~CannedHttpServer() {
  QMetaObject::invokeMethod(server_, [this] { delete server_; }, Qt::BlockingQueuedConnection);
  thread_.quit();
  thread_.wait();
}

QList<CannedHttpServer::Request> CannedHttpServer::requests() const {
  QMutexLocker lock(&mutex_);
  return requests_;
}

QByteArray CannedHttpServer::ok(const QByteArray& body, bool crlf) {
  QByteArray content = body;
  if (crlf) content.replace("\r\n", "\n").replace("\n", "\r\n");
  return "HTTP/1.0 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: " +
         QByteArray::number(content.size()) + "\r\n\r\n" + content;
}

QByteArray CannedHttpServer::status(int code) {
  return "HTTP/1.0 " + QByteArray::number(code) + " Status\r\nContent-Length: 0\r\n\r\n";
}
