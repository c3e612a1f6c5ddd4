#include "PluginManager.h"

#include "Settings.h"
#include "SitePlugin.h"

#include <algorithm>

PluginManager::~PluginManager() = default;

void PluginManager::addPlugin(std::unique_ptr<SitePlugin> plugin, const QString& name) {
  auto it = std::find_if(plugins_.begin(), plugins_.end(), [&](const Registered& r) { return r.name == name; });
  if (it != plugins_.end())
    it->plugin = std::move(plugin);
  else
    plugins_.push_back({name, std::move(plugin)});
}

void PluginManager::setOrderFromPrefs() {
  const QStringList order = settings_.objectForKey(orderKey).toStringList();
  std::stable_sort(plugins_.begin(), plugins_.end(), [&](const Registered& a, const Registered& b) {
    const auto rank = [&](const QString& n) {
      const qsizetype i = order.indexOf(n);
      return i < 0 ? order.size() : i;
    };
    return rank(a.name) < rank(b.name);
  });
}

SitePlugin* PluginManager::pluginForName(const QString& name) const {
  for (const auto& r : plugins_)
    if (r.name == name) return r.plugin.get();
  return nullptr;
}

QStringList PluginManager::pluginNames() const {
  QStringList names;
  for (const auto& r : plugins_) names << r.name;
  return names;
}
