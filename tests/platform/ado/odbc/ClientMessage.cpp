#include "platform/ado/odbc/ClientMessage.h"

#include <algorithm>

#include <utility>

namespace quarv::test {

namespace {

constexpr int HeaderSize = 8;
constexpr char LastPacket = 1;  // "Packet Header", Status: end of message

int ByteAt(const QByteArray& bytes, qsizetype at) {
    return at < bytes.size() ? static_cast<quint8>(bytes[at]) : 0;
}

int ShortAt(const QByteArray& bytes, qsizetype at) {
    return ByteAt(bytes, at) | ByteAt(bytes, at + 1) << 8;
}

QString TextAt(const QByteArray& bytes, qsizetype at, qsizetype units) {
    const QByteArray text = bytes.mid(at, units * 2);
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(text.constData()), text.size() / 2);
}

}  // namespace

// Behind the headers that every request begins with ("ALL_HEADERS").
QString ClientMessage::Text() const {
    const qsizetype start = ShortAt(body, 0);
    if (type == Batch) return TextAt(body, start, (body.size() - start) / 2);
    if (type == Call) return TextAt(body, start + 2, ShortAt(body, start));
    return {};
}

std::optional<ClientMessage> ClientMessages::Take() {
    while (!complete_)
        if (!TakePacket()) return std::nullopt;
    complete_ = false;
    return std::exchange(building_, {});
}

bool ClientMessages::TakePacket() {
    const int length = ByteAt(bytes_, 2) << 8 | ByteAt(bytes_, 3);
    if (bytes_.size() < HeaderSize || bytes_.size() < length) return false;
    building_.type = static_cast<quint8>(bytes_[0]);
    building_.body += bytes_.mid(HeaderSize, length - HeaderSize);
    complete_ = (bytes_[1] & LastPacket) != 0;
    bytes_.remove(0, std::max(length, HeaderSize));
    return true;
}

}  // namespace quarv::test
