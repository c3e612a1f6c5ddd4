#include "PropertyListReader.h"

#include <QDateTime>
#include <QFile>
#include <plist/plist.h>

#include <memory>

namespace {

// Nesting beyond this is refused rather than followed down the stack.
constexpr int maximumDepth = 64;

std::optional<QVariant> convert(plist_t node, int depth) {
  if (depth > maximumDepth) return std::nullopt;
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return QVariant(value != 0);
    }
    case PLIST_UINT: {
      uint64_t value = 0;
      plist_get_uint_val(node, &value);
      // libplist keeps negative integers as unsigned; reading them back as signed restores them.
      return QVariant(qint64(value));
    }
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return QVariant(value);
    }
    case PLIST_STRING: {
      // Not the copying getter: it asserts, and so aborts, on a NUL byte in the text. The parser
      // keeps nothing past the NUL, so the text ends there.
      uint64_t length = 0;
      const char* value = plist_get_string_ptr(node, &length);
      return QVariant(value ? QString::fromUtf8(value, qsizetype(qstrnlen(value, size_t(length)))) : QString());
    }
    case PLIST_DATA: {
      char* value = nullptr;
      uint64_t length = 0;
      plist_get_data_val(node, &value, &length);
      const QByteArray data(value, qsizetype(length));
      std::free(value);
      return QVariant(data);
    }
    case PLIST_DATE: {
      int32_t seconds = 0, microseconds = 0;
      plist_get_date_val(node, &seconds, &microseconds);
      // Property-list dates count from 2001-01-01.
      return QVariant(QDateTime::fromSecsSinceEpoch(978307200LL + seconds, Qt::UTC));
    }
    case PLIST_ARRAY: {
      QVariantList list;
      const uint32_t size = plist_array_get_size(node);
      for (uint32_t i = 0; i < size; ++i) {
        const auto item = convert(plist_array_get_item(node, i), depth + 1);
        if (!item) return std::nullopt;
        list << *item;
      }
      return QVariant(list);
    }
    case PLIST_DICT: {
      QVariantMap map;
      plist_dict_iter iterator = nullptr;
      plist_dict_new_iter(node, &iterator);
      for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator, &key, &value);
        if (!key) break;
        const QString name = QString::fromUtf8(key);
        std::free(key);
        const auto item = value ? convert(value, depth + 1) : std::nullopt;
        if (!item) {
          std::free(iterator);
          return std::nullopt;
        }
        map.insert(name, *item);
      }
      std::free(iterator);
      return QVariant(map);
    }
    default:
      return QVariant();
  }
}

}  // namespace

std::optional<QVariant> PropertyListReader::read(const QByteArray& bytes) {
  if (bytes.isEmpty() || bytes.size() > maximumFileBytes) return std::nullopt;
  plist_t root = nullptr;
  if (bytes.startsWith("bplist00")) {
    // The binary reader makes a dictionary key of UTF-16 text holding U+0000 with the NUL inside,
    // and the key getter asserts on that, aborting. Written as XML and read back, the key ends
    // at the NUL instead.
    plist_t binary = nullptr;
    plist_from_bin(bytes.constData(), uint32_t(bytes.size()), &binary);
    if (!binary) return std::nullopt;
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(binary, &xml, &length);
    plist_free(binary);
    if (!xml) return std::nullopt;
    plist_from_xml(xml, length, &root);
    plist_to_xml_free(xml);
  } else {
    plist_from_xml(bytes.constData(), uint32_t(bytes.size()), &root);
  }
  if (!root) return std::nullopt;
  std::unique_ptr<void, decltype(&plist_free)> guard(root, &plist_free);
  return convert(root, 0);
}

std::optional<QVariantMap> PropertyListReader::readDictionary(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() > maximumFileBytes) return std::nullopt;
  const auto value = read(file.read(maximumFileBytes + 1));
  if (!value || value->typeId() != QMetaType::QVariantMap) return std::nullopt;
  return value->toMap();
}
