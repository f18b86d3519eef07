// ByteLog: bytes written one behind the other and read back from any offset. They lie in pieces of
// one size, so that growing copies nothing. Owned by a RowStore; it knows nothing of values.
#pragma once

#include <QtGlobal>
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

    void Append(const void* bytes, quint64 count);
    // Copies at most `count` bytes from `offset` on; how many there were.
    quint64 Read(quint64 offset, void* to, quint64 count) const;
    // Forgets the bytes from `size` on and frees the pieces that only they needed.
    void Truncate(quint64 size);

  private:
    std::vector<std::unique_ptr<char[]>> pieces_;
    quint64 size_ = 0;
};

}  // namespace quarv::ado
