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
    // Renders the entry's page as an HTML export, "[coverImage]" giving coverPrefix + "<uid>.jpg".
    std::function<void(QString& page, Entry& entry, const QString& coverPrefix)> renderPage;
    // The totals of all the entries, not only the footer's.
    std::function<QVariantMap(const std::vector<Entry*>&)> totals;
    std::function<EntryTemplate::Options(const Entry&)> templateOptions;
  };

  explicit HtmlExport(Services services) : services_(std::move(services)) {}

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
};
