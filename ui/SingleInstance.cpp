#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QLocalSocket>

namespace {
constexpr int timeoutMs = 2000;
constexpr qint64 largestMessage = 1 << 20;  // words handed over by another launch, not a file
}  // namespace

SingleInstance::SingleInstance(const QString& key, QObject* parent) : QObject(parent) {
  const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
  name_ = QStringLiteral("discary-%1-%2").arg(qEnvironmentVariable("USER", QStringLiteral("user")), QString::fromLatin1(hash));
}

bool SingleInstance::handOver(const QStringList& words) const {
  QLocalSocket socket;
  socket.connectToServer(name_);
  if (!socket.waitForConnected(timeoutMs)) return false;
  QByteArray message;
  QDataStream packer(&message, QIODevice::WriteOnly);
  packer << words;
  QDataStream out(&socket);
  out << message;
  if (!socket.waitForBytesWritten(timeoutMs)) return false;
  // The running window answers once it has the words, so this launch never exits too early.
  return socket.waitForReadyRead(timeoutMs) && socket.read(1) == "1";
}

bool SingleInstance::listen(std::function<void(const QStringList&)> receiver) {
  receiver_ = std::move(receiver);
  connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::accept);
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  if (server_.listen(name_)) return true;
  // A socket left by a crashed instance: nobody answers on it, so take it over.
  QLocalServer::removeServer(name_);
  return server_.listen(name_);
}

void SingleInstance::accept() {
  while (QLocalSocket* socket = server_.nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
      QDataStream in(socket);
      in.startTransaction();
      QByteArray message;
      in >> message;
      if (!in.commitTransaction()) {
        if (socket->bytesAvailable() > largestMessage) socket->abort();
        return;
      }
      QStringList words;
      QDataStream unpacker(message);
      unpacker >> words;
      socket->write("1");
      socket->flush();
      if (receiver_) receiver_(words);
    });
  }
}
