#pragma once

class Link;

// Finishes a link just added to an entry (moving and typing it).
class NewLinkHandler {
 public:
  virtual ~NewLinkHandler() = default;
  virtual void process(Link& link) = 0;
};
