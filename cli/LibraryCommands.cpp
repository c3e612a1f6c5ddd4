#include "CliContext.h"
#include "CliOptions.h"
#include "Commands.h"
#include "Entry.h"
#include "JsonWriter.h"
#include "LibraryXml.h"
#include "MyAudioMetadata.h"
#include "MyController.h"
#include "Picture.h"
#include "Platform.h"
#include "SettingsKeys.h"

#include <QFileInfo>

namespace {

// Pictures print as their size; everything else as it stands.
QVariant printable(const QVariant& value) {
  const QSize size = Picture::sizeOf(value);
  if (!size.isValid()) return value;
  return QVariantMap{{QStringLiteral("width"), qint64(size.width())}, {QStringLiteral("height"), qint64(size.height())}};
}

QString textOf(const QVariant& value) {
  const QSize size = Picture::sizeOf(value);
  if (size.isValid()) return QStringLiteral("picture %1x%2").arg(size.width()).arg(size.height());
  return value.toString();
}

// --xml, else the user's setting, else the usual place.
QString libraryPath(const CliContext& context, const CommandArguments& args) {
  return args.has("--xml") ? args.value("--xml") : context.controller.libraryXmlPath();
}

int playlists(const CliContext& context, const CommandArguments& args) {
  const QString path = libraryPath(context, args);
  if (path.isEmpty())
    return CliContext::failure(QStringLiteral("no music library file: pass --xml FILE or set \"%1\"").arg(SettingsKeys::iTunesLibraryXML));
  LibraryXml library;
  if (!library.read(path, false)) return CliContext::failure(library.error());
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginArray();
    for (qsizetype i = 0; i < library.playlists().size(); ++i) {
      json.beginObject();
      json.key(QStringLiteral("index"));
      json.value(qint64(i));
      json.key(QStringLiteral("name"));
      json.value(library.playlists()[i].name);
      json.key(QStringLiteral("count"));
      json.value(qint64(library.playlists()[i].trackIDs.size()));
      json.endObject();
    }
    json.endArray();
    return 0;
  }
  QString text;
  for (qsizetype i = 0; i < library.playlists().size(); ++i)
    text += QStringLiteral("%1\t%2 (%3 tracks)\n").arg(i).arg(library.playlists()[i].name).arg(library.playlists()[i].trackIDs.size());
  CliContext::print(text);
  return 0;
}

int importPlaylist(const CliContext& context, const CommandArguments& args) {
  if (args.has("--playlist") == args.has("--playlist-index"))
    return CliContext::usage(QStringLiteral("library import needs --playlist NAME or --playlist-index N"));
  const QString path = libraryPath(context, args);
  if (path.isEmpty())
    return CliContext::failure(QStringLiteral("no music library file: pass --xml FILE or set \"%1\"").arg(SettingsKeys::iTunesLibraryXML));
  int index = -1;
  if (args.has("--playlist-index")) {
    bool ok = false;
    index = args.value("--playlist-index").toInt(&ok);
    if (!ok || index < 0) return CliContext::usage(QStringLiteral("--playlist-index needs a number from 0"));
  }
  LibraryXml library;
  if (!library.read(path, true)) return CliContext::failure(library.error());
  if (index >= library.playlists().size())
    return CliContext::failure(QStringLiteral("the library has %1 playlists").arg(library.playlists().size()));
  const QString name = index >= 0 ? library.playlists()[index].name : args.value("--playlist");
  MyController& controller = context.controller;
  QString error;
  const bool ok = controller.importLibraryPlaylist(library, name, &error);
  if (!ok && !error.isEmpty()) std::fprintf(stderr, "%s\n", qPrintable(error));
  if (!context.save()) return 1;
  if (context.options.json) {
    JsonWriter json(stdout);
    json.beginObject();
    json.key(QStringLiteral("results"));
    json.beginArray();
    json.beginObject();
    json.key(QStringLiteral("path"));
    json.value(path);
    json.key(QStringLiteral("ok"));
    json.value(ok);
    json.endObject();
    json.endArray();
    json.key(QStringLiteral("entries"));
    json.beginArray();
    for (Entry* e : controller.importedEntries()) json.value(e->uid());
    json.endArray();
    json.key(QStringLiteral("collections"));
    json.beginArray();
    if (ok) json.value(QStringLiteral("None"));
    json.endArray();
    json.endObject();
  } else if (!context.options.quiet) {
    CliContext::print(QStringLiteral("%1 entries from the playlist '%2'\n").arg(controller.importedEntries().size()).arg(name));
  }
  return ok ? 0 : 1;
}

}  // namespace

namespace Commands {

int tags(const CliContext& context, const QStringList& words) {
  if (words.isEmpty()) return CliContext::usage(QStringLiteral("tags needs at least one FILE"));
  const TagReader* reader = context.controller.platform().tagReader();
  JsonWriter json(stdout);
  if (context.options.json) json.beginArray();
  int status = 0;
  for (const QString& path : words) {
    if (!QFileInfo(path).isFile()) {
      std::fprintf(stderr, "%s: no such file\n", qPrintable(path));
      status = 1;
    }
    const QVariantMap tags = MyAudioMetadata::getMetadataForPath(path, reader);
    if (context.options.json) {
      json.beginObject();
      json.key(QStringLiteral("path"));
      json.value(path);
      for (auto it = tags.begin(); it != tags.end(); ++it) {
        json.key(it.key());
        json.variant(printable(it.value()));
      }
      json.endObject();
      continue;
    }
    QString text = path + QLatin1Char('\n');
    for (auto it = tags.begin(); it != tags.end(); ++it) text += QStringLiteral("  %1: %2\n").arg(it.key(), textOf(it.value()));
    CliContext::print(text);
  }
  if (context.options.json) json.endArray();
  return status;
}

int library(const CliContext& context, const QStringList& words) {
  const QString sub = words.value(0);
  if (sub != QLatin1String("playlists") && sub != QLatin1String("import"))
    return CliContext::usage(sub.isEmpty() ? QStringLiteral("library needs a subcommand: playlists or import")
                                           : QStringLiteral("unknown subcommand 'library %1'").arg(sub));
  QString message;
  const auto args = CommandArguments::parse(words.mid(1), {"--xml", "--playlist", "--playlist-index"}, {}, &message);
  if (!args) return CliContext::usage(message);
  if (!args->positional.isEmpty()) return CliContext::usage(QStringLiteral("unexpected argument '%1'").arg(args->positional.first()));
  if (sub == QLatin1String("playlists")) return playlists(context, *args);
  if (!context.openCatalogue()) return 1;
  return importPlaylist(context, *args);
}

}  // namespace Commands
