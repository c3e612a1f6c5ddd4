#pragma once

#include <QString>

// Moves a file so that it is never lost: a rename where the file system allows it, otherwise a
// copy beside the destination that is checked byte for byte before it takes the destination's
// name, and only then is the source removed.
namespace FileMover {
bool move(const QString& from, const QString& to, QString* error);
// The copying half of move, for a source on another file system.
bool copyThenRemove(const QString& from, const QString& to, QString* error);
}  // namespace FileMover
