#pragma once

#include <QLocalServer>
#include <QStringList>
#include <functional>

// One window per user and settings file: a later `discary FILE|URL` hands its words to the
// running window through a local socket and exits.
class SingleInstance : public QObject {
  Q_OBJECT
 public:
  // The key names the socket: the settings file, so separate settings make separate instances.
  explicit SingleInstance(const QString& key, QObject* parent = nullptr);

  // True when a running instance took the words.
  bool handOver(const QStringList& words) const;
  // Becomes the running instance; each handed-over batch of words reaches the receiver.
  bool listen(std::function<void(const QStringList&)> receiver);

 private:
  void accept();

  QString name_;
  QLocalServer server_;
  std::function<void(const QStringList&)> receiver_;
};
