#pragma once

#include "MusicField.h"

#include <vector>

// The music entry's fields, one row each. The stored schema, the store's table, the edit panel,
// the list's columns, the field titles and the command line's JSON all follow from these rows,
// so a new field is one row here (and, when stored, one upgrade step of the store).
class MusicFields {
 public:
  // Stored fields first, in the column order of the entries table; then the derived ones.
  static const std::vector<MusicField>& all();
  static const MusicField* find(const QString& key);
  // The fields with a position in one of the ordered lists (panelPosition, personalPosition,
  // ...), in that list's order.
  static std::vector<const MusicField*> ordered(int MusicField::*position);
};
