// ByteReader: a bounded cursor over bytes that someone else owns and keeps alive. Integers are
// little-endian unless the name says Big. Whatever the bytes do not hold raises ProtocolError.
#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <span>

#include "localdb/tds/ProtocolError.h"

namespace quarv::localdb::tds {

class ByteReader {
  public:
    // What running out of bytes means: Final: the message is whole, so it is Truncated; More: the
    // rest is still to come, so it is OutOfBytes.
    enum class Ending { Final, More };

    // `origin` is added to every position, for a part read out of a longer message.
    explicit ByteReader(std::span<const std::byte> bytes, Ending ending = Ending::Final,
                        size_t origin = 0)
        : bytes_(bytes), ending_(ending), origin_(origin) {}

    uint8_t U8();
    uint16_t U16();
    uint32_t U32();
    uint64_t U64();
    int32_t I32() { return static_cast<int32_t>(U32()); }
    uint16_t U16Big();
    uint32_t U32Big();

    // The next `count` bytes, as a view into what this reader reads.
    std::span<const std::byte> Bytes(size_t count);
    // UTF-16 text of `units` units, kept as it stands (a lone surrogate included).
    QString Text(size_t units);
    QString ShortText() { return Text(U8()); }    // B_VARCHAR
    QString MediumText() { return Text(U16()); }  // US_VARCHAR
    // The next byte, which stays unread.
    uint8_t Peek() const;

    size_t Position() const { return origin_ + position_; }
    size_t Remaining() const { return bytes_.size() - position_; }
    bool AtEnd() const { return position_ == bytes_.size(); }
    // Raises TrailingBytes unless everything was read.
    void ExpectEnd() const;

    [[noreturn]] void Fail(Fault fault, const QString& detail = {}) const;

  private:
    void Need(size_t count) const;

    std::span<const std::byte> bytes_;
    Ending ending_;
    size_t origin_;
    size_t position_ = 0;
};

// UTF-16LE bytes as text. Raises TextLength, at `position`, for an odd number.
QString TextOfUtf16(std::span<const std::byte> bytes, size_t position = 0);

}  // namespace quarv::localdb::tds
