#include "localdb/engine/Guid.h"

namespace quarv::localdb::engine {

namespace {

// Which byte of the wire's form each pair of digits is, in the order of writing.
constexpr std::array<size_t, Guid::Size> WrittenByte = {3, 2, 1,  0,  5,  4,  7,  6,
                                                        8, 9, 10, 11, 12, 13, 14, 15};

int DigitOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool HyphenBefore(size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

}  // namespace

std::optional<Guid::Bytes> Guid::Parse(std::string_view text) {
    const bool braced = !text.empty() && text.front() == '{';
    if (braced) text.remove_prefix(1);
    if (text.size() < TextLength) return std::nullopt;
    if (braced && (text.size() == TextLength || text[TextLength] != '}')) return std::nullopt;
    Bytes wire;
    size_t at = 0;
    for (size_t i = 0; i < wire.size(); ++i) {
        if (HyphenBefore(i) && text[at++] != '-') return std::nullopt;
        const int high = DigitOf(text[at]), low = DigitOf(text[at + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        wire[WrittenByte[i]] = static_cast<char>(high << 4 | low);
        at += 2;
    }
    return FromWire({wire.data(), wire.size()});
}

std::string Guid::ToText(std::string_view sorted) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    const Bytes wire = ToWire(sorted);
    std::string text;
    text.reserve(TextLength);
    for (size_t i = 0; i < wire.size(); ++i) {
        if (HyphenBefore(i)) text += '-';
        const auto byte = static_cast<unsigned char>(wire[WrittenByte[i]]);
        text += Digits[byte >> 4];
        text += Digits[byte & 15];
    }
    return text;
}

}  // namespace quarv::localdb::engine
