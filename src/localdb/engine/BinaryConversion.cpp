// Conversions to binary, varbinary, image, rowversion and uniqueidentifier, and from their bytes.
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "base/CodePage1252.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/ConversionJob.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/Guid.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

using Job = ConversionJob;

constexpr int HexWithMark = 1, HexWithout = 2;
constexpr char Digits[] = "0123456789ABCDEF";

[[noreturn]] void Fail(const Job& job) {
    throw SqlError(8114, {job.from.Name(), conversion::SourceName(job.to)});
}

void CheckStyle(const Job& job) {
    if (job.style >= Conversion::NoStyle && job.style <= HexWithout) return;
    throw SqlError(9809, {QString::number(job.style), job.from.Name(), job.to.Name()});
}

std::string BigEndian(uint64_t number, size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = size; i > 0; number >>= 8) bytes[--i] = static_cast<char>(number & 0xFF);
    return bytes;
}

// "0x0AFF" in style 1, "0AFF" in style 2.
std::string BytesOfHex(const Job& job) {
    std::string_view text = job.value.text;
    if (job.style == HexWithMark) {
        if (text.size() < 2 || text[0] != '0' || (text[1] | 0x20) != 'x') Fail(job);
        text.remove_prefix(2);
    }
    if (text.size() % 2 != 0) Fail(job);
    const std::optional<std::string> bytes = Conversion::BytesOfHex(text);
    if (!bytes) Fail(job);
    return *bytes;
}

// Precision, scale, a zero, the sign, then the digits from their least byte, four at a time.
std::string BytesOfDecimal(const Job& job) {
    const Int128 value = job.value.wide;
    auto magnitude = value < 0 ? -static_cast<UInt128>(value) : static_cast<UInt128>(value);
    std::string bytes = {static_cast<char>(job.from.precision), static_cast<char>(job.from.scale),
                         '\0', static_cast<char>(value >= 0)};
    const int size = ByteLength(job.from) - 1;
    for (int i = 0; i < size; ++i, magnitude >>= 8) bytes += static_cast<char>(magnitude & 0xFF);
    return bytes;
}

std::string BytesOfReal(const Job& job) {
    if (job.from.kind == TypeKind::Real) {
        return BigEndian(std::bit_cast<uint32_t>(static_cast<float>(job.value.real)), 4);
    }
    return BigEndian(std::bit_cast<uint64_t>(job.value.real), 8);
}

std::string PlainBytes(const Job& job) {
    switch (ClassOf(job.from)) {
        case TypeClass::Integer:
        case TypeClass::Money:
            return BigEndian(static_cast<uint64_t>(job.value.integer),
                             FactsOf(job.from.kind).bytes);
        case TypeClass::Decimal:
            return BytesOfDecimal(job);
        case TypeClass::Real:
            return BytesOfReal(job);
        case TypeClass::Text:
            return conversion::BytesOfText(job);
        case TypeClass::Guid: {
            const Guid::Bytes wire = Guid::ToWire(job.value.text);
            return {wire.data(), wire.size()};
        }
        case TypeClass::Moment:
            return conversion::BytesOfMoment(job.value, job.from);
        default:
            return std::string(job.value.text);
    }
}

// Numbers keep their last bytes and are filled up in front; everything else keeps its first.
SqlValue FitBytes(std::string_view bytes, const Job& job) {
    const int length = job.to.kind == TypeKind::RowVersion ? 8 : job.to.length;
    if (length == SqlType::Max) return SqlValue::Bytes(bytes);
    const auto limit = static_cast<size_t>(length);
    const bool number = IsNumber(job.from);
    if (bytes.size() > limit) {
        bytes = number ? bytes.substr(bytes.size() - limit) : bytes.substr(0, limit);
    }
    if (bytes.size() == limit || !IsFixedLength(job.to.kind)) return SqlValue::Bytes(bytes);
    char* padded = job.arena.Allocate(limit);
    std::fill_n(padded, limit, '\0');
    std::copy(bytes.begin(), bytes.end(), padded + (number ? limit - bytes.size() : 0));
    return SqlValue::Bytes({padded, limit});
}

int DigitOf(char c) {
    const char* found = static_cast<const char*>(
        std::memchr(Digits, c >= 'a' && c <= 'f' ? c - 'a' + 'A' : c, sizeof Digits - 1));
    return found ? static_cast<int>(found - Digits) : -1;
}

}  // namespace

std::optional<std::string> Conversion::BytesOfHex(std::string_view digits) {
    std::string bytes;
    bytes.reserve(digits.size() / 2 + 1);
    size_t at = 0;
    if (digits.size() % 2 != 0) {
        const int only = DigitOf(digits[at++]);
        if (only < 0) return std::nullopt;
        bytes += static_cast<char>(only);
    }
    for (; at < digits.size(); at += 2) {
        const int high = DigitOf(digits[at]), low = DigitOf(digits[at + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes += static_cast<char>(high << 4 | low);
    }
    return bytes;
}

std::string conversion::BytesOfText(const Job& job) {
    CheckStyle(job);
    if (job.style > 0) return ::quarv::localdb::engine::BytesOfHex(job);
    const QString text = FromUtf8(job.value.text);
    std::string bytes;
    for (const QChar unit : text) {
        if (IsUnicode(job.from.kind)) {
            bytes += static_cast<char>(unit.unicode() & 0xFF);
            bytes += static_cast<char>(unit.unicode() >> 8);
        } else {
            bytes += static_cast<char>(Cp1252Of(unit.unicode()));
        }
    }
    return bytes;
}

std::string conversion::TextOfBytes(const Job& job) {
    CheckStyle(job);
    const std::string_view bytes = job.value.text;
    if (job.style > 0) {
        std::string text = job.style == HexWithMark ? "0x" : "";
        for (const char c : bytes) {
            const auto byte = static_cast<unsigned char>(c);
            text += Digits[byte >> 4];
            text += Digits[byte & 15];
        }
        return text;
    }
    if (!IsUnicode(job.to.kind)) {
        return ToUtf8(TextOfCp1252(std::as_bytes(std::span(bytes.data(), bytes.size()))));
    }
    QString units;
    for (size_t i = 0; i < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
        units += QChar(static_cast<char16_t>(high << 8 | low));
    }
    return ToUtf8(units);
}

int64_t conversion::IntegerOfBytes(std::string_view bytes, size_t size) {
    if (bytes.size() > size) bytes.remove_prefix(bytes.size() - size);
    uint64_t number = 0;
    for (const char c : bytes) number = number << 8 | static_cast<unsigned char>(c);
    switch (size) {
        case 2:
            return static_cast<int16_t>(number);
        case 4:
            return static_cast<int32_t>(number);
        default:
            return static_cast<int64_t>(number);
    }
}

Int128 conversion::DecimalOfBytes(const Job& job, int& scale) {
    const std::string_view bytes = job.value.text;
    if (bytes.size() < 5 || bytes.size() > 20) Fail(job);
    const auto precision = static_cast<unsigned char>(bytes[0]);
    scale = static_cast<unsigned char>(bytes[1]);
    if (precision < 1 || precision > 38 || scale > precision) Fail(job);
    UInt128 magnitude = 0;
    for (size_t i = bytes.size(); i > 4; --i) {
        magnitude = magnitude << 8 | static_cast<unsigned char>(bytes[i - 1]);
    }
    if (magnitude >= static_cast<UInt128>(DecimalMath::PowerOfTen(38))) Fail(job);
    const auto value = static_cast<Int128>(magnitude);
    return bytes[3] == 0 ? -value : value;
}

SqlValue conversion::ToBinary(const Job& job) {
    if (ClassOf(job.from) == TypeClass::Binary) return FitBytes(job.value.text, job);
    return FitBytes(job.arena.Keep(PlainBytes(job)), job);
}

SqlValue conversion::ToGuid(const Job& job) {
    std::optional<Guid::Bytes> bytes;
    if (ClassOf(job.from) == TypeClass::Text) {
        bytes = Guid::Parse(job.value.text);
        if (!bytes) throw SqlError(8169);
    } else {
        std::array<char, Guid::Size> wire{};
        std::copy_n(job.value.text.begin(), std::min(job.value.text.size(), wire.size()),
                    wire.begin());
        bytes = Guid::FromWire({wire.data(), wire.size()});
    }
    return SqlValue::Bytes(job.arena.Keep({bytes->data(), bytes->size()}));
}

}  // namespace quarv::localdb::engine
