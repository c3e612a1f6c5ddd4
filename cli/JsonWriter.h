#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>
#include <cstdio>
#include <vector>

// Writes one JSON document as a stream, so a list of 100,000 entries never exists as a tree.
class JsonWriter {
 public:
  // Without a file the document is kept and read with text().
  explicit JsonWriter(std::FILE* out) : out_(out) {}
  const QByteArray& text() const { return buffer_; }
  ~JsonWriter() { flush(); }

  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  void beginArray() { open('['); }
  void endArray() { close(']'); }
  void key(const QString& name);
  void utf8Key(QByteArrayView name);
  void value(const QString& text);
  void utf8Value(QByteArrayView text);
  void value(qint64 number);
  void value(double number);
  void value(bool flag);
  // Strings, numbers, booleans, dates (ISO 8601 UTC), lists and maps; an invalid value is null.
  void variant(const QVariant& value);
  // Ends the document with a newline (containers already end with one).
  void endDocument() {
    if (!buffer_.endsWith('\n')) buffer_.append('\n');
  }
  void flush();

 private:
  void open(char c);
  void close(char c);
  void separate();
  void raw(const char* s) { buffer_.append(s); }

  std::FILE* out_;
  QByteArray buffer_;
  QHash<QString, QByteArray> keys_;  // the few attribute keys, escaped once
  std::vector<bool> first_;
  bool afterKey_ = false;
};
