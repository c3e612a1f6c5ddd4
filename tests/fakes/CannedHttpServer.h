#pragma once

#include <QByteArray>
#include <QList>
#include <QMutex>
#include <QString>
#include <QThread>
#include <functional>
#include <memory>
#include <optional>

class QTcpServer;

// An HTTP server on 127.0.0.1, on a thread of its own so that both a blocking client in the test
// and a child process can reach it. The handler answers each request with raw bytes (status line
// and headers included), or with nothing to keep the connection open without answering.
class CannedHttpServer {
 public:
  struct Request {
    QByteArray method, path, body;
    QByteArray header;  // the request line and header lines, as sent
  };
  using Handler = std::function<std::optional<QByteArray>(const Request& request)>;

  explicit CannedHttpServer(Handler handler);
  ~CannedHttpServer();
  quint16 port() const { return port_; }
  QString address() const { return QStringLiteral("127.0.0.1:%1").arg(port_); }
  QList<Request> requests() const;

  // A 200 reply carrying the body; CDDB replies get the protocol's CR LF line ends.
  static QByteArray ok(const QByteArray& body, bool crlf = false);
  static QByteArray status(int code);

 private:
  Handler handler_;
  QThread thread_;
  QTcpServer* server_ = nullptr;
  quint16 port_ = 0;
  mutable QMutex mutex_;
  QList<Request> requests_;
};
