#include "LiteralGenreFrameFactory.h"

const TagLib::ByteVector LiteralGenreFrameFactory::genreId("Tcon");

LiteralGenreFrameFactory* LiteralGenreFrameFactory::instance() {
  static LiteralGenreFrameFactory factory;
  return &factory;
}

bool LiteralGenreFrameFactory::updateFrame(FrameHeader::Type* header) const {
  if (!FrameFactory::updateFrame(header)) return false;
  // Still a text frame (its id begins with "T"), but not the one whose text TagLib rewrites.
  if (header->frameID() == "TCON") header->setFrameID(genreId);
  return true;
}
