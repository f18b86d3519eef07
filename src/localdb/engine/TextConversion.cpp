// Conversions to the character kinds and xml.
#include <algorithm>
#include <array>

#include "base/CodePage1252.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/ConversionJob.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/Guid.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TextNumber.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

using Job = ConversionJob;
using conversion::Overflow;
using conversion::SourceName;

bool InCodePage(char32_t code) {
    return code < 0x80 || (code < 0x10000 && Cp1252Of(static_cast<char16_t>(code)) != uint8_t{'?'});
}

// Cuts to the length of the type, fills fixed lengths up with blanks.
SqlValue FitText(std::string_view text, const SqlType& to, TextArena& arena) {
    if (to.length == SqlType::Max) return SqlValue::Text(text);
    const auto length = static_cast<size_t>(to.length);
    text = TakeUtf16(text, length);
    if (!IsFixedLength(to.kind)) return SqlValue::Text(text);
    const size_t have = Utf16Length(text);
    if (have == length) return SqlValue::Text(text);
    char* padded = arena.Allocate(text.size() + length - have);
    std::copy(text.begin(), text.end(), padded);
    std::fill_n(padded + text.size(), length - have, ' ');
    return SqlValue::Text({padded, text.size() + length - have});
}

std::string MomentText(const Job& job) {
    const int style =
        job.style == Conversion::NoStyle ? Moment::PlainStyle(job.from.kind) : job.style;
    const Moment moment = Moment::Load(job.from.kind, job.value.integer, job.value.offset);
    const std::optional<std::string> text = moment.ToText(job.from, style);
    if (!text) throw SqlError(281, {QString::number(style), job.from.Name()});
    return *text;
}

std::string PlainText(const Job& job) {
    switch (ClassOf(job.from)) {
        case TypeClass::Integer:
            return std::to_string(job.value.integer);
        case TypeClass::Decimal:
            return DecimalMath::ToText(job.value.wide, job.from.scale);
        case TypeClass::Money:
            return TextNumber::MoneyText(job.value.integer, job.style);
        case TypeClass::Real:
            return TextNumber::RealText(job.value.real, job.from.kind, job.style);
        case TypeClass::Binary:
            return conversion::TextOfBytes(job);
        case TypeClass::Guid:
            return Guid::ToText(job.value.text);
        default:
            return MomentText(job);
    }
}

// What happens to a text that is longer than its type.
[[noreturn]] void RaiseTooLong(const Job& job) {
    if (ClassOf(job.from) == TypeClass::Guid) throw SqlError(8170);
    if (ClassOf(job.from) == TypeClass::Money) throw SqlError(234, {job.to.Name()});
    const bool decimal = ClassOf(job.from) == TypeClass::Decimal;
    Overflow(decimal ? SourceName(job.from) : QStringLiteral("expression"), job.to);
}

}  // namespace

std::string_view Conversion::ToCodePage(std::string_view text, TextArena& arena) {
    size_t at = 0;
    while (at < text.size()) {
        size_t next = at;
        if (!InCodePage(NextCodePoint(text, next))) break;
        at = next;
    }
    if (at == text.size()) return text;
    char* out = arena.Allocate(text.size());
    size_t size = at;
    std::copy_n(text.begin(), at, out);
    while (at < text.size()) {
        const size_t begin = at;
        const char32_t code = NextCodePoint(text, at);
        if (InCodePage(code)) {
            std::copy_n(text.begin() + static_cast<ptrdiff_t>(begin), at - begin, out + size);
            size += at - begin;
        } else {
            // Each half of a pair counts.
            for (int i = code >= 0x10000 ? 2 : 1; i > 0; --i) out[size++] = '?';
        }
    }
    return {out, size};
}

SqlValue conversion::ToText(const Job& job) {
    if (ClassOf(job.from) == TypeClass::Text) {
        const bool narrows = IsUnicode(job.from.kind) && !IsUnicode(job.to.kind);
        const std::string_view text =
            narrows ? Conversion::ToCodePage(job.value.text, job.arena) : job.value.text;
        return FitText(text, job.to, job.arena);
    }
    const TypeClass from = ClassOf(job.from);
    const std::string text = PlainText(job);
    const bool cut = from == TypeClass::Moment || from == TypeClass::Binary;
    const bool fits =
        job.to.length == SqlType::Max || text.size() <= static_cast<size_t>(job.to.length);
    if (!fits && !cut) {
        // An int that does not fit into varchar shows as one asterisk; everything else raises.
        const bool star = from == TypeClass::Integer && job.from.kind != TypeKind::BigInt &&
                          !IsUnicode(job.to.kind);
        if (star) return FitText("*", job.to, job.arena);
        RaiseTooLong(job);
    }
    return FitText(job.arena.Keep(text), job.to, job.arena);
}

}  // namespace quarv::localdb::engine
