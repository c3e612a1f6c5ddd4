#pragma once

#include "NewLinkHandler.h"

#include <QString>
#include <functional>

class Link;
class Platform;
class Settings;
class StringTable;
class WindowSystem;

// Finishes a link just added to an entry: a movie is moved into the data folder's "QuickTime"
// folder when the "Move Movies" setting is on, and a link without a type gets one from its name
// or from the application that opens its file.
class NewLinkProcessor : public NewLinkHandler {
 public:
  struct Services {
    const Settings& settings;
    WindowSystem& windowSystem;
    Platform& platform;
    const StringTable& strings;
    // The data folder as it is when a link arrives: it follows the open catalogue.
    std::function<QString()> dataFolder;
  };

  explicit NewLinkProcessor(Services services) : services_(std::move(services)) {}
  void process(Link& link) override;

 private:
  // False when the handling must end here (the user cancelled, or the move failed).
  bool fileMovie(Link& link, const QString& url);
  bool moveFailed(const QString& url, const QString& error);
  void type(Link& link, const QString& url);

  Services services_;
};
