// FakeWire: a fake server's end of one connection: TDS messages ([MS-TDS], "Packets") out of bytes
// and back, in clear or encrypted. It does not own the socket.
#pragma once

#include <QByteArray>
#include <memory>
#include <optional>

namespace quarv::test {

class TlsSession;

class FakeWire {
  public:
    static constexpr int HeaderSize = 8;
    static constexpr quint8 Reply = 0x04, PreLogin = 0x12;

    // A whole message, its packets joined.
    struct Message {
        quint8 type = 0;
        QByteArray body;
    };

    explicit FakeWire(int fd);
    ~FakeWire();
    FakeWire(const FakeWire&) = delete;
    FakeWire& operator=(const FakeWire&) = delete;

    int Socket() const { return fd_; }
    // Nothing, or false, where the other side is gone.
    std::optional<QByteArray> Receive(int count);
    std::optional<Message> ReceiveMessage();
    bool Send(const QByteArray& bytes);
    bool SendMessage(const QByteArray& body, bool complete = true, quint8 type = Reply);
    // Waits until the other side is gone, whatever it says.
    void AwaitEnd();

    // Agrees on encryption within pre-login messages; false where that fails.
    bool Encrypt();
    // From here on in clear again.
    void Decrypt();

    static QByteArray Header(quint8 type, bool last, int length);

  private:
    std::optional<QByteArray> ReceivePlain(int count) const;

    int fd_;
    std::unique_ptr<TlsSession> tls_;  // only where it is encrypted
};

}  // namespace quarv::test
