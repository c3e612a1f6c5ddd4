#include "FileKind.h"

#include "Link.h"

#include <QFileInfo>

namespace {

// The marker within the first characters of a text longer than those.
bool within(QStringView text, QStringView marker, qsizetype first) {
  return text.size() > first && text.left(first).contains(marker);
}

}  // namespace

FileKind::Kind FileKind::byName(const QString& path, bool isDirectory) {
  const QString extension = QFileInfo(path).suffix();
  auto is = [&extension](QStringView e) { return extension.compare(e, Qt::CaseInsensitive) == 0; };

  if (is(cardExtension)) return Card;
  if (is(u"folio_md_c")) return EntryRequest;
  if (is(u"discary")) return NativeExport;
  if (path.contains(QLatin1String("folioextras"), Qt::CaseInsensitive)) return ExtrasPackage;
  if (is(u"deliciouslibrary2")) return ForeignDatabase;
  if (Link::isMusicFilePath(path)) return AudioFile;
  if (is(u"xml") || is(u"plist")) return Xml;
  // Bundles of other programs are folders too, but no folders of music.
  if (isDirectory && extension != QLatin1String("shelfmark") && !extension.startsWith(QLatin1String("folioextras")))
    return Folder;
  return DelimitedText;
}

FileKind::Kind FileKind::ofXmlText(QStringView text) {
  if (within(text, u"<key>Music Folder</key>", 500)) return MusicLibrary;
  if (text.contains(u"<plist version=") && text.contains(u">Lending Status") && text.contains(u">Bookmark Type"))
    return ScannerCollection;
  if (text.contains(u"<releases num=") && text.contains(u"<release id=")) return ReleaseList;
  if (within(text, u"uuid=", 300) && text.contains(u"<library")) return ForeignLibraryExport;
  if (text.contains(u"<CDInfo count=\"")) return ForeignCdList;
  if (within(text, u"<musicmetadata>", 2000) || within(text, u"<collectorz>", 2000)) return ForeignCollectionExport;
  if (within(text, u"CD_APPLE_MAGIC_NUMBER_TAG", 1000)) return ForeignCdDatabase;
  // Data dumps and single releases carry no count on <releases>; they are release lists still.
  if (text.contains(u"<release id=")) return ReleaseList;
  return Unrecognised;
}
