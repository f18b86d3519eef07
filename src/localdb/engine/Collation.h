// Collation: how text is compared and ordered. Blanks at the end never count; signs come before
// digits before letters, except where codes are compared. Names are compared by the server's own.
#pragma once

#include <QString>
#include <string_view>

#include "localdb/engine/TextOrder.h"

namespace quarv::localdb::engine {

class Collation {
  public:
    // As the catalogue names it: the collation that values have on the wire. Inside the server
    // varchar is UTF-8, so that no literal loses a character before it is sent.
    static constexpr const char* Name = "SQL_Latin1_General_CP1_CI_AS";
    // Below 0, 0 or above 0. A total preorder over all byte strings.
    static int Compare(std::string_view a, std::string_view b);
    static int Compare(std::string_view a, std::string_view b, TextOrder order);
    // Whether two single characters are equal, as LIKE needs it.
    static bool SameCharacter(char32_t a, char32_t b, TextOrder order = TextOrder::CaseInsensitive);
    // Order of two single characters, for the ranges of LIKE.
    static int CompareCharacters(char32_t a, char32_t b,
                                 TextOrder order = TextOrder::CaseInsensitive);
};

}  // namespace quarv::localdb::engine
