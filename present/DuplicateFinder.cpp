#include "DuplicateFinder.h"

#include "CdKeys.h"
#include "Entry.h"

#include <QHash>
#include <algorithm>
#include <map>
#include <numeric>

namespace {

// Keeps which entries are one release, joined through any of the release keys.
class Clusters {
 public:
  explicit Clusters(size_t n) : parent_(n) { std::iota(parent_.begin(), parent_.end(), size_t(0)); }
  size_t root(size_t i) {
    while (parent_[i] != i) i = parent_[i] = parent_[parent_[i]];
    return i;
  }
  void join(size_t a, size_t b) {
    a = root(a), b = root(b);
    if (a != b) parent_[std::max(a, b)] = std::min(a, b);
  }

 private:
  std::vector<size_t> parent_;
};

// A release key's value as compared: barcodes by their digits without leading zeros (a UPC-A and
// the EAN-13 made from it are one code), the rest by text without case and surrounding blanks.
QString identity(const QString& key, const QString& value) {
  if (key == CdKeys::upc) {
    QString digits;
    for (QChar c : value)
      if (c.isDigit()) digits += c;
    while (digits.startsWith(QLatin1Char('0'))) digits.remove(0, 1);
    return digits;
  }
  return value.trimmed().toCaseFolded();
}

std::vector<Entry*> inOrder(const std::vector<size_t>& members, const std::vector<Entry*>& entries) {
  std::vector<Entry*> result;
  for (size_t i : members) result.push_back(entries[i]);
  return result;
}

}  // namespace

const QStringList& DuplicateFinder::releaseKeys() {
  static const QStringList keys = {CdKeys::releaseID, CdKeys::discID, CdKeys::musicBrainzDiscID, CdKeys::upc};
  return keys;
}

QString DuplicateFinder::folded(const QString& text) {
  const QString decomposed = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
  QString plain;
  plain.reserve(decomposed.size());
  for (QChar c : decomposed) {
    if (c.isLetterOrNumber()) plain += c;
    else if (c.isSpace() || c.isPunct() || c.isSymbol()) plain += QLatin1Char(' ');
  }
  plain = plain.simplified();
  if (plain.startsWith(QLatin1String("the "))) plain.remove(0, 4);
  return plain;
}

QStringList DuplicateFinder::differences(const std::vector<Entry*>& entries) {
  QStringList keys;
  if (entries.size() < 2) return keys;
  for (const auto& attribute : EntitySchema::cd().attributes()) {
    if (attribute.key == CdKeys::dateAdded || attribute.key == CdKeys::dateEdited) continue;
    const QVariant first = entries.front()->value(attribute.key);
    for (const Entry* e : entries)
      if (e->value(attribute.key) != first) {
        keys << attribute.key;
        break;
      }
  }
  return keys;
}

DuplicateFinder::Result DuplicateFinder::find(const std::vector<Entry*>& entries) {
  Clusters clusters(entries.size());
  for (const QString& key : releaseKeys()) {
    QHash<QString, size_t> firstWith;
    for (size_t i = 0; i < entries.size(); ++i) {
      const QString id = identity(key, entries[i]->stringValue(key));
      if (id.isEmpty()) continue;
      if (auto it = firstWith.constFind(id); it != firstWith.constEnd()) clusters.join(*it, i);
      else firstWith.insert(id, i);
    }
  }

  // Ordered by the first member, so groups come in catalogue order.
  std::map<size_t, std::vector<size_t>> releases;
  for (size_t i = 0; i < entries.size(); ++i) releases[clusters.root(i)].push_back(i);

  Result result;
  for (const auto& [root, members] : releases)
    if (members.size() > 1) result.same.push_back({inOrder(members, entries), {}});

  // Editions: alike artist and title across more than one release. An entry without any release
  // key is a release of its own, as nothing says it is the same as another.
  std::map<size_t, std::vector<size_t>> albums;
  QHash<QString, size_t> albumOf;
  for (size_t i = 0; i < entries.size(); ++i) {
    const QString title = folded(entries[i]->stringValue(CdKeys::title));
    if (title.isEmpty()) continue;
    const QString album = folded(entries[i]->stringValue(CdKeys::artist)) + QChar(0x1f) + title;
    const size_t first = albumOf.value(album, i);
    albumOf.insert(album, first);
    albums[first].push_back(i);
  }
  for (const auto& [first, members] : albums) {
    if (members.size() < 2) continue;
    const size_t release = clusters.root(members.front());
    const bool oneRelease =
        std::all_of(members.begin(), members.end(), [&](size_t i) { return clusters.root(i) == release; });
    if (!oneRelease) result.editions.push_back({inOrder(members, entries), {}});
  }
  for (auto* groups : {&result.same, &result.editions})
    for (Group& g : *groups) g.differences = differences(g.entries);
  return result;
}
