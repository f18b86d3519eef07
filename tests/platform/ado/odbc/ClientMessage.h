// ClientMessage: one message of a TDS client, its packets joined ([MS-TDS], "Packets"), as the test
// servers and the recording proxy read it. It knows no socket.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace quarv::test {

struct ClientMessage {
    // [MS-TDS], "Packet Header", Type.
    enum Type : quint8 { Batch = 0x01, Call = 0x03, Reply = 0x04, Attention = 0x06 };

    quint8 type = 0;
    QByteArray body;  // without the packets' headers

    bool IsRequest() const { return type == Batch || type == Call; }
    // Of a batch its text, of a call the procedure's name; nothing for other messages.
    QString Text() const;
};

// Joins packets into messages, however the bytes are cut.
class ClientMessages {
  public:
    void Append(const QByteArray& bytes) { bytes_ += bytes; }
    // The next message that has come whole.
    std::optional<ClientMessage> Take();

  private:
    bool TakePacket();

    QByteArray bytes_;
    ClientMessage building_;
    bool complete_ = false;
};

}  // namespace quarv::test
