#include "WireClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

#include "localdb/tds/Done.h"
#include "localdb/tds/Login7.h"
#include "localdb/tds/PacketHeader.h"
#include "localdb/tds/Prelogin.h"
#include "localdb/tds/SqlBatch.h"

namespace quarv::bench {

namespace {

namespace tds = localdb::tds;

constexpr size_t DoneBytes = 13;

[[noreturn]] void Fail(const char* what) {
    throw std::runtime_error(what);
}

}  // namespace

int ConnectTo(int port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int one = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    if (::connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        Fail("cannot connect");
    }
    return fd;
}

void SendAll(int socket, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) Fail("the connection broke while sending");
        bytes = bytes.subspan(static_cast<size_t>(count));
    }
}

void ReceiveAll(int socket, std::span<std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::recv(socket, bytes.data(), bytes.size(), 0);
        if (count <= 0) Fail("the connection broke while receiving");
        bytes = bytes.subspan(static_cast<size_t>(count));
    }
}

WireClient::WireClient(int port, const QString& database) : socket_(ConnectTo(port)) {
    tds::BufferWriter prelogin;
    tds::Prelogin{}.Encode(prelogin);
    Send(static_cast<int>(tds::PacketType::Prelogin), prelogin.Written());
    Receive();
    tds::Login7 login;
    login.userName = login.password = QStringLiteral("bench");
    login.database = database;
    tds::BufferWriter record;
    login.Encode(record);
    Send(static_cast<int>(tds::PacketType::Login7), record.Written());
    Receive();
}

WireClient::~WireClient() {
    ::close(socket_);
}

void WireClient::Run(const QString& sql) {
    tds::SqlBatch batch;
    batch.sql = sql;
    tds::BufferWriter writer;
    batch.Encode(writer);
    Send(static_cast<int>(tds::PacketType::Batch), writer.Written());
    Receive();
    // Every reply ends with a token of this size, whose status tells of errors.
    if (reply_.size() < DoneBytes) Fail("a reply without an end");
    const std::span<const std::byte> reply(reply_);
    tds::ByteReader end(reply.last(DoneBytes));
    if ((tds::Done::Decode(end).status & tds::Done::Error) != 0) {
        Fail("the server refused a statement");
    }
}

void WireClient::Send(int type, std::span<const std::byte> body) {
    tds::PacketHeader header;
    header.type = static_cast<tds::PacketType>(type);
    header.status = tds::packet_status::EndOfMessage;
    header.length = static_cast<uint16_t>(body.size() + tds::PacketHeader::Size);
    std::vector<std::byte> packet(tds::PacketHeader::Size);
    header.Encode(
        std::span<std::byte, tds::PacketHeader::Size>(packet.data(), tds::PacketHeader::Size));
    packet.insert(packet.end(), body.begin(), body.end());
    SendAll(socket_, packet);
}

void WireClient::Receive() {
    reply_.clear();
    for (bool last = false; !last;) {
        std::array<std::byte, tds::PacketHeader::Size> bytes;
        ReceiveAll(socket_, bytes);
        const auto header = tds::PacketHeader::Decode(bytes, tds::PacketHeader::LargestPacket);
        const size_t before = reply_.size();
        reply_.resize(before + header.length - tds::PacketHeader::Size);
        ReceiveAll(socket_, std::span(reply_).subspan(before));
        last = header.EndsMessage();
    }
}

}  // namespace quarv::bench
