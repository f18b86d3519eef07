#include <algorithm>
#include <array>

#include "base/CodePage1252.h"
#include "localdb/engine/Collation.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

// A function of one text that gives a text of the same type.
template <Compute Function>
BoundPtr BindSameText(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    const SqlType type = Varying(arguments[0]->type);
    return MakeCall(Function, type, std::move(arguments));
}

// The text first, numbers behind it.
template <Compute Function>
BoundPtr BindTextAndNumbers(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    for (size_t i = 1; i < arguments.size(); ++i) arguments[i] = AsInteger(std::move(arguments[i]));
    const SqlType type = Varying(arguments[0]->type);
    return MakeCall(Function, type, std::move(arguments));
}

SqlValue Len(const BoundCall&, const SqlValue* a, const Evaluation&) {
    const std::string_view text = WithoutTrailingBlanks(a[0].text);
    return SqlValue::Integer(static_cast<int64_t>(Utf16Length(text)));
}

BoundPtr BindLen(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    const bool max = arguments[0]->type.length == SqlType::Max;
    return MakeCall(Len, max ? MakeType(TypeKind::BigInt) : IntType(), std::move(arguments));
}

SqlValue DataLength(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const SqlType& type = call.parts[0]->type;
    size_t size = 0;
    switch (ClassOf(type)) {
        case TypeClass::Text:
            size = Utf16Length(a[0].text) * (IsUnicode(type.kind) ? 2 : 1);
            break;
        case TypeClass::Binary:
            size = a[0].text.size();
            break;
        default:
            return SqlValue::Integer(ByteLength(type));
    }
    return SqlValue::Integer(static_cast<int64_t>(size));
}

BoundPtr BindDataLength(Arguments arguments) {
    const SqlType& type = arguments[0]->type;
    const bool max =
        type.length == SqlType::Max && !IsOldLong(type.kind) && type.kind != TypeKind::Xml;
    return MakeCall(DataLength, max ? MakeType(TypeKind::BigInt) : IntType(), std::move(arguments));
}

template <char32_t (*Map)(char32_t)>
SqlValue MapCase(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::string_view text = a[0].text;
    char* out = evaluation.arena->Allocate(text.size() * 4);
    size_t size = 0;
    for (size_t at = 0; at < text.size();)
        size += PutCodePoint(Map(NextCodePoint(text, at)), out + size);
    return SqlValue::Text({out, size});
}

char32_t ToUpper(char32_t code) {
    return QChar::toUpper(code);
}
char32_t ToLower(char32_t code) {
    return QChar::toLower(code);
}

// A part of a text that was split; what of it are pairs is joined again.
SqlValue Part(std::string_view text, size_t begin, size_t end, const Evaluation& evaluation) {
    return SqlValue::Text(JoinPairs(text.substr(begin, end - begin), *evaluation.arena));
}

SqlValue Left(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    if (a[1].integer < 0) throw SqlError(537);
    const std::string_view text = SplitPairs(a[0].text, *evaluation.arena);
    const size_t end = BytesOfCharacters(text, static_cast<size_t>(a[1].integer));
    return Part(text, 0, end, evaluation);
}

SqlValue Right(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    if (a[1].integer < 0) throw SqlError(536, {QStringLiteral("RIGHT")});
    const std::string_view text = SplitPairs(a[0].text, *evaluation.arena);
    const size_t all = CharacterCount(text);
    const auto wanted = static_cast<size_t>(a[1].integer);
    const size_t begin = wanted >= all ? 0 : BytesOfCharacters(text, all - wanted);
    return Part(text, begin, text.size(), evaluation);
}

SqlValue Substring(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    if (a[2].integer < 0) throw SqlError(537);
    // A start before the text takes from the length.
    const bool bytes = ClassOf(call.type) == TypeClass::Binary;
    const std::string_view text = bytes ? a[0].text : SplitPairs(a[0].text, *evaluation.arena);
    const auto characters = static_cast<Int128>(bytes ? text.size() : CharacterCount(text));
    const Int128 begin = std::max<Int128>(a[1].integer, 1) - 1;
    const Int128 end = std::min(Int128{a[1].integer} - 1 + a[2].integer, characters);
    if (end <= begin) return bytes ? SqlValue::Bytes({}) : SqlValue::Text({});
    const auto from = static_cast<size_t>(begin), to = static_cast<size_t>(end);
    if (bytes) return SqlValue::Bytes(text.substr(from, to - from));
    return Part(text, BytesOfCharacters(text, from), BytesOfCharacters(text, to), evaluation);
}

// Bytes give bytes; what is no text becomes one.
BoundPtr BindSubstring(Arguments arguments) {
    SqlType type = arguments[0]->type;
    if (ClassOf(type) == TypeClass::Binary) {
        if (!arguments[0]->untypedNull) type.kind = TypeKind::VarBinary;
        if (type.length == 0) type.length = ByteLength(arguments[0]->type);
    } else {
        arguments[0] = AsText(std::move(arguments[0]));
        type = Varying(arguments[0]->type);
    }
    // The old long types give what an expression of theirs can be.
    if (IsOldLong(arguments[0]->type.kind)) {
        const TypeKind old = arguments[0]->type.kind;
        type = MakeType(old == TypeKind::Image  ? TypeKind::VarBinary
                        : old == TypeKind::Text ? TypeKind::VarChar
                                                : TypeKind::NVarChar,
                        old == TypeKind::NText ? 4000 : 8000);
    }
    for (size_t i = 1; i < arguments.size(); ++i) arguments[i] = AsInteger(std::move(arguments[i]));
    return MakeCall(Substring, type, std::move(arguments));
}

// The bytes at `at` that are equal to `wanted` by the collation; 0 where they are not.
size_t MatchAt(std::string_view text, size_t at, std::string_view wanted, TextOrder order) {
    size_t place = at;
    for (size_t i = 0; i < wanted.size();) {
        if (place >= text.size()) return 0;
        if (!Collation::SameCharacter(NextCodePoint(text, place), NextCodePoint(wanted, i), order))
            return 0;
    }
    return place - at;
}

SqlValue CharIndex(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const std::string_view wanted = SplitPairs(a[0].text, *evaluation.arena);
    const std::string_view text = SplitPairs(a[1].text, *evaluation.arena);
    const int64_t start = call.parts.size() > 2 ? std::max<int64_t>(a[2].integer, 1) : 1;
    if (wanted.empty()) return SqlValue::Integer(0);
    int64_t position = 1;
    for (size_t at = 0; at < text.size(); ++position) {
        if (position >= start && MatchAt(text, at, wanted, call.Order()) > 0)
            return SqlValue::Integer(position);
        NextCodePoint(text, at);
    }
    return SqlValue::Integer(0);
}

BoundPtr BindCharIndex(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    arguments[1] = AsText(std::move(arguments[1]));
    if (arguments.size() > 2) arguments[2] = AsInteger(std::move(arguments[2]));
    const bool max = arguments[1]->type.length == SqlType::Max;
    return MakeCall(CharIndex, max ? MakeType(TypeKind::BigInt) : IntType(), std::move(arguments));
}

SqlValue Replace(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    if (a[1].text.empty()) return a[0];
    const std::string_view text = SplitPairs(a[0].text, *evaluation.arena);
    const std::string_view wanted = SplitPairs(a[1].text, *evaluation.arena);
    std::string result;
    for (size_t at = 0; at < text.size();) {
        if (const size_t found = MatchAt(text, at, wanted, call.Order())) {
            result += a[2].text;
            at += found;
        } else {
            const size_t from = at;
            NextCodePoint(text, at);
            result += text.substr(from, at - from);
        }
    }
    return FitResult(call, evaluation.arena->Keep(result), evaluation);
}

BoundPtr BindReplace(Arguments arguments) {
    SqlType type;
    for (BoundPtr& argument : arguments) argument = AsText(std::move(argument));
    type = TypeRules::Common(TypeRules::Common(arguments[0]->type, arguments[1]->type),
                             arguments[2]->type);
    return MakeCall(Replace, Widest(type), std::move(arguments));
}

SqlValue Replicate(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    if (a[1].integer < 0) return {};
    const bool max = call.type.length == SqlType::Max;
    const int64_t limit = max ? 100'000'000 : 8000;
    const auto size = static_cast<int64_t>(a[0].text.size());
    const int64_t times = size == 0 ? 0 : std::min(a[1].integer, limit / size + 1);
    if (max && size > 0 && a[1].integer > limit / size) throw SqlError(8623);
    char* out = evaluation.arena->Allocate(static_cast<size_t>(times * size));
    for (int64_t i = 0; i < times; ++i) std::copy_n(a[0].text.data(), size, out + i * size);
    return FitResult(call, {out, static_cast<size_t>(times * size)}, evaluation);
}

BoundPtr BindReplicate(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    arguments[1] = AsInteger(std::move(arguments[1]));
    const SqlType type = Widest(arguments[0]->type);
    return MakeNullableCall(Replicate, type, std::move(arguments));
}

SqlValue Concat(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    size_t size = 0;
    for (size_t i = 0; i < call.parts.size(); ++i) size += a[i].text.size();
    char* out = evaluation.arena->Allocate(size);
    char* end = out;
    for (size_t i = 0; i < call.parts.size(); ++i)
        end = std::copy_n(a[i].text.data(), a[i].text.size(), end);
    return FitResult(call, {out, size}, evaluation);
}

BoundPtr BindConcat(Arguments arguments) {
    bool unicode = false, max = false;
    for (BoundPtr& argument : arguments) {
        argument = AsText(std::move(argument));
        unicode = unicode || IsUnicode(argument->type.kind);
        max = max || argument->type.length == SqlType::Max;
    }
    const SqlType type =
        MakeType(unicode ? TypeKind::NVarChar : TypeKind::VarChar, max       ? SqlType::Max
                                                                   : unicode ? 4000
                                                                             : 8000);
    return MakeNeverNullCall(Concat, type, std::move(arguments));
}

// Of the code page that varchar has.
char32_t FromCodePage(int64_t number) {
    const auto byte = static_cast<std::byte>(number);
    return TextOfCp1252({&byte, 1}).at(0).unicode();
}

int64_t ToCodePage(char32_t code) {
    return code > 0xFFFF ? '?' : Cp1252Of(static_cast<char16_t>(code));
}

SqlValue Character(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const bool unicode = IsUnicode(call.type.kind);
    if (a[0].integer < 0 || a[0].integer > (unicode ? 0xFFFF : 0xFF)) return {};
    char* out = evaluation.arena->Allocate(4);
    const char32_t code =
        unicode ? static_cast<char32_t>(a[0].integer) : FromCodePage(a[0].integer);
    return SqlValue::Text({out, PutCodePoint(code, out)});
}

template <TypeKind Kind>
BoundPtr BindCharacter(Arguments arguments) {
    arguments[0] = AsInteger(std::move(arguments[0]));
    return MakeNullableCall(Character, MakeType(Kind, 1), std::move(arguments));
}

template <bool Ascii>
SqlValue NumberOfFirst(const BoundCall&, const SqlValue* a, const Evaluation&) {
    size_t at = 0;
    if (a[0].text.empty()) return {};
    const char32_t code = NextCodePoint(a[0].text, at);
    if (Ascii) return SqlValue::Integer(ToCodePage(code));
    return SqlValue::Integer(code < 0x10000 ? code : QChar::highSurrogate(code));
}

template <bool Ascii>
BoundPtr BindNumberOfFirst(Arguments arguments) {
    arguments[0] = AsText(std::move(arguments[0]));
    return MakeNullableCall(NumberOfFirst<Ascii>, IntType(), std::move(arguments));
}

SqlValue Space(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    if (a[0].integer < 0) return {};
    const auto size = static_cast<size_t>(std::min<int64_t>(a[0].integer, 8000));
    char* out = evaluation.arena->Allocate(size);
    std::fill_n(out, size, ' ');
    return SqlValue::Text({out, size});
}

BoundPtr BindSpace(Arguments arguments) {
    arguments[0] = AsInteger(std::move(arguments[0]));
    return MakeNullableCall(Space, MakeType(TypeKind::VarChar, 8000), std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> TextFunctions() {
    static constexpr std::array<FunctionEntry, 16> Table = {{
        {u"len", 1, 1, BindLen},
        {u"datalength", 1, 1, BindDataLength},
        {u"upper", 1, 1, BindSameText<MapCase<ToUpper>>},
        {u"lower", 1, 1, BindSameText<MapCase<ToLower>>},
        {u"left", 2, 2, BindTextAndNumbers<Left>},
        {u"right", 2, 2, BindTextAndNumbers<Right>},
        {u"substring", 3, 3, BindSubstring},
        {u"charindex", 2, 3, BindCharIndex},
        {u"replace", 3, 3, BindReplace},
        {u"replicate", 2, 2, BindReplicate},
        {u"concat", 2, BoundCall::MaxArguments, BindConcat},
        {u"char", 1, 1, BindCharacter<TypeKind::Char>},
        {u"nchar", 1, 1, BindCharacter<TypeKind::NChar>},
        {u"unicode", 1, 1, BindNumberOfFirst<false>},
        {u"ascii", 1, 1, BindNumberOfFirst<true>},
        {u"space", 1, 1, BindSpace},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
