#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <optional>

class QXmlStreamWriter;

// XML property lists: dictionaries as QVariantMap, arrays as QVariantList, then QString, qint64,
// double, bool, QDateTime (UTC) and QByteArray. Reading is bounded, as the files come from outside:
// nesting, element count and size are capped and entity declarations are refused.
namespace PropertyList {

constexpr int maximumDepth = 64;
constexpr qsizetype maximumElements = 20'000'000;

// nullopt, with a reason in *error, for anything that is not a well-formed XML property list.
std::optional<QVariant> read(const QByteArray& data, QString* error = nullptr);
// Reads a file of at most maxBytes.
std::optional<QVariant> readFile(const QString& path, QString* error = nullptr, qint64 maxBytes = qint64(1) << 30);
QByteArray write(const QVariant& value);

// A large list written a piece at a time: beginDocument, the values, endDocument.
void beginDocument(QXmlStreamWriter& xml);
void writeValue(QXmlStreamWriter& xml, const QVariant& value);
void endDocument(QXmlStreamWriter& xml);

}  // namespace PropertyList
