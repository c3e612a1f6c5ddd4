#pragma once

#include "ManagedObject.h"

#include <QStringList>

class Entry;
class RelationshipOwner;

// One link of an entry: "name", "url", "type", "position".
class Link : public ManagedObject {
 public:
  Link() : ManagedObject(EntitySchema::link()) {}
  // The extensions, in lower case, of the audio files that imports take: the one list for a
  // single file, a folder's walk and the import panel.
  static const QStringList& musicFileExtensions();
  // Whether the path names an audio file, by its extension in any case.
  static bool isMusicFilePath(const QString& path);

 protected:
  void didChange(const QString& key, bool notify) override;

 private:
  friend class Entry;
  RelationshipOwner* owner_ = nullptr;
};
