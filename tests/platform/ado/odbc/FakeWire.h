// FakeWire: a fake server's end of one connection: TDS messages ([MS-TDS], "Packets") out of bytes
// and back, in clear or encrypted. It does not own the socket.
#pragma once

#include <QByteArray>
#include <memory>
#include <optional>

#include "platform/ado/odbc/ClientMessage.h"

namespace quarv::test {

class TlsSession;

class FakeWire {
  public:
    static constexpr int HeaderSize = 8;
    static constexpr quint8 PreLogin = 0x12;

    explicit FakeWire(int fd);
    ~FakeWire();
    FakeWire(const FakeWire&) = delete;
    FakeWire& operator=(const FakeWire&) = delete;

    int Socket() const { return fd_; }
    // Nothing, or false, where the other side is gone.
    std::optional<ClientMessage> ReceiveMessage();
    bool Send(const QByteArray& bytes);
    bool SendMessage(const QByteArray& body, bool complete = true,
                     quint8 type = ClientMessage::Reply);
    // Waits until the other side is gone, whatever it says.
    void AwaitEnd();

    // Agrees on encryption within pre-login messages; false where that fails.
    bool Encrypt();
    // From here on in clear again.
    void Decrypt();

    static QByteArray Header(quint8 type, bool last, int length);

  private:
    int fd_;
    ClientMessages messages_;
    std::unique_ptr<TlsSession> tls_;  // only where it is encrypted
};

}  // namespace quarv::test
