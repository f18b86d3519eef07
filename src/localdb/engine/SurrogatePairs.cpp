#include "localdb/engine/SurrogatePairs.h"

#include <QChar>
#include <algorithm>

#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

constexpr unsigned char FirstOfHalf = 0xED;

unsigned char ByteAt(std::string_view bytes, size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

// Whether a high half stands at `at` and a low one behind it.
bool IsSplitPair(std::string_view bytes, size_t at) {
    return ByteAt(bytes, at) == FirstOfHalf && (ByteAt(bytes, at + 1) & 0xF0) == 0xA0 &&
           ByteAt(bytes, at + 3) == FirstOfHalf && (ByteAt(bytes, at + 4) & 0xF0) == 0xB0 &&
           at + 6 <= bytes.size();
}

// The place of the first split pair; the size where there is none.
size_t FindSplitPair(std::string_view bytes, size_t at) {
    while (true) {
        at = bytes.find(static_cast<char>(FirstOfHalf), at);
        if (at == std::string_view::npos) return bytes.size();
        if (IsSplitPair(bytes, at)) return at;
        ++at;
    }
}

// Writes into room for one and a half times the text; returns the size.
size_t Split(std::string_view bytes, char* out) {
    size_t size = 0;
    for (size_t at = 0; at < bytes.size();) {
        const size_t from = at;
        const char32_t code = NextCodePoint(bytes, at);
        if (code < 0x10000) {
            size += bytes.copy(out + size, at - from, from);
        } else {
            size += PutCodePoint(QChar::highSurrogate(code), out + size);
            size += PutCodePoint(QChar::lowSurrogate(code), out + size);
        }
    }
    return size;
}

// Writes into room for the text, which may be the text's own; returns the size.
size_t Join(std::string_view bytes, char* out) {
    size_t size = 0;
    for (size_t at = 0; at < bytes.size();) {
        const size_t next = FindSplitPair(bytes, at);
        std::copy(bytes.begin() + static_cast<ptrdiff_t>(at),
                  bytes.begin() + static_cast<ptrdiff_t>(next), out + size);
        size += next - at;
        at = next;
        if (at == bytes.size()) break;
        const auto high = static_cast<char16_t>(NextCodePoint(bytes, at));
        const auto low = static_cast<char16_t>(NextCodePoint(bytes, at));
        size += PutCodePoint(QChar::surrogateToUcs4(high, low), out + size);
    }
    return size;
}

}  // namespace

bool HasPairs(std::string_view bytes) {
    return std::any_of(bytes.begin(), bytes.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) >= 0xF0; });
}

std::string_view SplitPairs(std::string_view bytes, TextArena& arena) {
    if (!HasPairs(bytes)) return bytes;
    char* out = arena.Allocate(bytes.size() + bytes.size() / 2 + 3);
    return {out, Split(bytes, out)};
}

std::string SplitPairs(std::string_view bytes) {
    std::string out(bytes.size() + bytes.size() / 2 + 3, '\0');
    out.resize(Split(bytes, out.data()));
    return out;
}

std::string_view JoinPairs(std::string_view bytes, TextArena& arena) {
    if (FindSplitPair(bytes, 0) == bytes.size()) return bytes;
    char* out = arena.Allocate(bytes.size());
    return {out, Join(bytes, out)};
}

std::string JoinPairs(std::string text) {
    if (FindSplitPair(text, 0) != text.size()) text.resize(Join(text, text.data()));
    return text;
}

}  // namespace quarv::localdb::engine
