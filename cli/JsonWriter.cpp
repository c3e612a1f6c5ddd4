#include "JsonWriter.h"

#include "NaturalDate.h"

#include <QImage>
#include <QDateTime>
#include <cmath>

void JsonWriter::separate() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!first_.empty()) {
    if (!first_.back()) buffer_.append(',');
    first_.back() = false;
  }
}

void JsonWriter::open(char c) {
  separate();
  buffer_.append(c);
  first_.push_back(true);
}

void JsonWriter::close(char c) {
  buffer_.append(c);
  if (!first_.empty()) first_.pop_back();
  if (first_.empty()) buffer_.append('\n');
  if (buffer_.size() > (1 << 20)) flush();
}

// Escaping works on the UTF-8 bytes, so characters outside the BMP stay whole. Runs of plain
// bytes are copied at once.
static void appendString(QByteArray& out, QByteArrayView utf8) {
  out.append('"');
  qsizetype plain = 0;
  for (qsizetype i = 0; i < utf8.size(); ++i) {
    const unsigned char u = static_cast<unsigned char>(utf8[i]);
    if (u >= 0x20 && u != '"' && u != '\\') continue;
    out.append(utf8.sliced(plain, i - plain));
    plain = i + 1;
    switch (u) {
      case '"': out.append("\\\""); break;
      case '\\': out.append("\\\\"); break;
      case '\n': out.append("\\n"); break;
      case '\r': out.append("\\r"); break;
      case '\t': out.append("\\t"); break;
      default: {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\u%04x", unsigned(u));
        out.append(escaped);
      }
    }
  }
  out.append(utf8.sliced(plain));
  out.append('"');
}

void JsonWriter::key(const QString& name) {
  separate();
  auto it = keys_.find(name);
  if (it == keys_.end()) {
    QByteArray escaped;
    appendString(escaped, name.toUtf8());
    escaped.append(':');
    it = keys_.insert(name, escaped);
  }
  buffer_.append(*it);
  afterKey_ = true;
}

void JsonWriter::utf8Key(QByteArrayView name) {
  separate();
  appendString(buffer_, name);
  buffer_.append(':');
  afterKey_ = true;
}

void JsonWriter::value(const QString& text) {
  separate();
  appendString(buffer_, text.toUtf8());
}

void JsonWriter::utf8Value(QByteArrayView text) {
  separate();
  appendString(buffer_, text);
}

void JsonWriter::value(qint64 number) {
  separate();
  buffer_.append(QByteArray::number(number));
}

void JsonWriter::value(double number) {
  separate();
  buffer_.append(std::isfinite(number) ? QByteArray::number(number, 'g', 17) : QByteArray("null"));
}

void JsonWriter::value(bool flag) {
  separate();
  buffer_.append(flag ? "true" : "false");
}

void JsonWriter::variant(const QVariant& v) {
  switch (v.metaType().id()) {
    case QMetaType::Bool: value(v.toBool()); return;
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong: value(qint64(v.toLongLong())); return;
    case QMetaType::Double:
    case QMetaType::Float: value(v.toDouble()); return;
    case QMetaType::QDateTime: value(NaturalDate::isoDateString(v.toDateTime())); return;
    case QMetaType::QImage: {
      const QImage image = v.value<QImage>();
      beginObject();
      key(QStringLiteral("width"));
      value(qint64(image.width()));
      key(QStringLiteral("height"));
      value(qint64(image.height()));
      endObject();
      return;
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
      beginArray();
      for (const QVariant& item : v.toList()) variant(item);
      endArray();
      return;
    case QMetaType::QVariantMap: {
      beginObject();
      const QVariantMap map = v.toMap();
      for (auto it = map.begin(); it != map.end(); ++it) {
        key(it.key());
        variant(it.value());
      }
      endObject();
      return;
    }
    default:
      if (!v.isValid() || v.isNull()) {
        separate();
        raw("null");
      } else {
        value(v.toString());
      }
  }
}

void JsonWriter::flush() {
  if (buffer_.isEmpty() || !out_) return;
  std::fwrite(buffer_.constData(), 1, size_t(buffer_.size()), out_);
  std::fflush(out_);
  buffer_.clear();
}
