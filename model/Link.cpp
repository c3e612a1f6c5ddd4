#include "Link.h"

#include "Entry.h"
#include "ModelKeys.h"

#include <QFileInfo>
#include <QStringList>

void Link::didChange(const QString&, bool notify) {
  if (entry_) entry_->relationshipDidChange(ModelKeys::linksSet, notify);
}

bool Link::isMusicFilePath(const QString& path) {
  static const QStringList extensions = {"mp3", "m4a", "m4p", "m4b", "aac", "flac", "ogg", "oga", "opus",
                                         "wav", "aif", "aiff", "wma", "ape", "wv", "mpc"};
  return extensions.contains(QFileInfo(path).suffix().toLower());
}
