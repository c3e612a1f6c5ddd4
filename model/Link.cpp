#include "Link.h"

#include "RelationshipOwner.h"
#include "ModelKeys.h"

#include <QFileInfo>
#include <QStringList>

void Link::didChange(const QString&, bool notify) {
  if (owner_) owner_->relationshipDidChange(ModelKeys::linksSet, notify);
}

const QStringList& Link::musicFileExtensions() {
  static const QStringList extensions = {"mp3", "m4a", "m4p", "m4b", "mp4", "aac", "flac", "ogg", "oga", "opus",
                                         "aif", "aiff", "aifc", "wav", "wv", "ape", "mpc", "wma", "spx", "tta"};
  return extensions;
}

bool Link::isMusicFilePath(const QString& path) {
  return musicFileExtensions().contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
}
