#pragma once

#include "SitePlugin.h"

// The online disc lookup, registered with the plug-in manager as "Freedb". The CDDB exchange
// itself is added with disc identification.
class Freedb : public SitePlugin {
 public:
  static inline const QString name = QStringLiteral("Freedb");
  QString pluginName() const override { return name; }
};
