// The functions that make a text out of others: STUFF, REVERSE, TRANSLATE, QUOTENAME, CONCAT_WS,
// STR, STRING_ESCAPE and the trimming of given characters.
#include <algorithm>
#include <array>
#include <cmath>

#include "localdb/engine/Collation.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// Null where the start lies outside the text; a null replacement only deletes.
SqlValue Stuff(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    if (a[0].IsNull() || a[1].IsNull() || a[2].IsNull()) return {};
    const std::string_view text = SplitPairs(a[0].text, *evaluation.arena);
    const auto characters = static_cast<int64_t>(CharacterCount(text));
    const int64_t start = a[1].integer, length = a[2].integer;
    if (start < 1 || start > characters || length < 0) return {};
    const size_t begin = BytesOfCharacters(text, static_cast<size_t>(start - 1));
    const int64_t last = length > characters - start ? characters : start - 1 + length;
    const size_t end = BytesOfCharacters(text, static_cast<size_t>(last));
    std::string result(text.substr(0, begin));
    result += a[3].text;
    result += text.substr(end);
    return FitResult(call, evaluation.arena->Keep(result), evaluation);
}

BoundPtr BindStuff(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    arguments[1] = AsInteger(std::move(arguments[1]));
    arguments[2] = AsInteger(std::move(arguments[2]));
    arguments[3] = AsText(std::move(arguments[3]));
    const SqlType type = Widest(TypeRules::Common(arguments[0]->type, arguments[3]->type));
    return MakeNullableCall(Stuff, type, std::move(arguments), true);
}

SqlValue Reverse(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::string_view text = SplitPairs(a[0].text, *evaluation.arena);
    char* out = evaluation.arena->Allocate(text.size());
    size_t place = text.size();
    for (size_t at = 0; at < text.size();) {
        const size_t from = at;
        NextCodePoint(text, at);
        place -= at - from;
        text.copy(out + place, at - from, from);
    }
    return SqlValue::Text(JoinPairs({out, text.size()}, *evaluation.arena));
}

BoundPtr BindReverse(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    const SqlType type = Varying(arguments[0]->type);
    return MakeCall(Reverse, type, std::move(arguments));
}

// The character of `to` that stands where `code` stands in `from`, the first of several.
std::string_view Translated(char32_t code, std::string_view from, std::string_view to,
                            TextOrder order) {
    size_t target = 0;
    for (size_t at = 0; at < from.size();) {
        const bool same = Collation::SameCharacter(NextCodePoint(from, at), code, order);
        const size_t begin = target;
        NextCodePoint(to, target);
        if (same) return to.substr(begin, target - begin);
    }
    return {};
}

SqlValue Translate(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    TextArena& arena = *evaluation.arena;
    const std::string_view text = SplitPairs(a[0].text, arena);
    const std::string_view signs = SplitPairs(a[1].text, arena);
    const std::string_view others = SplitPairs(a[2].text, arena);
    if (CharacterCount(signs) != CharacterCount(others)) throw SqlError(9828);
    std::string result;
    for (size_t at = 0; at < text.size();) {
        const size_t from = at;
        const std::string_view other =
            Translated(NextCodePoint(text, at), signs, others, call.Order());
        result += other.empty() ? text.substr(from, at - from) : other;
    }
    return FitResult(call, evaluation.arena->Keep(result), evaluation);
}

BoundPtr BindTranslate(Arguments arguments) {
    SqlType type;
    for (BoundPtr& argument : arguments) argument = AsText(std::move(argument));
    type = Widest(TypeRules::Common(arguments[0]->type, arguments[2]->type));
    return MakeCall(Translate, type, std::move(arguments));
}

// The closing sign is doubled within; null for a sign that quotes nothing.
SqlValue QuoteName(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    constexpr std::string_view Open = "[]()<>{}'\"`", Left = "[[((<<{{'\"`", Right = "]]))>>}}'\"`";
    const std::string_view given = call.parts.size() > 1 ? a[1].text : std::string_view("[");
    const size_t which = given.empty() ? std::string_view::npos : Open.find(given.front());
    if (which == std::string_view::npos || Utf16Length(a[0].text) > 128) return {};
    std::string result(1, Left[which]);
    for (const char c : a[0].text) {
        result += c;
        if (c == Right[which]) result += c;
    }
    result += Right[which];
    return SqlValue::Text(evaluation.arena->Keep(result));
}

BoundPtr BindQuoteName(Arguments arguments) {
    const SqlType all = MakeType(TypeKind::NVarChar, SqlType::Max);
    for (BoundPtr& argument : arguments) {
        argument = ExpressionBinder::Convert(std::move(argument), all);
    }
    return MakeNullableCall(QuoteName, MakeType(TypeKind::NVarChar, 258), std::move(arguments));
}

// Nulls are left out, and so are their separators; a null separator is none.
SqlValue ConcatWithSeparator(const BoundCall& call, const SqlValue* a,
                             const Evaluation& evaluation) {
    std::string result;
    bool first = true;
    for (size_t i = 1; i < call.parts.size(); ++i) {
        if (a[i].IsNull()) continue;
        if (!first) result += a[0].text;
        result += a[i].text;
        first = false;
    }
    return FitResult(call, evaluation.arena->Keep(result), evaluation);
}

BoundPtr BindConcatWithSeparator(Arguments arguments) {
    for (BoundPtr& argument : arguments) argument = AsText(std::move(argument));
    SqlType type = arguments[0]->type;
    for (const BoundPtr& argument : arguments) type = TypeRules::Common(type, argument->type);
    return MakeNeverNullCall(ConcatWithSeparator, Widest(type), std::move(arguments));
}

// A number in a field of a width, as many digits behind the point as it has room for; stars where
// the whole part does not fit.
std::string FieldText(double value, int64_t width, int64_t decimals) {
    const auto size = static_cast<size_t>(width);
    std::array<char, 400> buffer;
    for (int64_t digits = std::min<int64_t>(decimals, 16); digits >= 0; --digits) {
        const double unit = std::pow(10.0, static_cast<double>(digits));
        const double rounded = std::fabs(value) < 1e15 ? std::round(value * unit) / unit : value;
        const int length =
            std::snprintf(buffer.data(), buffer.size(), "%.*f", static_cast<int>(digits), rounded);
        std::string text(buffer.data(), static_cast<size_t>(length));
        if (text.size() <= size) return std::string(size - text.size(), ' ') + text;
    }
    return std::string(size, '*');
}

constexpr int64_t MaxField = 8000;

SqlValue Str(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const int64_t width = call.parts.size() > 1 ? a[1].integer : 10;
    const int64_t decimals = call.parts.size() > 2 ? a[2].integer : 0;
    if (width < 1 || width > MaxField || decimals < 0) return {};
    return SqlValue::Text(evaluation.arena->Keep(FieldText(a[0].real, width, decimals)));
}

BoundPtr BindStr(Arguments arguments) {
    int length = MaxField;
    arguments[0] = AsFloat(std::move(arguments[0]));
    for (size_t i = 1; i < arguments.size(); ++i) {
        arguments[i] = AsInteger(std::move(arguments[i]));
    }
    if (arguments.size() == 1) length = 10;
    if (arguments.size() > 1 && arguments[1]->IsConstant()) {
        const int64_t width = static_cast<const BoundConstant&>(*arguments[1]).Value().integer;
        if (width >= 1 && width <= MaxField) length = static_cast<int>(width);
    }
    return MakeNullableCall(Str, MakeType(TypeKind::VarChar, length), std::move(arguments));
}

std::string EscapedJson(std::string_view text) {
    constexpr std::string_view Special = "\"\\/\b\f\n\r\t", Letters = "\"\\/bfnrt";
    std::string result;
    for (const char c : text) {
        const size_t which = Special.find(c);
        if (which != std::string_view::npos) {
            result += {'\\', Letters[which]};
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> code;
            std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned char>(c));
            result += code.data();
        } else {
            result += c;
        }
    }
    return result;
}

SqlValue StringEscape(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    if (FromUtf8(WithoutTrailingBlanks(a[1].text)).toLower() != u"json") {
        throw SqlError(40517, {QStringLiteral("STRING_ESCAPE type ") + FromUtf8(a[1].text)});
    }
    return SqlValue::Text(evaluation.arena->Keep(EscapedJson(a[0].text)));
}

BoundPtr BindStringEscape(Arguments arguments) {
    const SqlType all = MakeType(TypeKind::NVarChar, SqlType::Max);
    for (BoundPtr& argument : arguments) {
        argument = ExpressionBinder::Convert(std::move(argument), all);
    }
    return MakeCall(StringEscape, all, std::move(arguments));
}

bool Contains(std::string_view characters, char32_t code, TextOrder order) {
    for (size_t at = 0; at < characters.size();) {
        if (Collation::SameCharacter(NextCodePoint(characters, at), code, order)) return true;
    }
    return false;
}

std::string_view TrimmedLeft(std::string_view text, std::string_view characters, TextOrder order) {
    size_t begin = 0;
    for (size_t at = 0; at < text.size() && Contains(characters, NextCodePoint(text, at), order);) {
        begin = at;
    }
    return text.substr(begin);
}

std::string_view TrimmedRight(std::string_view text, std::string_view characters, TextOrder order) {
    while (!text.empty()) {
        size_t last = text.size() - 1;
        while (last > 0 && (static_cast<unsigned char>(text[last]) & 0xC0) == 0x80) --last;
        size_t at = last;
        if (!Contains(characters, NextCodePoint(text, at), order)) return text;
        text.remove_suffix(text.size() - last);
    }
    return text;
}

// Of one side or both; a blank where no characters are given.
template <bool Left, bool Right>
SqlValue Trim(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const std::string_view characters = call.parts.size() > 1 ? a[1].text : std::string_view(" ");
    std::string_view text = a[0].text;
    if (Left) text = TrimmedLeft(text, characters, call.Order());
    if (Right) text = TrimmedRight(text, characters, call.Order());
    return SqlValue::Text(text);
}

template <bool Left, bool Right>
BoundPtr BindTrim(Arguments arguments) {
    for (BoundPtr& argument : arguments) argument = AsText(std::move(argument));
    const SqlType type = Varying(arguments[0]->type);
    return MakeCall(Trim<Left, Right>, type, std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> TextEditFunctions() {
    static constexpr std::array<FunctionEntry, 10> Table = {{
        {u"stuff", 4, 4, BindStuff},
        {u"reverse", 1, 1, BindReverse},
        {u"translate", 3, 3, BindTranslate},
        {u"quotename", 1, 2, BindQuoteName},
        {u"concat_ws", 3, BoundCall::MaxArguments, BindConcatWithSeparator},
        {u"str", 1, 3, BindStr},
        {u"string_escape", 2, 2, BindStringEscape},
        {u"trim", 1, 2, BindTrim<true, true>},
        {u"ltrim", 1, 2, BindTrim<true, false>},
        {u"rtrim", 1, 2, BindTrim<false, true>},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
