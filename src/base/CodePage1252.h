// Windows code page 1252, the character set of (var)char and text under the collation that this
// server announces. The five bytes that the code page leaves open stand for the C1 controls of the
// same number, as Windows maps them.
#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quarv {

// "?" for what the code page lacks.
uint8_t Cp1252Of(char16_t unit);

QString TextOfCp1252(std::span<const std::byte> bytes);

}  // namespace quarv
