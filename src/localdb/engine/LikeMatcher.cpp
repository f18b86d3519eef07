#include "localdb/engine/LikeMatcher.h"

#include "localdb/engine/Collation.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

constexpr size_t None = std::string_view::npos;

// Matches the set that opens at `at` (behind its "[") against one character. Steps behind the "]".
// A set that never closes matches nothing.
bool MatchesSet(std::string_view pattern, size_t& at, char32_t character, char32_t escape,
                TextOrder order) {
    bool negated = false;
    bool found = false;
    bool first = true;
    if (at < pattern.size() && pattern[at] == '^') {
        negated = true;
        ++at;
    }
    while (at < pattern.size()) {
        char32_t low = NextCodePoint(pattern, at);
        if (low == U']' && !first) return found != negated;
        first = false;
        if (escape != 0 && low == escape && at < pattern.size()) low = NextCodePoint(pattern, at);
        char32_t high = low;
        if (at + 1 < pattern.size() && pattern[at] == '-' && pattern[at + 1] != ']') {
            ++at;
            high = NextCodePoint(pattern, at);
        }
        found = found || (Collation::CompareCharacters(low, character, order) <= 0 &&
                          Collation::CompareCharacters(character, high, order) <= 0);
    }
    return false;
}

// Matches what stands at `at` in the pattern, which is no "%", against one character.
bool MatchesOne(std::string_view pattern, size_t& at, char32_t character, char32_t escape,
                TextOrder order) {
    char32_t code = NextCodePoint(pattern, at);
    if (escape != 0 && code == escape && at < pattern.size()) {
        return Collation::SameCharacter(NextCodePoint(pattern, at), character, order);
    }
    if (code == U'_') return true;
    if (code == U'[') return MatchesSet(pattern, at, character, escape, order);
    return Collation::SameCharacter(code, character, order);
}

bool Matches(std::string_view text, std::string_view pattern, char32_t escape, TextOrder order) {
    size_t at = 0, place = 0;
    size_t retryPattern = None, retryText = 0;
    while (place < text.size()) {
        const bool percent = at < pattern.size() && pattern[at] == '%' && escape != U'%';
        if (percent) {
            retryPattern = ++at;
            retryText = place;
            continue;
        }
        size_t nextPlace = place;
        const char32_t character = NextCodePoint(text, nextPlace);
        if (at < pattern.size() && MatchesOne(pattern, at, character, escape, order)) {
            place = nextPlace;
            continue;
        }
        if (retryPattern == None) return false;
        // The last "%" takes one character more.
        NextCodePoint(text, retryText);
        place = retryText;
        at = retryPattern;
    }
    while (at < pattern.size() && pattern[at] == '%') ++at;
    return at == pattern.size();
}

}  // namespace

bool MatchesLike(std::string_view text, std::string_view pattern, char32_t escape,
                 TextOrder order) {
    if (!HasPairs(text) && !HasPairs(pattern)) return Matches(text, pattern, escape, order);
    return Matches(SplitPairs(text), SplitPairs(pattern), escape, order);
}

}  // namespace quarv::localdb::engine
