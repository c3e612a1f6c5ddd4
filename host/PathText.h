#pragma once

#include <QString>

// File paths made absolute and canonical.
namespace PathText {

// The canonical absolute path with symbolic links resolved (Linux has no other kind of alias);
// the path itself when it, or a link's target, does not exist.
QString stringByResolvingAliasInPath(const QString& path);

// The path made absolute against the working folder, with "." and ".." steps, doubled and
// trailing slashes removed; symbolic links are kept as written. Empty stays empty.
QString absoluteCleanPath(const QString& path);

}  // namespace PathText
