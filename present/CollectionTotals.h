#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>
#include <vector>

class Entry;
class StringTable;

// The totals under the entry list: counts, discs, value, money spent and play time of a set of
// entries, as formatted texts.
class CollectionTotals {
 public:
  explicit CollectionTotals(const StringTable& strings) : strings_(strings) {}

  // bottomFields: the seven footer switches; with footer false every total is computed.
  // shownCount: the number of entries the list shows, counted instead of entries when footer.
  QVariantMap totals(const std::vector<Entry*>& entries, bool footer, const QList<bool>& bottomFields,
                     qsizetype shownCount) const;

 private:
  const StringTable& strings_;
};
