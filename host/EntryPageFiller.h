#pragma once

#include <QString>

class Entry;

// Fills what the product adds to an entry's page after the framework has put in the entry's own
// fields (page view with html and webView, HTML export with html only, plain text with neither).
class EntryPageFiller {
 public:
  virtual ~EntryPageFiller() = default;
  virtual void fillEntryPage(QString& text, Entry& entry, bool html, bool webView) = 0;
};
