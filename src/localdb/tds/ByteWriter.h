// ByteWriter: where encoders put their bytes. Concrete writers give it room: BufferWriter a growing
// buffer, PacketWriter the packet being filled. The common case, enough room, is inline and makes
// no call. Integers are little-endian unless the name says Big.
#pragma once

#include <QStringView>
#include <QtEndian>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace quarv::localdb::tds {

class ByteWriter {
  public:
    ByteWriter() = default;
    ByteWriter(const ByteWriter&) = delete;
    ByteWriter& operator=(const ByteWriter&) = delete;
    virtual ~ByteWriter() = default;

    void U8(uint8_t value) {
        if (next_ == end_) MakeRoom();
        *next_++ = std::byte{value};
    }
    void U16(uint16_t value) { Put(qToLittleEndian(value)); }
    void U32(uint32_t value) { Put(qToLittleEndian(value)); }
    void U64(uint64_t value) { Put(qToLittleEndian(value)); }
    void U16Big(uint16_t value) { Put(qToBigEndian(value)); }
    void U32Big(uint32_t value) { Put(qToBigEndian(value)); }

    void Bytes(std::span<const std::byte> bytes) {
        if (bytes.size() <= Room()) {
            Copy(bytes.data(), bytes.size());
        } else {
            PutInParts(bytes);
        }
    }
    void Utf16(QStringView text);
    // B_VARCHAR and US_VARCHAR. A text that is too long for the count is cut.
    void ShortText(QStringView text);
    void MediumText(QStringView text);

    // Bytes that fit without a further call; for encoders that fill `Next()` themselves.
    size_t Room() const { return static_cast<size_t>(end_ - next_); }
    std::byte* Next() { return next_; }
    void Advance(size_t count) { next_ += count; }

  protected:
    // Called when the room is used up. Afterwards `next_` < `end_`.
    virtual void MakeRoom() = 0;

    std::byte* next_ = nullptr;
    std::byte* end_ = nullptr;

  private:
    template <typename T>
    void Put(T value) {
        if (sizeof(T) <= Room()) {
            std::memcpy(next_, &value, sizeof(T));
            next_ += sizeof(T);
        } else {
            PutInParts(std::as_bytes(std::span(&value, 1)));
        }
    }
    void Copy(const std::byte* from, size_t count) {
        if (count == 0) return;
        std::memcpy(next_, from, count);
        next_ += count;
    }
    void PutInParts(std::span<const std::byte> bytes);
};

// Keeps everything that was written.
class BufferWriter final : public ByteWriter {
  public:
    std::span<const std::byte> Written() const {
        return {buffer_.data(), static_cast<size_t>(next_ - buffer_.data())};
    }

  protected:
    void MakeRoom() override;

  private:
    std::vector<std::byte> buffer_;
};

}  // namespace quarv::localdb::tds
