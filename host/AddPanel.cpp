#include "AddPanel.h"

void AddPanel::setFromDictionary(const QVariantMap& result) {
  for (auto it = result.begin(); it != result.end(); ++it) {
    if (it.key() == QLatin1String("tracks"))
      trackData_.setTracks(it.value().toList());
    else
      values_.insert(it.key(), it.value());
  }
}

void AddPanel::setValue(const QVariant& value, const QString& key) {
  if (!value.isValid())
    values_.remove(key);
  else
    values_.insert(key, value);
}

void AddPanel::clear() {
  values_.clear();
  trackData_.setTracks({});
}
