#pragma once

#include "EntryTemplate.h"

#include <QString>
#include <QVariantMap>
#include <functional>
#include <vector>

class Entry;
class StringTable;
class WindowSystem;

// Writes entries as a folder of web pages that can be opened or published as they are:
// index.html (a table of the entries and their totals), one page per entry, "<uid>.html",
// rendered through the page template as an HTML export, and the covers in "covers/". The folder
// is built beside the target and moved into place at the end, so a failure leaves the target as
// it was.
class HtmlExport {
 public:
  // Written into index.html; a non-empty folder without it is never replaced.
  static inline const QString generator = QStringLiteral("Discary HTML export");

  struct Services {
    WindowSystem& windowSystem;
    const StringTable& strings;
    // Where the covers are, "<dataFolder>/Covers/<uid>.jpg"; empty for none.
    QString dataFolder;
    // How the fields print, without a cover address (the export sets each page's own).
    EntryTemplate::Options options;
    // Renders the entry's page as an HTML export. Called from several threads at once, each on
    // its own entry, whose tracks and links are already in memory: it may not touch the store.
    std::function<void(QString& page, Entry& entry, const EntryTemplate::Options& options)> renderPage;
    // The totals of all the entries, not only the footer's.
    std::function<QVariantMap(const std::vector<Entry*>&)> totals;
  };

  // threads: how many pages are rendered at once; 0 for one per core.
  explicit HtmlExport(Services services, int threads = 0) : services_(std::move(services)), threads_(threads) {}

  // False with the reason set when nothing was written. The folder may be missing, empty, or an
  // earlier export (replaced as a whole).
  bool write(const std::vector<Entry*>& entries, const QString& title, const QString& pageTemplate,
             const QString& folder, QString* error);

 private:
  bool writePages(const std::vector<Entry*>& entries, const QString& title, const QString& pageTemplate,
                  const QString& staging, QString* error);
  QString indexPage(const std::vector<Entry*>& entries, const QString& title, const QString& staging);
  bool moveIntoPlace(const QString& staging, const QString& folder, QString* error);

  Services services_;
  int threads_;
};
