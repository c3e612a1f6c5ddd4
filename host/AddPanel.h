#pragma once

#include "TrackData.h"

class SitePlugin;

#include <QVariantMap>

// The form for one new entry: attribute values by key and the track table.
class AddPanel {
 public:
  explicit AddPanel(Platform& platform) : trackData_(platform) {}

  bool isVisible() const { return visible_; }
  void setVisible(bool visible) { visible_ = visible; }
  // Fills the form from a result dictionary: attribute keys, and "tracks" as a list of track
  // dictionaries. Keys the dictionary lacks keep their values.
  void setFromDictionary(const QVariantMap& result);
  QVariant valueForKey(const QString& key) const { return values_.value(key); }
  void setValue(const QVariant& value, const QString& key);
  const QVariantMap& values() const { return values_; }
  void clear();
  // The search results the panel shows one of; the previous and next buttons step through them.
  // A null site hides the buttons.
  void setResults(SitePlugin* site, int index) {
    resultSite_ = site;
    resultIndex_ = index;
  }
  SitePlugin* resultSite() const { return resultSite_; }
  int resultIndex() const { return resultIndex_; }
  // The title of the panel's item in the window menu.
  QString windowMenuTitle;
  TrackData& trackData() { return trackData_; }
  const TrackData& trackData() const { return trackData_; }

 private:
  bool visible_ = false;
  QVariantMap values_;
  TrackData trackData_;
  SitePlugin* resultSite_ = nullptr;
  int resultIndex_ = -1;
};
