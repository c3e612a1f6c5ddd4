#pragma once

#include <QString>

// A search site the add panel and the internet search panel can ask for entries.
class SitePlugin {
 public:
  virtual ~SitePlugin() = default;
  virtual QString pluginName() const = 0;
};
