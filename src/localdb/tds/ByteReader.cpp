#include "localdb/tds/ByteReader.h"

#include <QtEndian>

namespace quarv::localdb::tds {

void ByteReader::Fail(Fault fault, const QString& detail) const {
    throw ProtocolError(fault, Position(), detail);
}

void ByteReader::Need(size_t count) const {
    if (count <= Remaining()) return;
    const Fault fault = ending_ == Ending::Final ? Fault::Truncated : Fault::OutOfBytes;
    throw ProtocolError(fault, origin_ + bytes_.size());
}

std::span<const std::byte> ByteReader::Bytes(size_t count) {
    Need(count);
    const auto part = bytes_.subspan(position_, count);
    position_ += count;
    return part;
}

uint8_t ByteReader::Peek() const {
    Need(1);
    return std::to_integer<uint8_t>(bytes_[position_]);
}

uint8_t ByteReader::U8() {
    return std::to_integer<uint8_t>(Bytes(1)[0]);
}
uint16_t ByteReader::U16() {
    return qFromLittleEndian<quint16>(Bytes(2).data());
}
uint32_t ByteReader::U32() {
    return qFromLittleEndian<quint32>(Bytes(4).data());
}
uint64_t ByteReader::U64() {
    return qFromLittleEndian<quint64>(Bytes(8).data());
}
uint16_t ByteReader::U16Big() {
    return qFromBigEndian<quint16>(Bytes(2).data());
}
uint32_t ByteReader::U32Big() {
    return qFromBigEndian<quint32>(Bytes(4).data());
}

QString ByteReader::Text(size_t units) {
    return TextOfUtf16(Bytes(2 * units), Position());
}

void ByteReader::ExpectEnd() const {
    if (!AtEnd()) Fail(Fault::TrailingBytes);
}

QString TextOfUtf16(std::span<const std::byte> bytes, size_t position) {
    if (bytes.size() % 2 != 0) throw ProtocolError(Fault::TextLength, position);
    QString text(static_cast<qsizetype>(bytes.size() / 2), Qt::Uninitialized);
    if (!text.isEmpty()) qFromLittleEndian<quint16>(bytes.data(), text.size(), text.data());
    return text;
}

}  // namespace quarv::localdb::tds
