#pragma once

#include <memory>
#include <vector>

class Entry;
class Link;
class Track;

// What a migration policy may ask of the migration running it: whether a destination entry was
// made from a source row, and the tracks and links made from that row's related rows (handed over
// once).
class MigrationSource {
 public:
  virtual bool hasSourceForDestination(const Entry& destination) const = 0;
  virtual std::vector<std::unique_ptr<Track>> takeTracksFor(const Entry& destination) = 0;
  virtual std::vector<std::unique_ptr<Link>> takeLinksFor(const Entry& destination) = 0;

 protected:
  ~MigrationSource() = default;
};
