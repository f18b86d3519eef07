#include "localdb/engine/Utf8.h"

#include <algorithm>

namespace quarv::localdb::engine {

namespace {

bool IsAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
}

}  // namespace

std::string ToUtf8(QStringView text) {
    std::string bytes;
    if (IsAscii(text)) {
        bytes.resize(static_cast<size_t>(text.size()));
        std::transform(text.begin(), text.end(), bytes.begin(),
                       [](QChar unit) { return static_cast<char>(unit.unicode()); });
        return bytes;
    }
    bytes.reserve(static_cast<size_t>(text.size()) + 8);
    char buffer[4];
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t code = text[i].unicode();
        const bool pair =
            QChar::isHighSurrogate(code) && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair) code = QChar::surrogateToUcs4(static_cast<char16_t>(code), text[++i].unicode());
        bytes.append(buffer, PutCodePoint(code, buffer));
    }
    return bytes;
}

QString FromUtf8(std::string_view bytes) {
    // Empty, and not the null string.
    if (bytes.empty()) return QStringLiteral("");
    const bool ascii = std::all_of(bytes.begin(), bytes.end(),
                                   [](char byte) { return static_cast<signed char>(byte) >= 0; });
    if (ascii) return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (size_t at = 0; at < bytes.size();) {
        const char32_t code = NextCodePoint(bytes, at);
        if (code >= 0x10000) {
            text += QChar(QChar::highSurrogate(code));
            text += QChar(QChar::lowSurrogate(code));
        } else {
            text += QChar(static_cast<char16_t>(code));
        }
    }
    return text;
}

char32_t NextCodePoint(std::string_view bytes, size_t& at) {
    const auto byte = [&bytes](size_t i) -> unsigned char {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
    };
    const auto follows = [&byte](size_t i) { return (byte(i) & 0xC0) == 0x80; };
    const unsigned char first = byte(at);
    if (first >= 0xF0 && first < 0xF8 && follows(at + 1) && follows(at + 2) && follows(at + 3)) {
        const char32_t code = static_cast<char32_t>((first & 7) << 18 | (byte(at + 1) & 63) << 12 |
                                                    (byte(at + 2) & 63) << 6 | (byte(at + 3) & 63));
        at += 4;
        return code <= 0x10FFFF ? code : 0xFFFD;
    }
    if (first >= 0xE0 && first < 0xF0 && follows(at + 1) && follows(at + 2)) {
        const char32_t code = static_cast<char32_t>((first & 15) << 12 | (byte(at + 1) & 63) << 6 |
                                                    (byte(at + 2) & 63));
        at += 3;
        return code;
    }
    if (first >= 0xC0 && first < 0xE0 && follows(at + 1)) {
        const char32_t code = static_cast<char32_t>((first & 31) << 6 | (byte(at + 1) & 63));
        at += 2;
        return code;
    }
    ++at;
    return first;
}

size_t PutCodePoint(char32_t code, char* out) {
    if (code < 0x80) {
        out[0] = static_cast<char>(code);
        return 1;
    }
    if (code < 0x800) {
        out[0] = static_cast<char>(0xC0 | code >> 6);
        out[1] = static_cast<char>(0x80 | (code & 63));
        return 2;
    }
    if (code < 0x10000) {
        out[0] = static_cast<char>(0xE0 | code >> 12);
        out[1] = static_cast<char>(0x80 | (code >> 6 & 63));
        out[2] = static_cast<char>(0x80 | (code & 63));
        return 3;
    }
    out[0] = static_cast<char>(0xF0 | code >> 18);
    out[1] = static_cast<char>(0x80 | (code >> 12 & 63));
    out[2] = static_cast<char>(0x80 | (code >> 6 & 63));
    out[3] = static_cast<char>(0x80 | (code & 63));
    return 4;
}

size_t Utf16Length(std::string_view bytes) {
    size_t units = 0;
    for (const char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        if ((b & 0xC0) != 0x80) units += b >= 0xF0 ? 2 : 1;
    }
    return units;
}

size_t CharacterCount(std::string_view bytes) {
    size_t count = 0;
    for (const char byte : bytes) count += (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    return count;
}

std::string_view TakeUtf16(std::string_view bytes, size_t units) {
    if (bytes.size() <= units) return bytes;
    size_t at = 0;
    while (at < bytes.size()) {
        size_t next = at;
        const size_t taken = NextCodePoint(bytes, next) >= 0x10000 ? 2 : 1;
        if (taken > units) break;
        units -= taken;
        at = next;
    }
    return bytes.substr(0, at);
}

std::string_view TakeBytes(std::string_view bytes, size_t size) {
    if (bytes.size() <= size) return bytes;
    while (size > 0 && (static_cast<unsigned char>(bytes[size]) & 0xC0) == 0x80) --size;
    return bytes.substr(0, size);
}

size_t BytesOfCharacters(std::string_view bytes, size_t characters) {
    size_t at = 0;
    while (at < bytes.size() && characters-- > 0) NextCodePoint(bytes, at);
    return at;
}

std::string_view WithoutTrailingBlanks(std::string_view bytes) {
    while (!bytes.empty() && bytes.back() == ' ') bytes.remove_suffix(1);
    return bytes;
}

}  // namespace quarv::localdb::engine
