#include "PropertyList.h"

#include <QDateTime>
#include <QFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace PropertyList {

namespace {

class Reader {
 public:
  explicit Reader(const QByteArray& data) : xml_(data) {}

  std::optional<QVariant> run(QString* error) {
    std::optional<QVariant> result;
    while (!xml_.atEnd() && !failed()) {
      const auto token = xml_.readNext();
      if (token == QXmlStreamReader::DTD && !xml_.entityDeclarations().isEmpty()) {
        fail(QStringLiteral("entity declarations are not accepted"));
      } else if (token == QXmlStreamReader::StartElement) {
        if (xml_.name() != QLatin1String("plist")) {
          fail(QStringLiteral("not a property list (root element <%1>)").arg(xml_.name()));
        } else if (nextElement()) {
          result = value(1);
          if (result && !failed()) xml_.skipCurrentElement();  // the rest of <plist>
        }
        break;
      }
    }
    if (!failed() && xml_.hasError()) fail(xml_.errorString());
    if (!failed() && !result) fail(QStringLiteral("empty property list"));
    if (failed()) {
      if (error) *error = error_;
      return std::nullopt;
    }
    return result;
  }

 private:
  bool failed() const { return !error_.isEmpty(); }
  void fail(const QString& why) {
    if (error_.isEmpty()) error_ = why;
  }

  // Moves to the next start element inside the current one; false at its end.
  bool nextElement() {
    while (!xml_.atEnd()) {
      const auto token = xml_.readNext();
      if (token == QXmlStreamReader::StartElement) {
        if (++elements_ > maximumElements) {
          fail(QStringLiteral("too many elements"));
          return false;
        }
        return true;
      }
      if (token == QXmlStreamReader::EndElement) return false;
      if (token == QXmlStreamReader::Characters && !xml_.isWhitespace()) {
        fail(QStringLiteral("unexpected text at line %1").arg(xml_.lineNumber()));
        return false;
      }
      if (token == QXmlStreamReader::Invalid) return false;
    }
    return false;
  }

  QString text() { return xml_.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement); }

  // The value of the current start element, which it consumes.
  std::optional<QVariant> value(int depth) {
    if (depth > maximumDepth) {
      fail(QStringLiteral("nested more than %1 levels deep").arg(maximumDepth));
      return std::nullopt;
    }
    const QString name = xml_.name().toString();
    if (name == QLatin1String("dict")) {
      QVariantMap map;
      while (nextElement()) {
        if (xml_.name() != QLatin1String("key")) {
          fail(QStringLiteral("<%1> where a <key> belongs at line %2").arg(xml_.name()).arg(xml_.lineNumber()));
          return std::nullopt;
        }
        const QString key = text();
        if (!nextElement()) {
          fail(QStringLiteral("key '%1' has no value").arg(key));
          return std::nullopt;
        }
        auto v = value(depth + 1);
        if (!v) return std::nullopt;
        map.insert(key, *v);
      }
      if (failed()) return std::nullopt;
      return map;
    }
    if (name == QLatin1String("array")) {
      QVariantList list;
      while (nextElement()) {
        auto v = value(depth + 1);
        if (!v) return std::nullopt;
        list.append(*v);
      }
      if (failed()) return std::nullopt;
      return list;
    }
    if (name == QLatin1String("string")) return text();
    if (name == QLatin1String("integer")) {
      bool ok = false;
      const qint64 n = text().trimmed().toLongLong(&ok);
      if (!ok) fail(QStringLiteral("bad integer at line %1").arg(xml_.lineNumber()));
      return failed() ? std::nullopt : std::optional<QVariant>(n);
    }
    if (name == QLatin1String("real")) {
      bool ok = false;
      const double d = text().trimmed().toDouble(&ok);
      if (!ok) fail(QStringLiteral("bad real at line %1").arg(xml_.lineNumber()));
      return failed() ? std::nullopt : std::optional<QVariant>(d);
    }
    if (name == QLatin1String("true") || name == QLatin1String("false")) {
      xml_.skipCurrentElement();
      return QVariant(name == QLatin1String("true"));
    }
    if (name == QLatin1String("date")) {
      QDateTime date = QDateTime::fromString(text().trimmed(), Qt::ISODate);
      if (!date.isValid()) {
        fail(QStringLiteral("bad date at line %1").arg(xml_.lineNumber()));
        return std::nullopt;
      }
      return date.toUTC();
    }
    if (name == QLatin1String("data")) {
      const auto decoded = QByteArray::fromBase64Encoding(text().toLatin1(), QByteArray::IgnoreBase64DecodingErrors);
      return decoded.decoded;
    }
    fail(QStringLiteral("unknown element <%1> at line %2").arg(name).arg(xml_.lineNumber()));
    return std::nullopt;
  }

  QXmlStreamReader xml_;
  QString error_;
  qsizetype elements_ = 0;
};

}  // namespace

void writeValue(QXmlStreamWriter& xml, const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QVariantMap: {
      xml.writeStartElement(QStringLiteral("dict"));
      const QVariantMap map = value.toMap();
      for (auto it = map.begin(); it != map.end(); ++it) {
        xml.writeTextElement(QStringLiteral("key"), it.key());
        writeValue(xml, it.value());
      }
      xml.writeEndElement();
      break;
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
      xml.writeStartElement(QStringLiteral("array"));
      for (const QVariant& item : value.toList()) writeValue(xml, item);
      xml.writeEndElement();
      break;
    }
    case QMetaType::Bool:
      xml.writeEmptyElement(value.toBool() ? QStringLiteral("true") : QStringLiteral("false"));
      break;
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
      xml.writeTextElement(QStringLiteral("integer"), QString::number(value.toLongLong()));
      break;
    case QMetaType::Double:
    case QMetaType::Float:
      xml.writeTextElement(QStringLiteral("real"), QString::number(value.toDouble(), 'g', 17));
      break;
    case QMetaType::QDateTime:
      xml.writeTextElement(QStringLiteral("date"), value.toDateTime().toUTC().toString(Qt::ISODate));
      break;
    case QMetaType::QByteArray:
      xml.writeTextElement(QStringLiteral("data"), QString::fromLatin1(value.toByteArray().toBase64()));
      break;
    default:
      xml.writeTextElement(QStringLiteral("string"), value.toString());
  }
}

std::optional<QVariant> read(const QByteArray& data, QString* error) {
  if (data.startsWith("bplist")) {
    if (error) *error = QStringLiteral("binary property lists are not supported; save it as XML");
    return std::nullopt;
  }
  return Reader(data).run(error);
}

std::optional<QVariant> readFile(const QString& path, QString* error, qint64 maxBytes) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    if (error) *error = file.errorString();
    return std::nullopt;
  }
  if (file.size() > maxBytes) {
    if (error) *error = QStringLiteral("the file is larger than %1 bytes").arg(maxBytes);
    return std::nullopt;
  }
  return read(file.readAll(), error);
}

void beginDocument(QXmlStreamWriter& xml) {
  xml.setAutoFormatting(true);
  xml.setAutoFormattingIndent(1);
  xml.writeStartDocument();
  xml.writeStartElement(QStringLiteral("plist"));
  xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
}

void endDocument(QXmlStreamWriter& xml) {
  xml.writeEndElement();
  xml.writeEndDocument();
}

QByteArray write(const QVariant& value) {
  QByteArray out;
  QXmlStreamWriter xml(&out);
  beginDocument(xml);
  writeValue(xml, value);
  endDocument(xml);
  return out;
}

}  // namespace PropertyList
