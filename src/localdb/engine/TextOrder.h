// TextOrder: the orders in which texts are compared; several collations share one.
#pragma once

#include <cstdint>

namespace quarv::localdb::engine {

enum class TextOrder : uint8_t {
    CaseInsensitive,  // the server's own: accents count, case does not
    LowerFirst,       // accents and case count, "a" stands before "A"
    UpperFirst,       // accents and case count, "A" stands before "a"
    Letters,          // neither accents nor case count
    LettersAndCase,   // case counts, accents do not
    CodePage,         // the bytes of the code page
    CodePoints,       // the code points
    UnitBytes,        // the first UTF-16 unit, then the bytes of the others, the lower first
};

inline constexpr int TextOrderCount = 8;

}  // namespace quarv::localdb::engine
