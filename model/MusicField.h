#pragma once

#include "AttributeKind.h"

#include <QString>
#include <optional>

// One field of the music entry: how it is stored, edited, shown as a list column and which of
// the catalogue's lists offer it. Rows are written as one chained expression each.
struct MusicField {
  // How the edit panel places the field.
  enum PanelFlag : unsigned {
    Off = 1u << 0,    // hidden until the user switches it on
    Long = 1u << 1,   // spans several lines
    Extra = 1u << 2,  // in the personal section rather than the main one
  };

  MusicField(const QString& key, const char* title, std::optional<AttributeKind> kind, int editType, int columnType)
      : key(key), title(QString::fromUtf8(title)), kind(kind), editType(editType), columnType(columnType) {}

  QString key;
  QString title;                      // English; the Fields string table holds translations
  std::optional<AttributeKind> kind;  // none for values derived from others or from relationships
  int editType;                       // FieldType
  int columnType;                     // ColumnType when numbers are told apart; plain text otherwise
  float initialWidth = 0;             // 0: the width of the column type, or the default
  int panelPosition = 0;              // 0: no edit field
  unsigned panelFlags = 0;
  bool columnOnly = false;       // a list column with no edit field behind it
  bool moderatorColumn = false;  // a list column offered to moderators only
  bool smartOnly = false;        // a smart collection criterion with no edit field behind it
  int personalPosition = 0;      // 0: not personal data
  int fullscreenPosition = 0;    // 0: not shown full screen by default
  int feedPosition = 0;          // 0: not in a feed item's description

  bool isStored() const { return kind.has_value(); }

  MusicField& width(float w) { return initialWidth = w, *this; }
  MusicField& panel(int position, unsigned flags = 0) { return panelPosition = position, panelFlags = flags, *this; }
  MusicField& column() { return columnOnly = true, *this; }
  MusicField& moderatorOnlyColumn() { return moderatorColumn = true, *this; }
  MusicField& smart() { return smartOnly = true, *this; }
  MusicField& personal(int position) { return personalPosition = position, *this; }
  MusicField& fullscreen(int position) { return fullscreenPosition = position, *this; }
  MusicField& feed(int position) { return feedPosition = position, *this; }
};
