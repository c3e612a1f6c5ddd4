#pragma once

#include <QString>

class Link;
class MyControllerShared;

// Finishes a link just added to an entry: a movie is moved into the data folder's "QuickTime"
// folder when the "Move Movies" setting is on, and a link without a type gets one from its name
// or from the application that opens its file.
class NewLinkProcessor {
 public:
  explicit NewLinkProcessor(MyControllerShared& controller) : controller_(controller) {}
  void process(Link& link);

 private:
  // False when the handling must end here (the user cancelled, or the move failed).
  bool fileMovie(Link& link, const QString& url);
  bool moveFailed(const QString& url, const QString& error);
  void type(Link& link, const QString& url);

  MyControllerShared& controller_;
};
