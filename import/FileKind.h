#pragma once

#include <QString>
#include <QStringView>

// What a file handed to the program is, decided first by its name and then, for an XML or
// property list file, by its text. Both steps are pure: no file is touched here.
class FileKind {
 public:
  enum Kind {
    Card,              // a single entry card
    EntryRequest,      // a property list naming an entry to select
    NativeExport,      // this program's own export
    ExtrasPackage,     // a folder of templates
    ForeignDatabase,   // a library database of another cataloguer
    AudioFile,
    Folder,            // a folder of audio files
    DelimitedText,     // tab- or comma-separated text with a header row
    Xml,               // to be told apart by its text (ofXmlText)
    MusicLibrary,      // the music player's library
    ReleaseList,       // a list of releases of the record database
    ScannerCollection,
    ForeignLibraryExport,
    ForeignCdList,
    ForeignCollectionExport,
    ForeignCdDatabase,
    Unrecognised,
  };

  static inline const QString cardExtension = QStringLiteral("discarycard");

  // From the path alone; the extension is compared without regard to case.
  static Kind byName(const QString& path, bool isDirectory);
  // From the whole text of an XML or property list file. Some markers count only near the start
  // and only in a text longer than that start, as files of those kinds always are.
  static Kind ofXmlText(QStringView text);
};
