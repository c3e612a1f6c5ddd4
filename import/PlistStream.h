#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>
#include <QXmlStreamReader>
#include <atomic>

class QIODevice;

// A property list in XML read token by token, fed from a device a chunk at a time. The feed may
// stop at a byte limit: where the caller allows it (pausable), reading then pauses there and can
// resume later; anywhere else the limit is dropped and reading goes on.
class PlistStream {
 public:
  // Reads the device from its current position; prefix is read first, as if it stood there.
  explicit PlistStream(QIODevice* device, const QByteArray& prefix = {});

  // Whether a document that begins so is UTF-8: no byte order mark or declaration names another encoding.
  static bool isUtf8(const QByteArray& head);

  QXmlStreamReader& xml() { return xml_; }

  // Feeds no byte of the device past this many (counted from where reading started).
  void setLimit(qint64 bytes) { limit_ = bytes; }
  void setPausable(bool pausable) { pausable_ = pausable; }
  bool paused() const { return paused_; }
  // After a pause: drops the limit and reads on.
  void resume();
  // From this byte on, notes any comment, processing instruction, CDATA section or declaration fed.
  void watchForSpecialMarkupFrom(qint64 offset) { watchFrom_ = offset; }
  bool sawSpecialMarkup() const { return sawSpecialMarkup_; }
  // Reading stops with an error as soon as this flag is set.
  void setCancelFlag(const std::atomic_bool* cancel) { cancel_ = cancel; }

  // Moves to the next start element inside the current one; false at its end, an error or a pause.
  bool nextChild();
  // Skips the element whose start is current, up to its end.
  void skipElement();

  // The value whose start element is current, read up to its end element.
  QVariant readValue(int depth = 0);

  // The text of the current "key" element up to its end.
  QString keyText();

  // Calls readEntry for each key of the current dict, positioned on the value's start element.
  template <typename F> void readDict(F readEntry) {
    while (nextChild()) {
      if (xml_.name() != u"key") {
        skipElement();
        continue;
      }
      const QString key = keyText();
      if (!nextChild()) return;
      readEntry(key);
    }
  }

 private:
  QXmlStreamReader::TokenType next();
  bool feed();
  bool givePending();
  void lookForSpecialMarkup(const QByteArray& chunk);
  QString elementText();

  QIODevice* device_;
  QXmlStreamReader xml_;
  QByteArray pending_;  // read from the device, not yet given to the reader
  int utf8_ = -1;       // whether the document is UTF-8; -1 until its first bytes are seen
  qint64 fed_ = 0, limit_ = -1;  // fed_ counts the bytes read from the device
  bool pausable_ = false, paused_ = false;
  qint64 watchFrom_ = -1;
  bool sawSpecialMarkup_ = false;
  char lastFedByte_ = 0;
  const std::atomic_bool* cancel_ = nullptr;
  QHash<QStringView, QString> keys_;  // each view looks into its own value
};
