#include "localdb/tds/ByteWriter.h"

#include <QString>
#include <algorithm>

namespace quarv::localdb::tds {

void ByteWriter::PutInParts(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        if (next_ == end_) MakeRoom();
        const size_t part = std::min(bytes.size(), Room());
        Copy(bytes.data(), part);
        bytes = bytes.subspan(part);
    }
}

void ByteWriter::Utf16(QStringView text) {
    if constexpr (Q_BYTE_ORDER == Q_LITTLE_ENDIAN) {
        Bytes(std::as_bytes(std::span(text.utf16(), static_cast<size_t>(text.size()))));
    } else {
        for (const QChar unit : text) U16(unit.unicode());
    }
}

void ByteWriter::ShortText(QStringView text) {
    text = text.left(0xFF);
    U8(static_cast<uint8_t>(text.size()));
    Utf16(text);
}

void ByteWriter::MediumText(QStringView text) {
    text = text.left(0xFFFF);
    U16(static_cast<uint16_t>(text.size()));
    Utf16(text);
}

void BufferWriter::MakeRoom() {
    const size_t used = static_cast<size_t>(next_ - buffer_.data());
    buffer_.resize(std::max<size_t>(256, 2 * buffer_.size()));
    next_ = buffer_.data() + used;
    end_ = buffer_.data() + buffer_.size();
}

}  // namespace quarv::localdb::tds
