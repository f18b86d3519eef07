// ByteLog: bytes written one behind the other and read back from any offset. They lie in pieces of
// one size, so that growing copies nothing. Owned by a RowStore; it knows nothing of values.
#pragma once

#include <QtGlobal>
#include <cstring>
#include <memory>
#include <vector>

namespace quarv::ado {

class ByteLog {
  public:
    // In bytes.
    static constexpr quint64 PieceSize = 64 * 1024;

    // Bytes written so far.
    quint64 Size() const { return size_; }
    // Bytes of memory taken.
    quint64 Capacity() const { return pieces_.size() * PieceSize; }

    void Append(const void* bytes, quint64 count) {
        const quint64 within = size_ % PieceSize;
        if (within == 0 || count > PieceSize - within) return AppendAcross(bytes, count);
        std::memcpy(pieces_.back().get() + within, bytes, count);
        size_ += count;
    }
    void AppendByte(quint8 byte) { Append(&byte, 1); }
    // Seven bits a byte, the lowest first: small counts take one byte.
    void AppendCount(quint64 count) {
        for (; count > 0x7F; count >>= 7) AppendByte(static_cast<quint8>(count | 0x80));
        AppendByte(static_cast<quint8>(count));
    }
    // Copies at most `count` bytes from `offset` on; how many there were.
    quint64 Read(quint64 offset, void* to, quint64 count) const;
    // The byte at `offset`, which must lie before the end.
    quint8 At(quint64 offset) const {
        return static_cast<quint8>(pieces_[offset / PieceSize][offset % PieceSize]);
    }
    // Reads what AppendCount wrote; how many bytes that were.
    quint64 ReadCount(quint64 offset, quint64& count) const;
    // Forgets the bytes from `size` on and frees the pieces that only they needed.
    void Truncate(quint64 size);

  private:
    void AppendAcross(const void* bytes, quint64 count);

    std::vector<std::unique_ptr<char[]>> pieces_;
    quint64 size_ = 0;
};

}  // namespace quarv::ado
