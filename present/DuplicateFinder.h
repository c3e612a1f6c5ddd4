#pragma once

#include <QStringList>
#include <vector>

class Entry;

// Finds entries that are one release entered twice (same release id, disc id or barcode), and
// entries that are the same album in other editions (artist and title alike, release not).
class DuplicateFinder {
 public:
  struct Group {
    std::vector<Entry*> entries;  // in catalogue order
    QStringList differences;  // the keys of the attributes whose values differ within the group
  };
  struct Result {
    std::vector<Group> same, editions;
  };
  static Result find(const std::vector<Entry*>& entries);

  // The keys that identify a release, in the order they are tried.
  static const QStringList& releaseKeys();
  // Artist or title as compared for editions: case, accents' marks, punctuation, spacing and a
  // leading "The" do not count.
  static QString folded(const QString& text);
  // The attribute keys whose values differ among the entries; dates of adding and editing are
  // left out, as they differ between any two entries.
  static QStringList differences(const std::vector<Entry*>& entries);
};
