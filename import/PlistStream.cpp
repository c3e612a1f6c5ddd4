#include "PlistStream.h"

#include <QDateTime>
#include <QIODevice>

namespace {

// Beyond this, nesting is no library but an attack on the stack.
constexpr int maximumDepth = 64;
constexpr qint64 chunkSize = 256 * 1024;

}  // namespace

PlistStream::PlistStream(QIODevice* device, const QByteArray& prefix) : device_(device) {
  if (!prefix.isEmpty()) xml_.addData(prefix);
}

void PlistStream::resume() {
  paused_ = pausable_ = false;
  limit_ = -1;
}

bool PlistStream::feed() {
  qint64 wanted = chunkSize;
  if (limit_ >= 0) {
    if (fed_ >= limit_) {
      if (pausable_) {
        paused_ = true;
        return false;
      }
      limit_ = -1;
      limitMissed_ = true;
    } else {
      wanted = qMin(wanted, limit_ - fed_);
    }
  }
  const QByteArray chunk = device_->read(wanted);
  if (chunk.isEmpty()) return false;
  lookForSpecialMarkup(chunk);
  fed_ += chunk.size();
  lastFedByte_ = chunk.back();
  xml_.addData(chunk);
  return true;
}

void PlistStream::lookForSpecialMarkup(const QByteArray& chunk) {
  if (watchFrom_ < 0 || sawSpecialMarkup_ || fed_ + chunk.size() <= watchFrom_) return;
  const qsizetype from = qMax<qint64>(0, watchFrom_ - fed_);
  const char first = chunk.front();
  if (from == 0 && fed_ > watchFrom_ && lastFedByte_ == '<' && (first == '!' || first == '?')) sawSpecialMarkup_ = true;
  const QByteArrayView rest = QByteArrayView(chunk).sliced(from);
  if (rest.indexOf("<!") >= 0 || rest.indexOf("<?") >= 0) sawSpecialMarkup_ = true;
}

QXmlStreamReader::TokenType PlistStream::next() {
  for (;;) {
    if (paused_) return QXmlStreamReader::Invalid;
    if (cancel_ && cancel_->load(std::memory_order_relaxed)) {
      if (!xml_.hasError() || xml_.error() == QXmlStreamReader::PrematureEndOfDocumentError)
        xml_.raiseError(QStringLiteral("reading was cancelled"));
      return QXmlStreamReader::Invalid;
    }
    const QXmlStreamReader::TokenType token = xml_.readNext();
    if (token != QXmlStreamReader::Invalid || xml_.error() != QXmlStreamReader::PrematureEndOfDocumentError) return token;
    if (!feed()) return token;
  }
}

bool PlistStream::nextChild() {
  for (;;) {
    const QXmlStreamReader::TokenType token = next();
    if (token == QXmlStreamReader::StartElement) return true;
    if (token == QXmlStreamReader::EndElement || token == QXmlStreamReader::Invalid ||
        token == QXmlStreamReader::EndDocument)
      return false;
  }
}

void PlistStream::skipElement() {
  for (int depth = 1; depth > 0;) {
    const QXmlStreamReader::TokenType token = next();
    if (token == QXmlStreamReader::StartElement) ++depth;
    else if (token == QXmlStreamReader::EndElement) --depth;
    else if (token == QXmlStreamReader::Invalid || token == QXmlStreamReader::EndDocument) return;
  }
}

QVariant PlistStream::readValue(int depth) {
  if (depth > maximumDepth) {
    xml_.raiseError(QStringLiteral("nesting deeper than %1 levels").arg(maximumDepth));
    return {};
  }
  const QStringView name = xml_.name();
  if (name == u"dict") {
    QVariantMap map;
    readDict([&](const QString& key) { map.insert(key, readValue(depth + 1)); });
    return map;
  }
  if (name == u"array") {
    QVariantList list;
    while (nextChild()) list << readValue(depth + 1);
    return list;
  }
  if (name == u"true" || name == u"false") {
    const bool value = name == u"true";
    skipElement();
    return value;
  }
  const QString text = elementText();
  if (name == u"integer") {
    bool ok = false;
    const qint64 n = text.trimmed().toLongLong(&ok);
    return ok ? QVariant(n) : QVariant();
  }
  if (name == u"real") {
    bool ok = false;
    const double d = text.trimmed().toDouble(&ok);
    return ok ? QVariant(d) : QVariant();
  }
  if (name == u"date") {
    QDateTime date = QDateTime::fromString(text.trimmed(), Qt::ISODate);
    if (!date.isValid()) return {};
    return date.toUTC();
  }
  if (name == u"data") return QByteArray::fromBase64(text.toLatin1());
  return text;
}

// Most elements hold one run of characters, taken without building the text piece by piece;
// nested elements are skipped.
QString PlistStream::elementText() {
  QString text;
  int runs = 0;
  for (;;) {
    const QXmlStreamReader::TokenType token = next();
    if (token == QXmlStreamReader::Characters || token == QXmlStreamReader::EntityReference) {
      if (runs++ == 0) text = xml_.text().toString();
      else text += xml_.text();
    } else if (token == QXmlStreamReader::StartElement) {
      skipElement();
    } else if (token == QXmlStreamReader::EndElement || token == QXmlStreamReader::Invalid ||
               token == QXmlStreamReader::EndDocument) {
      return text;
    }
  }
}

// Every track repeats the same few dozen keys: share one copy of each.
QString PlistStream::keyText() {
  for (;;) {
    const QXmlStreamReader::TokenType token = next();
    if (token == QXmlStreamReader::Characters) {
      const QStringView view = xml_.text();
      auto it = keys_.constFind(view);
      QString key = it != keys_.constEnd() ? *it : view.toString();
      if (it == keys_.constEnd() && keys_.size() < 4096) keys_.insert(QStringView(key), key);
      // The rest of the element, if it is more than one run, is rare enough to read plainly.
      QString rest = elementText();
      return rest.isEmpty() ? key : key + rest;
    }
    if (token == QXmlStreamReader::StartElement) skipElement();
    else if (token != QXmlStreamReader::EntityReference && token != QXmlStreamReader::Comment &&
             token != QXmlStreamReader::ProcessingInstruction)
      return {};
  }
}
