#include "HtmlExport.h"

#include "CdKeys.h"
#include "Entry.h"
#include "EntryTemplate.h"
#include "StringTable.h"
#include "TransientRelationships.h"
#include "WindowSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <memory>

namespace {

const QString coversFolder = QStringLiteral("covers");

// The totals in the order the footer shows them; keys added later print after these.
const std::vector<std::pair<QString, QString>> totalLabels = {
    {QStringLiteral("totalEntries"), QStringLiteral("Entries")},   {QStringLiteral("totalBorrowed"), QStringLiteral("Borrowed")},
    {QStringLiteral("totalWanted"), QStringLiteral("Wanted")},     {QStringLiteral("totalDiscs"), QStringLiteral("Discs")},
    {QStringLiteral("totalPrice"), QStringLiteral("Value")},       {QStringLiteral("totalPaid"), QStringLiteral("Paid")},
    {QStringLiteral("totalDuration"), QStringLiteral("Playing Time")},
};

const char* const indexStyle = R"(
:root { --paper: #fbfaf7; --ink: #1f1d1a; --muted: #6b665e; --line: #e4e0d8; --accent: #b4532a;
        --row: #f4f1ea; --star: #d9912b; }
@media (prefers-color-scheme: dark) {
  :root { --paper: #17171a; --ink: #ebe8e2; --muted: #a09b92; --line: #2f2f34; --accent: #e58a5c;
          --row: #1f1f24; --star: #f0b44c; }
}
html { background: var(--paper); color: var(--ink); }
body { margin: 0 auto; max-width: 72rem; padding: 2rem 1.5rem 3rem;
       font: 15px/1.5 system-ui, -apple-system, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; }
h1 { font-size: 2rem; margin: 0 0 1rem; overflow-wrap: anywhere; }
dl.totals { display: flex; flex-wrap: wrap; gap: .5rem 2rem; margin: 0 0 1.5rem; }
.totals div { display: flex; flex-direction: column; }
.totals dt { color: var(--muted); font-size: .8rem; text-transform: uppercase; letter-spacing: .1em; }
.totals dd { margin: 0; font-size: 1.2rem; font-variant-numeric: tabular-nums; }
table { width: 100%; border-collapse: collapse; }
th { text-align: left; font-size: .8rem; text-transform: uppercase; letter-spacing: .1em; color: var(--muted);
     border-bottom: 2px solid var(--line); padding: .4rem .5rem; }
td { padding: .4rem .5rem; border-bottom: 1px solid var(--line); vertical-align: middle; overflow-wrap: anywhere; }
tbody tr:hover td { background: var(--row); }
td.cover { width: 3.5rem; }
td.cover img { display: block; width: 3rem; height: 3rem; object-fit: cover; border-radius: 3px; }
a { color: var(--ink); text-decoration-color: var(--accent); font-weight: 600; }
.stars { color: var(--star); white-space: nowrap; }
footer { margin-top: 2rem; color: var(--muted); font-size: .85rem; }
)";

bool writeText(const QString& path, const QString& text, QString* error) {
  QFile file(path);
  const QByteArray utf8 = text.toUtf8();
  if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(utf8) == utf8.size() && file.flush()) return true;
  *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
  return false;
}

bool isEarlierExport(const QString& folder) {
  QFile index(folder + QStringLiteral("/index.html"));
  if (!index.open(QIODevice::ReadOnly)) return false;
  const QString marker = QStringLiteral("<meta name=\"generator\" content=\"%1\">").arg(HtmlExport::generator);
  return index.read(4096).contains(marker.toUtf8());
}

}  // namespace

bool HtmlExport::write(const std::vector<Entry*>& entries, const QString& title, const QString& pageTemplate,
                       const QString& folder, QString* error) {
  const QString target = QDir::cleanPath(QDir(folder).absolutePath());
  const QFileInfo info(target);
  if (info.exists() && !info.isDir()) {
    *error = QStringLiteral("%1 exists and is not a folder").arg(target);
    return false;
  }
  if (info.isDir() && !QDir(target).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System) &&
      !isEarlierExport(target)) {
    *error = QStringLiteral("%1 is not empty and holds no earlier export; name a new or empty folder").arg(target);
    return false;
  }
  const QString parent = info.absolutePath();
  if (!QDir().mkpath(parent)) {
    *error = QStringLiteral("cannot create %1").arg(parent);
    return false;
  }
  QTemporaryDir staging(parent + QStringLiteral("/.discary-export-XXXXXX"));
  if (!staging.isValid()) {
    *error = QStringLiteral("cannot write in %1: %2").arg(parent, staging.errorString());
    return false;
  }
  // A temporary folder is private; the export is meant to be shared.
  QFile::setPermissions(staging.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                                            QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther);
  if (!writePages(entries, title, pageTemplate, staging.path(), error)) return false;
  if (!moveIntoPlace(staging.path(), target, error)) return false;
  staging.setAutoRemove(false);
  return true;
}

bool HtmlExport::writePages(const std::vector<Entry*>& entries, const QString& title, const QString& pageTemplate,
                            const QString& staging, QString* error) {
  if (!QDir(staging).mkdir(coversFolder)) {
    *error = QStringLiteral("cannot create %1/%2").arg(staging, coversFolder);
    return false;
  }
  WindowSystem& windowSystem = services_.windowSystem;
  windowSystem.showProgressSheet(services_.strings.localizedString(QStringLiteral("Exporting")), title,
                                 int(entries.size()));
  const auto closeSheet = qScopeGuard([&] { windowSystem.closeProgressSheet(); });
  // Pages point at the copies beside them, not at the data folder.
  const QString coverPrefix = coversFolder + QLatin1Char('/');
  const QString& dataFolder = services_.dataFolder;
  // One page: the cover copied, the page rendered and written. Touches only its own entry.
  auto writePage = [&](Entry& entry, QString* pageError) {
    const QString cover = QStringLiteral("%1/Covers/%2.jpg").arg(dataFolder).arg(entry.uid());
    const QString coverCopy = QStringLiteral("%1/%2/%3.jpg").arg(staging, coversFolder).arg(entry.uid());
    EntryTemplate::Options options = services_.options;
    if (!dataFolder.isEmpty() && QFileInfo(cover).isFile()) {
      if (!QFile::copy(cover, coverCopy)) {
        *pageError = QStringLiteral("cannot copy the cover %1").arg(cover);
        return;
      }
      options.coverImageAddress = QStringLiteral("%1%2.jpg").arg(coverPrefix).arg(entry.uid());
    }
    QString page = pageTemplate;
    services_.renderPage(page, entry, options);
    writeText(QStringLiteral("%1/%2.html").arg(staging).arg(entry.uid()), page, pageError);
  };

  // The store is read on this thread only: a batch of entries has its tracks and links loaded
  // here, then every core renders and writes the batch's pages, then they go again.
  QThreadPool pool;
  if (threads_ > 0) pool.setMaxThreadCount(threads_);
  const qsizetype workers = std::max(1, pool.maxThreadCount());
  const qsizetype batchSize = 64 * workers;
  for (qsizetype start = 0; start < qsizetype(entries.size()); start += batchSize) {
    if (windowSystem.progressCancelled()) {
      *error = QStringLiteral("the export was cancelled");
      return false;
    }
    const qsizetype count = std::min(batchSize, qsizetype(entries.size()) - start);
    std::vector<std::unique_ptr<TransientRelationships>> reading;
    reading.reserve(count);
    for (qsizetype i = start; i < start + count; ++i) {
      reading.push_back(std::make_unique<TransientRelationships>(*entries[i]));
      entries[i]->tracksSet();  // loads the links as well
    }
    std::vector<QString> errors(count);
    std::atomic<qsizetype> next = 0;
    auto work = [&] {
      for (qsizetype i; (i = next++) < count;) writePage(*entries[start + i], &errors[i]);
    };
    for (qsizetype w = 1; w < workers; ++w) pool.start(work);
    work();
    pool.waitForDone();
    for (const QString& pageError : errors)
      if (!pageError.isEmpty()) {
        *error = pageError;
        return false;
      }
    for (qsizetype i = 0; i < count; ++i) windowSystem.increaseProgress();
  }
  return writeText(staging + QStringLiteral("/index.html"), indexPage(entries, title, staging), error);
}

QString HtmlExport::indexPage(const std::vector<Entry*>& entries, const QString& title, const QString& staging) {
  const StringTable& strings = services_.strings;
  auto text = [&](const char* key) { return EntryTemplate::encodedForHTML(strings.localizedString(QString::fromLatin1(key))); };
  QString html;
  html += QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                         "<meta name=\"color-scheme\" content=\"light dark\">\n");
  html += QStringLiteral("<meta name=\"generator\" content=\"%1\">\n").arg(generator);
  html += QStringLiteral("<title>%1</title>\n<style>%2</style>\n</head>\n<body>\n<h1>%1</h1>\n")
              .arg(EntryTemplate::encodedForHTML(title), QString::fromUtf8(indexStyle));

  const QVariantMap totals = services_.totals(entries);
  if (!totals.isEmpty()) {
    QStringList keys;
    for (const auto& [key, label] : totalLabels)
      if (totals.contains(key)) keys << key;
    for (auto it = totals.begin(); it != totals.end(); ++it)
      if (!keys.contains(it.key())) keys << it.key();
    html += QStringLiteral("<dl class=\"totals\">\n");
    for (const QString& key : keys) {
      QString label = key;
      for (const auto& [known, knownLabel] : totalLabels)
        if (known == key) label = strings.localizedString(knownLabel);
      html += QStringLiteral("<div><dt>%1</dt><dd>%2</dd></div>\n")
                  .arg(EntryTemplate::encodedForHTML(label), EntryTemplate::encodedForHTML(totals.value(key).toString()));
    }
    html += QStringLiteral("</dl>\n");
  }

  html += QStringLiteral("<table>\n<thead><tr><th></th><th>%1</th><th>%2</th><th>%3</th><th>%4</th><th>%5</th><th>%6</th>"
                         "<th>%7</th></tr></thead>\n<tbody>\n")
              .arg(text("Title"), text("Artist"), text("Released"), text("Label"), text("Genre"), text("Format"),
                   text("My Rating"));
  for (Entry* entry : entries) {
    const EntryTemplate::Options& options = services_.options;
    auto field = [&](const QString& key) {
      return EntryTemplate::encodedForHTML(EntryTemplate::displayText(*entry, key, options));
    };
    const QString uid = QString::number(entry->uid());
    const QString cover = QFile::exists(QStringLiteral("%1/%2/%3.jpg").arg(staging, coversFolder, uid))
                              ? QStringLiteral("<img src=\"%1/%2.jpg\" alt=\"\">").arg(coversFolder, uid)
                              : QString();
    QString name = field(CdKeys::title);
    if (name.isEmpty()) name = text("Untitled");
    html += QStringLiteral("<tr><td class=\"cover\">%1</td><td><a href=\"%2.html\">%3</a></td><td>%4</td><td>%5</td>"
                           "<td>%6</td><td>%7</td><td>%8</td><td class=\"stars\">%9</td></tr>\n")
                .arg(cover, uid, name, field(CdKeys::artist), field(CdKeys::releaseDate), field(CdKeys::label), field(CdKeys::genre),
                     field(CdKeys::format), field(QStringLiteral("myRatingStars")));
  }
  const QString count = strings.localizedString(QStringLiteral("%1 entries")).arg(entries.size());
  html += QStringLiteral("</tbody>\n</table>\n<footer>%1</footer>\n</body>\n</html>\n")
              .arg(EntryTemplate::encodedForHTML(count));
  return html;
}

bool HtmlExport::moveIntoPlace(const QString& staging, const QString& folder, QString* error) {
  QDir files;
  if (!QFileInfo::exists(folder)) {
    if (files.rename(staging, folder)) return true;
    *error = QStringLiteral("cannot move the export into %1").arg(folder);
    return false;
  }
  // An empty folder or an earlier export: kept aside until the new one is in place.
  const QString aside = staging + QStringLiteral(".old");
  if (!files.rename(folder, aside)) {
    *error = QStringLiteral("cannot replace %1").arg(folder);
    return false;
  }
  if (!files.rename(staging, folder)) {
    files.rename(aside, folder);
    *error = QStringLiteral("cannot move the export into %1").arg(folder);
    return false;
  }
  QDir(aside).removeRecursively();
  return true;
}
