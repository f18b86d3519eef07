// Guid: uniqueidentifier values as 16 bytes in the order in which SQL Server sorts them: the last
// group of digits first, the first group last.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quarv::localdb::engine {

class Guid {
  public:
    static constexpr int Size = 16;
    static constexpr int TextLength = 36;
    // Which byte of the wire's form stands at each place of the sorted form. The wire has the
    // first three groups little-endian, the rest as it is written.
    static constexpr std::array<size_t, Size> WireByte = {10, 11, 12, 13, 14, 15, 8, 9,
                                                          6,  7,  4,  5,  0,  1,  2, 3};

    using Bytes = std::array<char, Size>;

    // Both ways between the two forms; `bytes` has Size bytes.
    static Bytes FromWire(std::string_view bytes);
    static Bytes ToWire(std::string_view sorted);

    // "6F9619FF-8B86-D011-B42D-00C04FC964FF", with or without braces, in any letter case; what
    // stands behind is passed over. Empty where it is none.
    static std::optional<Bytes> Parse(std::string_view text);
    static std::string ToText(std::string_view sorted);
};

inline Guid::Bytes Guid::FromWire(std::string_view bytes) {
    Bytes sorted;
    for (size_t i = 0; i < sorted.size(); ++i) sorted[i] = bytes[WireByte[i]];
    return sorted;
}

inline Guid::Bytes Guid::ToWire(std::string_view sorted) {
    Bytes wire;
    for (size_t i = 0; i < wire.size(); ++i) wire[WireByte[i]] = sorted[i];
    return wire;
}

}  // namespace quarv::localdb::engine
