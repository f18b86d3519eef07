// TestClient: a client over a real socket that says exactly what a test tells it, whole or in
// pieces, and reads replies back as tokens. Every wait ends after ten seconds.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "localdb/server/Socket.h"
#include "localdb/tds/ColMetadata.h"
#include "localdb/tds/Done.h"
#include "localdb/tds/EnvChange.h"
#include "localdb/tds/Login7.h"
#include "localdb/tds/LoginAck.h"
#include "localdb/tds/MessageReader.h"
#include "localdb/tds/Prelogin.h"
#include "localdb/tds/ReturnValue.h"
#include "localdb/tds/Row.h"
#include "localdb/tds/ServerMessage.h"

namespace quarv::localdb::server {

// One message of the server's, taken apart.
struct Reply {
    std::vector<uint8_t> tokens;  // in their order; rows once for each run of them
    tds::ColMetadata metadata;
    std::vector<tds::Row> rows;
    std::vector<tds::Done> dones;
    std::vector<tds::ServerMessage> messages;
    std::vector<tds::EnvChange> changes;
    std::vector<tds::ReturnValue> values;
    std::optional<tds::LoginAck> ack;
    std::optional<int32_t> returnStatus;
    uint16_t spid = 0;
    size_t largestPacket = 0;

    bool Has(int number) const;
};

class TestClient {
  public:
    explicit TestClient(uint16_t port);

    void SendBytes(std::span<const std::byte> bytes);
    // One message of one packet.
    void Send(tds::PacketType type, std::span<const std::byte> body, uint8_t status = 1);
    void SendBatch(const QString& sql, uint8_t status = 1);
    void SendAttention() { Send(tds::PacketType::Attention, {}); }

    // Nothing where the server closed the connection first.
    std::optional<Reply> Receive();
    // Reads what comes, at most `count` bytes, and forgets it. False at the end.
    bool Skip(size_t count);
    // True where the server closes without another byte.
    bool IsClosed();
    void Close() { socket_ = Socket(UniqueFd()); }

    std::optional<tds::Prelogin> Prelogin();
    std::optional<tds::Prelogin> ReceivePrelogin();
    std::optional<Reply> LogIn(const tds::Login7& login);
    // Prelogin and login with the right secret.
    std::optional<Reply> LogIn();
    std::optional<Reply> Run(const QString& sql);

    static tds::Login7 GoodLogin();
    static std::vector<std::byte> Packet(tds::PacketType type, std::span<const std::byte> body,
                                         uint8_t status = 1);
    static std::vector<std::byte> Body(const tds::Login7& login);

  private:
    bool ReceiveMessage(std::vector<std::byte>& body, Reply& reply);
    bool Fill();

    Socket socket_;
    std::vector<std::byte> input_;
};

}  // namespace quarv::localdb::server
