#include "platform/ado/odbc/FakeWire.h"

#include "platform/ado/odbc/Loopback.h"
#include "platform/ado/odbc/TlsSession.h"

namespace quarv::test {

namespace {

constexpr int PacketSize = 4096;

}  // namespace

FakeWire::FakeWire(int fd) : fd_(fd) {}

FakeWire::~FakeWire() = default;

std::optional<ClientMessage> FakeWire::ReceiveMessage() {
    for (;;) {
        if (auto message = messages_.Take()) return message;
        const QByteArray bytes = tls_ ? tls_->ReceiveSome() : ReceiveSome(fd_);
        if (bytes.isEmpty()) return std::nullopt;
        messages_.Append(bytes);
    }
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
