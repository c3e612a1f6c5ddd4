#pragma once

#include <QStringList>
#include <memory>
#include <vector>

class Settings;
#include "SitePlugin.h"

// The registry of site plug-ins by name, in the order the user set.
class PluginManager {
 public:
  static inline const QString orderKey = QStringLiteral("Plugin Order");

  explicit PluginManager(Settings& settings) : settings_(settings) {}
  ~PluginManager();

  void addPlugin(std::unique_ptr<SitePlugin> plugin, const QString& name);
  // Puts the plug-ins named in the "Plugin Order" setting first, in that order; the others keep
  // the order they were added in.
  void setOrderFromPrefs();
  SitePlugin* pluginForName(const QString& name) const;
  QStringList pluginNames() const;

 private:
  struct Registered {
    QString name;
    std::unique_ptr<SitePlugin> plugin;
  };
  Settings& settings_;
  std::vector<Registered> plugins_;
};
