#pragma once

#include "AttributeKind.h"

#include <QVariant>
#include <optional>

// Reads a value a person typed (or a script passed) as the attribute's kind: dates in the
// free forms people write, numbers of whole values, yes/no for booleans. Texts are taken as
// they are, so letters in a price stay text. nullopt when the value cannot be read.
namespace AttributeInput {
std::optional<QVariant> read(AttributeKind kind, const QVariant& input);
}
