#include "platform/ado/ByteLog.h"

#include <algorithm>

namespace quarv::ado {

void ByteLog::AppendAcross(const void* bytes, quint64 count) {
    const char* from = static_cast<const char*>(bytes);
    while (count > 0) {
        const quint64 within = size_ % PieceSize;
        if (size_ == Capacity()) pieces_.emplace_back(new char[PieceSize]);
        const quint64 part = std::min(count, PieceSize - within);
        std::memcpy(pieces_[size_ / PieceSize].get() + within, from, part);
        size_ += part;
        from += part;
        count -= part;
    }
}

quint64 ByteLog::Read(quint64 offset, void* to, quint64 count) const {
    if (offset >= size_) return 0;
    const quint64 total = std::min(count, size_ - offset);
    char* target = static_cast<char*>(to);
    for (quint64 left = total; left > 0;) {
        const quint64 within = offset % PieceSize;
        const quint64 part = std::min(left, PieceSize - within);
        std::memcpy(target, pieces_[offset / PieceSize].get() + within, part);
        offset += part;
        target += part;
        left -= part;
    }
    return total;
}

quint64 ByteLog::ReadCount(quint64 offset, quint64& count) const {
    count = 0;
    quint64 size = 0;
    for (quint8 byte = 0x80; byte & 0x80 && offset + size < size_ && size < 10; ++size) {
        byte = At(offset + size);
        count |= quint64{byte & 0x7FU} << (7 * size);
    }
    return size;
}

void ByteLog::Truncate(quint64 size) {
    size_ = std::min(size_, size);
    pieces_.resize((size_ + PieceSize - 1) / PieceSize);
}

}  // namespace quarv::ado
