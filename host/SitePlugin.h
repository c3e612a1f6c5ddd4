#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <functional>

// A search site the add panel and the internet search panel can ask for entries.
class SitePlugin {
 public:
  virtual ~SitePlugin() = default;
  virtual QString pluginName() const = 0;
  // The display texts of the latest search, and the result at an index of them.
  virtual QStringList resultsTitles() const { return {}; }
  // The site's own keys of those results, index-parallel to the titles.
  virtual QStringList resultKeys() const { return {}; }
  virtual void resultNumber(int index, const std::function<void(const QVariantMap&)>& completion) {
    Q_UNUSED(index);
    completion({});
  }
};
