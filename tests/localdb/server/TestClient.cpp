#include "TestClient.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>

#include "localdb/tds/Order.h"
#include "localdb/tds/ReturnStatus.h"
#include "localdb/tds/SqlBatch.h"

namespace quarv::localdb::server {

namespace {

constexpr int PatienceMs = 10'000;

using tds::Token;

void TakeToken(tds::ByteReader& reader, Reply& reply) {
    const uint8_t token = reader.Peek();
    const bool anotherRow = !reply.tokens.empty() && (token == 0xD1 || token == 0xD2) &&
                            (reply.tokens.back() == 0xD1 || reply.tokens.back() == 0xD2);
    if (!anotherRow) reply.tokens.push_back(token);
    switch (static_cast<Token>(token)) {
        case Token::ColMetadata:
            reply.metadata = tds::ColMetadata::Decode(reader);
            break;
        case Token::Row:
        case Token::NbcRow:
            reply.rows.push_back(tds::Row::Decode(reader, reply.metadata));
            break;
        case Token::Done:
        case Token::DoneProc:
        case Token::DoneInProc:
            reply.dones.push_back(tds::Done::Decode(reader));
            break;
        case Token::Error:
        case Token::Info:
            reply.messages.push_back(tds::ServerMessage::Decode(reader));
            break;
        case Token::EnvChange:
            reply.changes.push_back(tds::EnvChange::Decode(reader));
            break;
        case Token::LoginAck:
            reply.ack = tds::LoginAck::Decode(reader);
            break;
        case Token::ReturnStatus:
            reply.returnStatus = tds::ReturnStatus::Decode(reader).value;
            break;
        case Token::ReturnValue:
            reply.values.push_back(tds::ReturnValue::Decode(reader));
            break;
        case Token::Order:
            tds::Order::Decode(reader);
            break;
        default:
            reader.Fail(tds::Fault::UnexpectedToken);
    }
}

}  // namespace

bool Reply::Has(int number) const {
    return std::any_of(messages.begin(), messages.end(),
                       [number](const auto& m) { return m.number == number; });
}

TestClient::TestClient(uint16_t port) {
    UniqueFd fd(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ADD_FAILURE() << "cannot connect";
    }
    socket_ = Socket(std::move(fd));
}

void TestClient::SendBytes(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        size_t count = 0;
        const Socket::Result result = socket_.Write(bytes, count);
        if (result == Socket::Result::Ended) return;
        if (result == Socket::Result::WouldBlock && socket_.Wait(POLLOUT, PatienceMs) == 0) {
            ADD_FAILURE() << "the server does not read";
            return;
        }
        bytes = bytes.subspan(count);
    }
}

std::vector<std::byte> TestClient::Packet(tds::PacketType type, std::span<const std::byte> body,
                                          uint8_t status) {
    tds::PacketHeader header;
    header.type = type;
    header.status = status;
    header.length = static_cast<uint16_t>(body.size() + tds::PacketHeader::Size);
    header.id = 1;
    std::vector<std::byte> packet(tds::PacketHeader::Size);
    header.Encode(
        std::span<std::byte, tds::PacketHeader::Size>(packet.data(), tds::PacketHeader::Size));
    packet.insert(packet.end(), body.begin(), body.end());
    return packet;
}

void TestClient::Send(tds::PacketType type, std::span<const std::byte> body, uint8_t status) {
    SendBytes(Packet(type, body, status));
}

void TestClient::SendBatch(const QString& sql, uint8_t status) {
    tds::SqlBatch batch;
    batch.sql = sql;
    tds::BufferWriter writer;
    batch.Encode(writer);
    Send(tds::PacketType::Batch, writer.Written(), status);
}

bool TestClient::Fill() {
    std::array<std::byte, 65536> buffer;
    size_t count = 0;
    for (;;) {
        switch (socket_.Read(buffer, count)) {
            case Socket::Result::Done:
                input_.insert(input_.end(), buffer.begin(),
                              buffer.begin() + static_cast<std::ptrdiff_t>(count));
                return true;
            case Socket::Result::Ended:
                return false;
            case Socket::Result::WouldBlock:
                if (socket_.Wait(POLLIN, PatienceMs) != 0) break;
                ADD_FAILURE() << "the server does not answer";
                return false;
        }
    }
}

bool TestClient::ReceiveMessage(std::vector<std::byte>& body, Reply& reply) {
    for (;;) {
        while (input_.size() < tds::PacketHeader::Size) {
            if (!Fill()) return false;
        }
        const auto header =
            tds::PacketHeader::Decode(std::span<const std::byte, tds::PacketHeader::Size>(
                                          input_.data(), tds::PacketHeader::Size),
                                      tds::PacketHeader::LargestPacket);
        while (input_.size() < header.length) {
            if (!Fill()) return false;
        }
        EXPECT_EQ(header.type, tds::PacketType::Reply);
        reply.spid = header.spid;
        reply.largestPacket = std::max<size_t>(reply.largestPacket, header.length);
        body.insert(body.end(), input_.begin() + tds::PacketHeader::Size,
                    input_.begin() + header.length);
        input_.erase(input_.begin(), input_.begin() + header.length);
        if (header.EndsMessage()) return true;
    }
}

std::optional<Reply> TestClient::Receive() {
    Reply reply;
    std::vector<std::byte> body;
    if (!ReceiveMessage(body, reply)) return std::nullopt;
    tds::ByteReader reader(body);
    try {
        while (!reader.AtEnd()) TakeToken(reader, reply);
    } catch (const tds::ProtocolError& error) {
        ADD_FAILURE() << error.what();
    }
    return reply;
}

bool TestClient::Skip(size_t count) {
    while (input_.size() < count) {
        if (!Fill()) return false;
    }
    input_.clear();
    return true;
}

bool TestClient::IsClosed() {
    return input_.empty() && !Fill() && input_.empty();
}

std::optional<tds::Prelogin> TestClient::Prelogin() {
    tds::BufferWriter writer;
    tds::Prelogin{}.Encode(writer);
    Send(tds::PacketType::Prelogin, writer.Written());
    return ReceivePrelogin();
}

std::optional<tds::Prelogin> TestClient::ReceivePrelogin() {
    Reply reply;
    std::vector<std::byte> body;
    if (!ReceiveMessage(body, reply)) return std::nullopt;
    return tds::Prelogin::Decode(body);
}

std::vector<std::byte> TestClient::Body(const tds::Login7& login) {
    tds::BufferWriter writer;
    login.Encode(writer);
    return {writer.Written().begin(), writer.Written().end()};
}

std::optional<Reply> TestClient::LogIn(const tds::Login7& login) {
    if (!Prelogin()) return std::nullopt;
    Send(tds::PacketType::Login7, Body(login));
    return Receive();
}

tds::Login7 TestClient::GoodLogin() {
    tds::Login7 login;
    login.userName = QStringLiteral("tester");
    login.password = QStringLiteral("right");
    login.hostName = QStringLiteral("desk");
    login.appName = QStringLiteral("Checks");
    return login;
}

std::optional<Reply> TestClient::LogIn() {
    return LogIn(GoodLogin());
}

std::optional<Reply> TestClient::Run(const QString& sql) {
    SendBatch(sql);
    return Receive();
}

}  // namespace quarv::localdb::server
