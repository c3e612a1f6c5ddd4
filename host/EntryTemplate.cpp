#include "EntryTemplate.h"

#include "CdKeys.h"
#include "Entry.h"
#include "Rating.h"
#include "HtmlText.h"

#include <QDateTime>
#include <QHash>
#include <array>
#include <vector>

namespace {

const QString coverImageKey = QStringLiteral("coverImage");
const QString ratingStarsKey = QStringLiteral("myRatingStars");
const QString ifMarker = QStringLiteral("IF_");
const QString endMarker = QStringLiteral("END_");
// Longer than any key: bounds the look-ups made for one marker.
constexpr qsizetype longestKey = 32;

// Every key a marker may name, so that a key is looked up in the text without copying it.
const std::vector<QString>& allKeys() {
  static const std::vector<QString> keys = [] {
    std::vector<QString> k;
    const EntitySchema& cd = EntitySchema::cd();
    for (const auto& attribute : cd.attributes()) k.push_back(attribute.key);
    for (const QString& derived : cd.derivedKeys()) k.push_back(derived);
    k.push_back(coverImageKey);
    k.push_back(ratingStarsKey);
    return k;
  }();
  return keys;
}

// For each ASCII letter a key may start with, the lengths keys starting with it have, one bit
// each: most text after a '[' names no key, and is turned down without hashing.
const std::array<quint64, 128>& keyLengths() {
  static const std::array<quint64, 128> lengths = [] {
    std::array<quint64, 128> l{};
    for (const QString& key : allKeys())
      if (key.size() < 64 && key.front().unicode() < 128) l[key.front().unicode()] |= quint64(1) << key.size();
    return l;
  }();
  return lengths;
}

// A key's place in allKeys(), -1 for none.
int keyIndex(QStringView key) {
  static const QHash<QStringView, int> indexes = [] {
    QHash<QStringView, int> h;
    const auto& keys = allKeys();
    for (int i = 0; i < int(keys.size()); ++i) h.insert(QStringView(keys[i]), i);
    return h;
  }();
  return indexes.value(key, -1);
}

bool isKeyCharacter(QChar c) {
  const char16_t u = c.unicode();
  return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9');
}

bool startsAt(QStringView text, qsizetype pos, QStringView literal) {
  return text.size() - pos >= literal.size() && text.sliced(pos, literal.size()) == literal;
}

// The longest key the text holds at pos, as its place in allKeys(), -1 for none: "IF_custom10"
// names "custom10", not "custom1", and "IF_titleTitle:" still names "title".
int keyAt(QStringView text, qsizetype pos) {
  qsizetype run = 0;
  while (pos + run < text.size() && run < longestKey && isKeyCharacter(text[pos + run])) ++run;
  if (run == 0) return -1;
  // A key character is ASCII.
  const quint64 lengths = keyLengths()[text[pos].unicode()];
  for (qsizetype length = run; length > 0; --length)
    if (lengths & (quint64(1) << length))
      if (const int index = keyIndex(text.sliced(pos, length)); index >= 0) return index;
  return -1;
}

qsizetype keyLength(int index) { return index < 0 ? 0 : allKeys()[index].size(); }

QString displayTextOfKey(const Entry& entry, const QString& key, const EntryTemplate::Options& options);

class Renderer {
 public:
  Renderer(QStringView text, const Entry& entry, const EntryTemplate::Options& options)
      : text_(text), entry_(entry), options_(options), values_(allKeys().size()), known_(allKeys().size()),
        nextEnd_(allKeys().size(), unsearched), open_(allKeys().size()) {}

  bool run(QString* out) {
    out->reserve(text_.size());
    qsizetype copied = 0;
    qsizetype i = 0;
    const qsizetype n = text_.size();
    auto append = [&](QStringView piece) {
      if (out->size() + piece.size() > EntryTemplate::maximumLength) return false;
      out->append(piece);
      return true;
    };
    auto replaceMarker = [&](qsizetype markerStart, qsizetype resumeAt, const QString& value) {
      if (!append(text_.sliced(copied, markerStart - copied)) || !append(value)) return false;
      i = copied = resumeAt;
      return true;
    };
    while (i < n) {
      const QChar c = text_[i];
      if (c == QLatin1Char('[')) {
        const int key = keyAt(text_, i + 1);
        const qsizetype length = keyLength(key);
        if (length > 0 && i + 1 + length < n && text_[i + 1 + length] == QLatin1Char(']')) {
          if (!replaceMarker(i, i + length + 2, value(key))) return false;
          continue;
        }
      } else if (c == QLatin1Char('I') && startsAt(text_, i, ifMarker)) {
        const int key = keyAt(text_, i + 3);
        const qsizetype length = keyLength(key);
        if (length > 0) {
          const qsizetype end = closingMarker(key, i + 3 + length);
          // A section without its end marker is left for the author to see.
          if (end >= 0) {
            const bool keep = !value(key).isEmpty();
            if (keep) ++open_[key];
            if (!replaceMarker(i, keep ? i + 3 + length : end + 4 + length, QString())) return false;
            continue;
          }
        }
      } else if (c == QLatin1Char('E') && startsAt(text_, i, endMarker)) {
        const int key = keyAt(text_, i + 4);
        if (key >= 0 && open_[key] > 0) {
          --open_[key];
          if (!replaceMarker(i, i + 4 + keyLength(key), QString())) return false;
          continue;
        }
      }
      ++i;
    }
    return append(text_.sliced(copied));
  }

 private:
  static constexpr qsizetype unsearched = -2;

  const QString& value(int key) {
    if (!known_[key]) {
      const QString text = displayTextOfKey(entry_, allKeys()[key], options_);
      values_[key] = options_.html ? EntryTemplate::encodedForHTML(text) : text;
      known_[key] = true;
    }
    return values_[key];
  }

  // Where the first "END_KEY" at or after from starts, -1 for none. The scan only moves forward,
  // so a search is reused until the scan passes its answer: each key's markers are searched once.
  qsizetype closingMarker(int key, qsizetype from) {
    const qsizetype cached = nextEnd_[key];
    if (cached != unsearched && (cached < 0 || cached >= from)) return cached;
    const QString marker = endMarker + allKeys()[key];
    qsizetype at = text_.indexOf(marker, from);
    while (at >= 0 && keyAt(text_, at + 4) != key) at = text_.indexOf(marker, at + 1);
    nextEnd_[key] = at;
    return at;
  }

  QStringView text_;
  const Entry& entry_;
  const EntryTemplate::Options& options_;
  // By a key's place in allKeys().
  std::vector<QString> values_;
  std::vector<bool> known_;
  std::vector<qsizetype> nextEnd_;
  std::vector<int> open_;
};

// The value of a key known to be one a marker may name.
QString displayTextOfKey(const Entry& entry, const QString& key, const EntryTemplate::Options& options) {
  if (key == coverImageKey) return options.coverImageAddress;
  if (key == ratingStarsKey) return Rating::stars(entry.value(CdKeys::myRating).toLongLong());
  const QVariant v = entry.value(key);
  switch (v.metaType().id()) {
    case QMetaType::QDateTime: {
      const QDateTime date = v.toDateTime();
      if (!date.isValid()) return {};
      const bool release = key == CdKeys::releaseDate || key == CdKeys::originalReleaseDate;
      const QString format = !release                             ? EntryTemplate::dateFormat
                             : options.releaseDateFormat.isEmpty() ? QStringLiteral("yyyy")
                                                                   : options.releaseDateFormat;
      // Dates are kept in UTC; a year typed alone must not move to another day or year.
      return date.toUTC().toString(format);
    }
    case QMetaType::Bool:
      return v.toBool() ? options.yesText : QString();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
      // Every integer of an entry (rating, status, counters) uses 0 for "none".
      return v.toLongLong() == 0 ? QString() : QString::number(v.toLongLong());
    default:
      return v.toString();
  }
}

}  // namespace

bool EntryTemplate::isKey(const QString& key) { return keyIndex(key) >= 0; }

bool EntryTemplate::render(QString& text, const Entry& entry, const Options& options) {
  QString out;
  if (!Renderer(text, entry, options).run(&out)) return false;
  text = std::move(out);
  return true;
}

QString EntryTemplate::displayText(const Entry& entry, const QString& key, const Options& options) {
  return isKey(key) ? displayTextOfKey(entry, key, options) : QString();
}

QString EntryTemplate::encodedForHTML(const QString& value) {
  const QString encoded = HtmlText::encodeForHTML(value);
  QString out;
  out.reserve(encoded.size());
  for (const QChar c : encoded) {
    switch (c.unicode()) {
      case '[': out += QLatin1String("&#91;"); break;
      case ']': out += QLatin1String("&#93;"); break;
      case '_': out += QLatin1String("&#95;"); break;
      default: out += c;
    }
  }
  return out;
}
