// SurrogatePairs: what the functions of texts need where they count UTF-16 units. The collation has
// no supplementary characters, so that each half of a pair is a character of its own; a half that
// is left alone is kept as three bytes and becomes whole again where its other half stands beside
// it.
#pragma once

#include <string>
#include <string_view>

#include "localdb/engine/TextArena.h"

namespace quarv::localdb::engine {

bool HasPairs(std::string_view bytes);
// With each pair as two characters of three bytes. The text itself where it has none.
std::string_view SplitPairs(std::string_view bytes, TextArena& arena);
std::string SplitPairs(std::string_view bytes);
// With two halves that stand side by side as one character. The text itself where there are none.
std::string_view JoinPairs(std::string_view bytes, TextArena& arena);
std::string JoinPairs(std::string text);

}  // namespace quarv::localdb::engine
