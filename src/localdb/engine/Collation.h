// Collation: how text is compared and ordered: case does not count, accents do, blanks at the end
// do not; signs before digits before letters. One collation for all text and all names.
#pragma once

#include <QString>
#include <string_view>

namespace quarv::localdb::engine {

class Collation {
  public:
    // As the catalogue names it: the collation that values have on the wire. Inside the server
    // varchar is UTF-8, so that no literal loses a character before it is sent.
    static constexpr const char* Name = "SQL_Latin1_General_CP1_CI_AS";
    // Below 0, 0 or above 0. A total preorder over all byte strings.
    static int Compare(std::string_view a, std::string_view b);
    // Whether two single characters are equal, as LIKE needs it.
    static bool SameCharacter(char32_t a, char32_t b);
    // Order of two single characters, for the ranges of LIKE.
    static int CompareCharacters(char32_t a, char32_t b);
};

}  // namespace quarv::localdb::engine
