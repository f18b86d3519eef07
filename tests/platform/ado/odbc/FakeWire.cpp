#include "platform/ado/odbc/FakeWire.h"

#include <sys/socket.h>

#include <array>

#include "platform/ado/odbc/Loopback.h"
#include "platform/ado/odbc/TlsSession.h"

namespace quarv::test {

namespace {

constexpr int PacketSize = 4096;

QByteArray ReceiveSome(int fd) {
    std::array<char, PacketSize> bytes{};
    const ssize_t n = recv(fd, bytes.data(), bytes.size(), 0);
    return {bytes.data(), std::max<ssize_t>(n, 0)};
}

}  // namespace

FakeWire::FakeWire(int fd) : fd_(fd) {}

FakeWire::~FakeWire() = default;

std::optional<QByteArray> FakeWire::Receive(int count) {
    return tls_ ? tls_->Receive(count) : ReceivePlain(count);
}

std::optional<QByteArray> FakeWire::ReceivePlain(int count) const {
    QByteArray bytes(count, 0);
    for (int got = 0; got < count;) {
        const ssize_t n = recv(fd_, bytes.data() + got, static_cast<std::size_t>(count - got), 0);
        if (n <= 0) return std::nullopt;
        got += static_cast<int>(n);
    }
    return bytes;
}

std::optional<FakeWire::Message> FakeWire::ReceiveMessage() {
    Message message;
    for (bool last = false; !last;) {
        const auto header = Receive(HeaderSize);
        if (!header) return std::nullopt;
        const int length =
            static_cast<quint8>((*header)[2]) << 8 | static_cast<quint8>((*header)[3]);
        const auto body = Receive(length - HeaderSize);
        if (!body) return std::nullopt;
        message.type = static_cast<quint8>((*header)[0]);
        message.body += *body;
        last = ((*header)[1] & 1) != 0;
    }
    return message;
}

bool FakeWire::Send(const QByteArray& bytes) {
    return tls_ ? tls_->Send(bytes) : SendAll(fd_, bytes);
}

bool FakeWire::SendMessage(const QByteArray& body, bool complete, quint8 type) {
    constexpr int room = PacketSize - HeaderSize;
    QByteArray all;
    qsizetype at = 0;
    do {
        const QByteArray part = body.mid(at, room);
        at += part.size();
        const bool last = complete && at >= body.size();
        all += Header(type, last, static_cast<int>(part.size()) + HeaderSize) + part;
    } while (at < body.size());
    return Send(all);
}

void FakeWire::AwaitEnd() {
    while (!ReceiveSome(fd_).isEmpty()) continue;
}

bool FakeWire::Encrypt() {
    auto tls = std::make_unique<TlsSession>();
    tls->CarryBy([this](const QByteArray& bytes) { return SendMessage(bytes, true, PreLogin); },
                 [this] {
                     const auto message = ReceiveMessage();
                     return message ? message->body : QByteArray();
                 });
    if (!tls->Handshake()) return false;
    tls->CarryBy([this](const QByteArray& bytes) { return SendAll(fd_, bytes); },
                 [this] { return ReceiveSome(fd_); });
    tls_ = std::move(tls);
    return true;
}

void FakeWire::Decrypt() {
    tls_.reset();
}

QByteArray FakeWire::Header(quint8 type, bool last, int length) {
    return QByteArray(1, static_cast<char>(type)) + QByteArray(1, last ? 1 : 0) +
           QByteArray(1, static_cast<char>(length >> 8)) +
           QByteArray(1, static_cast<char>(length)) + QByteArray::fromHex("00330100");
}

}  // namespace quarv::test
