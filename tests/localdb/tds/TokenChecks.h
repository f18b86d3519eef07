// What every token and request must stand: its bytes as typed by hand, reading them back, and being
// cut at every byte.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "localdb/tds/ByteReader.h"
#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/ProtocolError.h"

namespace quarv::localdb::tds {

// "81 01 00" as bytes; blanks may stand anywhere between pairs.
inline std::vector<std::byte> Hex(std::string_view text) {
    std::vector<std::byte> bytes;
    std::string digits;
    for (const char c : text) {
        if (c == ' ' || c == '\n') continue;
        digits += c;
        if (digits.size() < 2) continue;
        bytes.push_back(static_cast<std::byte>(std::stoul(digits, nullptr, 16)));
        digits.clear();
    }
    return bytes;
}

inline std::string ToHex(std::span<const std::byte> bytes) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::byte b : bytes) {
        if (!text.empty()) text += ' ';
        text += Digits[std::to_integer<int>(b) >> 4];
        text += Digits[std::to_integer<int>(b) & 15];
    }
    return text;
}

template <typename T>
std::string Encoded(const T& token) {
    BufferWriter writer;
    token.Encode(writer);
    return ToHex(writer.Written());
}

inline std::string Written(const std::function<void(ByteWriter&)>& write) {
    BufferWriter writer;
    write(writer);
    return ToHex(writer.Written());
}

// What `read` makes of a value's content, which stands behind its u8 count.
template <typename Read>
auto ReadBack(const char* counted, Read read) {
    const auto bytes = Hex(counted);
    return read(std::span(bytes).subspan(1));
}

// The fault that `read` raises; a test failure where it raises none.
inline Fault FaultOf(const std::function<void()>& read, size_t* position = nullptr) {
    try {
        read();
    } catch (const ProtocolError& error) {
        if (position != nullptr) *position = error.Position();
        return error.What();
    }
    ADD_FAILURE() << "nothing was raised";
    return Fault::OutOfBytes;
}

// `decode` reads from a stream. Cut anywhere, it asks for more, or reports a message cut short, at
// the place of the cut.
inline void ExpectEveryCutIsSeen(std::string_view hex,
                                 const std::function<void(ByteReader&)>& decode) {
    const auto bytes = Hex(hex);
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        SCOPED_TRACE("cut at byte " + std::to_string(cut));
        const auto part = std::span(bytes).first(cut);
        size_t position = 0;
        EXPECT_EQ(FaultOf(
                      [&] {
                          ByteReader reader(part, ByteReader::Ending::More);
                          decode(reader);
                      },
                      &position),
                  Fault::OutOfBytes);
        EXPECT_EQ(position, cut);
        EXPECT_EQ(FaultOf([&] {
                      ByteReader reader(part);
                      decode(reader);
                  }),
                  Fault::Truncated);
    }
}

// The token's bytes are `hex`, both ways, and every cut is seen.
template <typename T>
T ExpectTokenBytes(
    const T& token, std::string_view hex,
    const std::function<T(ByteReader&)>& decode = [](ByteReader& r) { return T::Decode(r); }) {
    EXPECT_EQ(Encoded(token), ToHex(Hex(hex)));
    ExpectEveryCutIsSeen(hex, [&](ByteReader& reader) { decode(reader); });
    const auto bytes = Hex(hex);
    ByteReader reader(bytes);
    T read = decode(reader);
    EXPECT_TRUE(reader.AtEnd());
    EXPECT_EQ(Encoded(read), ToHex(bytes));
    return read;
}

}  // namespace quarv::localdb::tds
