#pragma once

#include <taglib/id3v2framefactory.h>

// Builds ID3v2 frames as TagLib does, but leaves a genre frame's text as the file holds it:
// TagLib rewrites "(17)" as "17" in every frame it builds under the id TCON.
class LiteralGenreFrameFactory : public TagLib::ID3v2::FrameFactory {
  // Frame lends the name of its header class only to its subclasses, yet updateFrame takes one.
  struct FrameHeader : TagLib::ID3v2::Frame {
    using Type = Header;
  };

 public:
  static LiteralGenreFrameFactory* instance();
  // The id the genre frame carries instead of TCON; no file can hold it, being lower case.
  static const TagLib::ByteVector genreId;

 protected:
  bool updateFrame(FrameHeader::Type* header) const override;
};
