// PATINDEX, SOUNDEX, DIFFERENCE and ISNUMERIC: what a text looks like.
#include <array>

#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/LikeMatcher.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/TextNumber.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// The end of the pattern's part up to its next "%"; a set's "%" is a character.
size_t EndOfPart(std::string_view pattern) {
    for (size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] == '%') return at;
        if (pattern[at] != '[') continue;
        const size_t close = pattern.find(']', at + 2);
        if (close == std::string_view::npos) return pattern.size();
        at = close;
    }
    return pattern.size();
}

// The character, counted from 1, where `pattern` begins to match; 0 where it does not. Without a
// "%" in front it matches at the first character or nowhere.
int64_t PlaceOf(std::string_view text, std::string_view pattern, TextOrder order) {
    if (!MatchesLike(text, pattern, 0, order)) return 0;
    if (pattern.empty() || pattern.front() != '%') return 1;
    while (!pattern.empty() && pattern.front() == '%') pattern.remove_prefix(1);
    const size_t end = EndOfPart(pattern);
    // What follows a further "%" matches behind the first place of this part, if behind any.
    std::string part(pattern.substr(0, end));
    if (end < pattern.size()) part += '%';
    int64_t place = 1;
    for (size_t at = 0; at < text.size(); ++place) {
        if (MatchesLike(text.substr(at), part, 0, order)) return place;
        NextCodePoint(text, at);
    }
    // A pattern of nothing but "%" matches an empty text too.
    return pattern.empty() ? 1 : place;
}

SqlValue PatIndex(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const std::string_view text = SplitPairs(a[1].text, *evaluation.arena);
    const std::string_view pattern = SplitPairs(a[0].text, *evaluation.arena);
    return SqlValue::Integer(PlaceOf(text, pattern, call.Order()));
}

BoundPtr BindPatIndex(Arguments arguments) {
    for (BoundPtr& argument : arguments) argument = AsText(std::move(argument));
    const SqlType& text = arguments[1]->type;
    const bool max = text.length == SqlType::Max && !IsOldLong(text.kind);
    return MakeCall(PatIndex, max ? MakeType(TypeKind::BigInt) : IntType(), std::move(arguments));
}

// The digit of a letter's sound; 0 for vowels and what is silent.
char SoundOf(char letter) {
    constexpr std::string_view Sounds = "01230120022455012623010202";
    return Sounds[static_cast<size_t>(letter - 'a')];
}

bool IsLetter(char c) {
    return c >= 'a' && c <= 'z';
}

// The first letter and three digits for the sounds behind it; ends at the first other sign.
std::array<char, 4> SoundexOf(std::string_view text) {
    std::array<char, 4> code = {'0', '0', '0', '0'};
    size_t count = 0;
    char last = '0';
    for (const char sign : text) {
        const char letter = static_cast<char>(sign | 0x20);
        if (!IsLetter(letter) || count == code.size()) break;
        const char sound = SoundOf(letter);
        if (count == 0) {
            code[count++] = static_cast<char>(letter - 0x20);
        } else if (sound != '0' && sound != last) {
            code[count++] = sound;
        }
        // "h" and "w" do not part equal sounds.
        if (letter != 'h' && letter != 'w') last = sound;
    }
    return code;
}

SqlValue Soundex(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::array<char, 4> code = SoundexOf(a[0].text);
    return SqlValue::Text(evaluation.arena->Keep({code.data(), code.size()}));
}

BoundPtr BindSoundex(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    return MakeCall(Soundex, MakeType(TypeKind::VarChar, 4), std::move(arguments));
}

// Equal signs of both codes, place by place: 4 sounds alike.
SqlValue Difference(const BoundCall&, const SqlValue* a, const Evaluation&) {
    const std::array<char, 4> one = SoundexOf(a[0].text), two = SoundexOf(a[1].text);
    int64_t equal = 0;
    for (size_t i = 0; i < one.size(); ++i) equal += one[i] == two[i];
    return SqlValue::Integer(equal);
}

BoundPtr BindDifference(Arguments arguments) {
    for (BoundPtr& argument : arguments) argument = AsText(std::move(argument));
    return MakeCall(Difference, IntType(), std::move(arguments));
}

bool IsNumberText(std::string_view text) {
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) return false;
    bool invalid = false;
    if (DecimalMath::Parse(text, 38, 0, invalid) || !invalid) return true;
    invalid = false;
    if (TextNumber::ParseMoney(text, invalid) || !invalid) return true;
    return TextNumber::ParseReal(text).has_value();
}

SqlValue IsNumeric(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const TypeClass cls = ClassOf(call.parts[0]->type);
    if (a[0].IsNull()) return SqlValue::Integer(0);
    if (cls == TypeClass::Text) return SqlValue::Integer(IsNumberText(a[0].text));
    return SqlValue::Integer(IsNumber(call.parts[0]->type));
}

BoundPtr BindIsNumeric(Arguments arguments) {
    return MakeNeverNullCall(IsNumeric, IntType(), std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> TextSearchFunctions() {
    static constexpr std::array<FunctionEntry, 4> Table = {{
        {u"patindex", 2, 2, BindPatIndex},
        {u"soundex", 1, 1, BindSoundex},
        {u"difference", 2, 2, BindDifference},
        {u"isnumeric", 1, 1, BindIsNumeric},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
