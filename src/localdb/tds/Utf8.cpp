#include "localdb/tds/Utf8.h"

#include "base/CodePage1252.h"

namespace quarv::localdb::tds {

namespace {

constexpr char16_t Replacement = 0xFFFD;

bool Continues(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

struct Units {
    char16_t unit[2];
    int count;
};

// How many continuation bytes the lead asks for, and the smallest character that may use so many.
struct LeadRule {
    int more;
    char32_t least;
};

LeadRule RuleOf(unsigned char lead) {
    if (lead < 0x80) return {0, 0};
    if (lead < 0xE0) return {1, 0x80};
    if (lead < 0xF0) return {2, 0x800};
    return {3, 0x10000};
}

// Takes one character off the front of `text`, which is not empty.
Units TakeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80) return {{static_cast<char16_t>(lead), 0}, 1};
    if (lead < 0xC0) return {{0, 0}, 0};
    const LeadRule rule = RuleOf(lead);
    char32_t character = lead & (0x3Fu >> rule.more);
    int taken = 0;
    for (; taken < rule.more && !text.empty() && Continues(text.front()); ++taken) {
        character = (character << 6) | (static_cast<unsigned char>(text.front()) & 0x3F);
        text.remove_prefix(1);
    }
    const bool wrong = taken < rule.more || character < rule.least || character > 0x10FFFF ||
                       (character >= 0xD800 && character < 0xE000) || lead > 0xF4;
    if (rule.more == 3) {
        if (wrong) return {{Replacement, Replacement}, 2};
        return {{static_cast<char16_t>(0xD7C0 + (character >> 10)),
                 static_cast<char16_t>(0xDC00 + (character & 0x3FF))},
                2};
    }
    return {{wrong ? Replacement : static_cast<char16_t>(character), 0}, 1};
}

// How many of the next eight bytes can be copied as they are: all of them or none.
bool EightAscii(const char* bytes) {
    uint64_t eight;
    std::memcpy(&eight, bytes, sizeof eight);
    return (eight & 0x8080808080808080u) == 0;
}

}  // namespace

size_t Utf16Length(std::string_view utf8) {
    size_t units = 0;
    for (const char c : utf8) {
        units += static_cast<size_t>(!Continues(c)) +
                 static_cast<size_t>(static_cast<unsigned char>(c) >= 0xF0);
    }
    return units;
}

void WriteUtf8AsUtf16(ByteWriter& writer, std::string_view utf8) {
    while (!utf8.empty()) {
        if (utf8.size() >= 8 && writer.Room() >= 16 && EightAscii(utf8.data())) {
            std::byte* out = writer.Next();
            for (int i = 0; i < 8; ++i) {
                out[2 * i] = static_cast<std::byte>(utf8[static_cast<size_t>(i)]);
                out[2 * i + 1] = std::byte{0};
            }
            writer.Advance(16);
            utf8.remove_prefix(8);
            continue;
        }
        const Units units = TakeCharacter(utf8);
        for (int i = 0; i < units.count; ++i) writer.U16(units.unit[i]);
    }
}

void WriteUtf8AsCp1252(ByteWriter& writer, std::string_view utf8) {
    while (!utf8.empty()) {
        if (utf8.size() >= 8 && writer.Room() >= 8 && EightAscii(utf8.data())) {
            std::memcpy(writer.Next(), utf8.data(), 8);
            writer.Advance(8);
            utf8.remove_prefix(8);
            continue;
        }
        const Units units = TakeCharacter(utf8);
        for (int i = 0; i < units.count; ++i) writer.U8(Cp1252Of(units.unit[i]));
    }
}

}  // namespace quarv::localdb::tds
