#include "PlistStream.h"

#include <QDateTime>
#include <QIODevice>
#include <cstring>
#include <utility>

namespace {

// Beyond this, nesting is no library but an attack on the stack.
constexpr int maximumDepth = 64;
constexpr qint64 chunkSize = 256 * 1024;

// The length of the run of whole, well-formed UTF-8 characters the bytes begin with. *unfinished
// tells whether what stops the run is a character cut off by the end of the bytes, not a fault.
qsizetype wellFormedUtf8Length(QByteArrayView bytes, bool* unfinished) {
  const auto* s = reinterpret_cast<const uchar*>(bytes.data());
  const qsizetype n = bytes.size();
  *unfinished = false;
  qsizetype i = 0;
  while (i < n) {
    // Library files are nearly all ASCII: take eight bytes at a time while none has its high bit set.
    quint64 word;
    while (i + 8 <= n && (std::memcpy(&word, s + i, 8), (word & 0x8080808080808080ULL) == 0)) i += 8;
    if (i >= n) break;
    const uchar c = s[i];
    if (c < 0x80) {
      ++i;
      continue;
    }
    int length;
    char32_t code, smallest;
    if (c >= 0xC2 && c <= 0xDF) length = 2, code = c & 0x1F, smallest = 0x80;
    else if (c >= 0xE0 && c <= 0xEF) length = 3, code = c & 0x0F, smallest = 0x800;
    else if (c >= 0xF0 && c <= 0xF4) length = 4, code = c & 0x07, smallest = 0x10000;
    else return i;
    for (int k = 1; k < length; ++k) {
      if (i + k >= n) {
        *unfinished = true;
        return i;
      }
      if ((s[i + k] & 0xC0) != 0x80) return i;
      code = (code << 6) | (s[i + k] & 0x3F);
    }
    if (code < smallest || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return i;
    i += length;
  }
  return i;
}

}  // namespace

PlistStream::PlistStream(QIODevice* device, const QByteArray& prefix) : device_(device) {
  if (prefix.isEmpty()) return;
  utf8_ = isUtf8(prefix);
  xml_.addData(prefix);
}

bool PlistStream::isUtf8(const QByteArray& head) {
  if (head.startsWith("\xFE\xFF") || head.startsWith("\xFF\xFE") || head.first(qMin<qsizetype>(4, head.size())).contains('\0'))
    return false;
  const qsizetype declaration = head.indexOf("<?xml");
  if (declaration >= 0 && declaration < 4) {
    const QByteArray text = head.mid(declaration, head.indexOf("?>") - declaration).toLower();
    const qsizetype encoding = text.indexOf("encoding");
    if (encoding >= 0 && !text.mid(encoding).contains("utf-8")) return false;
  }
  return true;
}

void PlistStream::resume() {
  paused_ = pausable_ = false;
  limit_ = -1;
}

bool PlistStream::feed() {
  for (;;) {
    if (givePending()) return true;
    qint64 wanted = chunkSize;
    if (limit_ >= 0) {
      if (fed_ >= limit_) {
        if (pausable_) {
          paused_ = true;
          return false;
        }
        limit_ = -1;
      } else {
        wanted = qMin(wanted, limit_ - fed_);
      }
    }
    const QByteArray chunk = device_->read(wanted);
    if (chunk.isEmpty()) {
      // A character cut off by the end of the file: the reader reports it.
      if (pending_.isEmpty()) return false;
      xml_.addData(std::exchange(pending_, {}));
      return true;
    }
    lookForSpecialMarkup(chunk);
    if (utf8_ < 0) utf8_ = isUtf8(chunk);
    fed_ += chunk.size();
    lastFedByte_ = chunk.back();
    pending_ += chunk;
  }
}

// The reader checks the encoding of all it is given before reading any of it, so a fault would be
// reported at the start of its chunk, with what stands before it unread, and where depends on
// where chunks end. The bytes before a fault go first; a fault at the start goes as it is.
bool PlistStream::givePending() {
  if (pending_.isEmpty()) return false;
  bool unfinished = false;
  const qsizetype length = utf8_ > 0 ? wellFormedUtf8Length(pending_, &unfinished) : pending_.size();
  if (length == pending_.size() || (length == 0 && !unfinished)) {
    xml_.addData(std::exchange(pending_, {}));
    return true;
  }
  if (length == 0) return false;  // the rest of a character is still to come
  xml_.addData(pending_.first(length));
  pending_.remove(0, length);
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
