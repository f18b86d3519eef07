// LikeMatcher: LIKE ("%", "_", "[a-z]", "[^a]", ESCAPE) over stored text.
#pragma once

#include <string_view>

#include "localdb/engine/TextOrder.h"

namespace quarv::localdb::engine {

// `escape` is 0 where there is none. Time is bounded by the product of both lengths.
bool MatchesLike(std::string_view text, std::string_view pattern, char32_t escape = 0,
                 TextOrder order = TextOrder::CaseInsensitive);

}  // namespace quarv::localdb::engine
