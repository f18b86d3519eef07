#include "base/CodePage1252.h"

#include <algorithm>
#include <array>

namespace quarv {

namespace {

// The characters of bytes 80 to 9F; everything else equals Latin-1.
constexpr std::array<char16_t, 32> Upper{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

uint8_t Cp1252Of(char16_t unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<uint8_t>(unit);
    const auto* found = std::find(Upper.begin(), Upper.end(), unit);
    return found == Upper.end() ? uint8_t{'?'}
                                : static_cast<uint8_t>(0x80 + (found - Upper.begin()));
}

QString TextOfCp1252(std::span<const std::byte> bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (const std::byte b : bytes) {
        const auto code = std::to_integer<uint8_t>(b);
        *out++ = QChar(code >= 0x80 && code < 0xA0 ? Upper[code - 0x80] : char16_t{code});
    }
    return text;
}

}  // namespace quarv
