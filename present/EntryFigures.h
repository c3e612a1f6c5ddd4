#pragma once

#include "Entry.h"

#include <QtGlobal>
#include <vector>

// The numbers an entry adds to the totals, read from its texts once and kept until the entry
// changes: parsing every entry's price, paid and play time on each selection change is too slow
// for a large catalogue.
class EntryFigures {
 public:
  struct Figures {
    qint64 seconds = 0;  // play time
    qint64 discs = 0;  // as counted: one when the entry gives no count
    // Decimal::compact: whole Decimals doubled the table and tripled the time to walk it.
    qint64 price = 0, paid = 0;
    qint8 status = 0;
  };

  // What a set of entries adds up to. No sum of 64-bit figures over any number of entries
  // overflows 128 bits, so nothing is checked while adding.
  struct Sums {
    qint64 entries = 0, borrowed = 0, wanted = 0;
    __int128 discs = 0, seconds = 0, price = 0, paid = 0;
    Sums& operator+=(const Sums& other);
  };
  Sums sum(const std::vector<Entry*>& entries);

  const Figures& of(const Entry& entry) {
    if (entry.serial() < cache_.size())
      if (const Cached& cached = cache_[entry.serial()]; cached.stamp == entry.stamp()) return cached.figures;
    return read(entry);
  }

 private:
  const Figures& read(const Entry& entry);

  struct Cached {
    quint64 stamp = 0;
    Figures figures;
  };
  std::vector<Cached> cache_;  // by entry serial
};
