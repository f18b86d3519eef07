#include "RowServer.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include "platform/ado/odbc/FakeTds.h"
#include "platform/ado/odbc/Loopback.h"

namespace quarv::bench {

namespace {

using test::FakeColumn;
using test::FakeTds;
using test::FakeValue;
using test::Le;
using test::SendAll;
using test::Utf16;

constexpr int PacketSize = 4096;
constexpr int HeaderSize = 8;
constexpr int CycleRows = 1000;  // after so many rows the same ones come again

// Cuts bytes into packets as they come, and sends the last one as such.
class Reply {
  public:
    explicit Reply(int fd) : fd_(fd) {}

    bool Add(const QByteArray& bytes) {
        pending_ += bytes;
        QByteArray packets;
        qsizetype at = 0;
        // At least one byte stays for the last packet.
        for (; pending_.size() - at > Room; at += Room) Packet(packets, pending_.mid(at, Room), 0);
        pending_.remove(0, at);
        return SendAll(fd_, packets);
    }
    bool End() {
        QByteArray packets;
        Packet(packets, pending_, 1);
        return SendAll(fd_, packets);
    }

  private:
    static constexpr qsizetype Room = PacketSize - HeaderSize;

    static void Packet(QByteArray& packets, const QByteArray& body, char status) {
        const auto length = static_cast<int>(body.size()) + HeaderSize;
        packets += '\4';
        packets += status;
        packets += static_cast<char>(length >> 8);
        packets += static_cast<char>(length);
        packets += QByteArray::fromHex("00330100");
        packets += body;
    }

    int fd_;
    QByteArray pending_;
};

FakeTds Header() {
    FakeTds tokens;
    tokens.Columns({FakeColumn::Int("a"), FakeColumn::Int("b", 8), FakeColumn::Bit("c"),
                    FakeColumn::Float("d"), FakeColumn::Decimal("e", 18, 4),
                    FakeColumn::NVarChar("f", 40), FakeColumn::NVarChar("g", 100),
                    FakeColumn::VarChar("h", 20), FakeColumn::DateTime2("i", 3),
                    FakeColumn::Date("j")});
    return tokens;
}

QByteArray Rows(int count) {
    FakeTds tokens = Header();
    const qsizetype start = tokens.Bytes().size();
    for (int i = 0; i < count; ++i) {
        const auto n = static_cast<quint64>(i);
        const auto orNull = [i](const QByteArray& value) {
            return i % 10 == 9 ? FakeValue() : FakeValue(value);
        };
        const double half = i * 0.5;
        const QByteArray binary(reinterpret_cast<const char*>(&half), sizeof half);
        tokens.Row({Le(n, 4), Le(n * 1000000007ULL, 8), Le(n & 1, 1), orNull(binary),
                    QByteArray(1, 1) + Le(n * 12345, 8), orNull(Utf16(QString("name %1").arg(i))),
                    Utf16(QString("a description of row %1, Größe 5 €").arg(i)),
                    QByteArray("code ") + QByteArray::number(i), Le(n * 1000, 4) + Le(737000, 3),
                    Le(737000 + n, 3)});
    }
    return tokens.Bytes().mid(start);
}

// The type of the client's next message; its end where 0.
int SkipMessage(int fd) {
    for (;;) {
        unsigned char header[HeaderSize];
        if (recv(fd, header, sizeof header, MSG_WAITALL) != HeaderSize) return 0;
        const int rest = (header[2] << 8 | header[3]) - HeaderSize;
        if (rest < 0) return 0;
        QByteArray body(rest, 0);
        // Reading nothing would wait for the next message.
        if (rest > 0 && recv(fd, body.data(), static_cast<std::size_t>(body.size()), MSG_WAITALL) !=
                            body.size())
            return 0;
        if (header[1] & 1) return header[0];
    }
}

bool Send(int fd, const QByteArray& tokens) {
    Reply reply(fd);
    return reply.Add(tokens) && reply.End();
}

bool SendRows(int fd, int rows, const QByteArray& cycle) {
    Reply reply(fd);
    bool sent = reply.Add(Header().Bytes());
    for (int i = 0; sent && i < rows; i += CycleRows) sent = reply.Add(cycle);
    return sent && reply.Add(FakeTds().Done(rows).Bytes()) && reply.End();
}

void Serve(int fd, int rows, const QByteArray& cycle) {
    if (!SkipMessage(fd) || !Send(fd, FakeTds::PreLogin())) return;
    if (!SkipMessage(fd) || !Send(fd, FakeTds::LoginOk("bench"))) return;
    constexpr int attention = 6;
    const QByteArray oneChanged = FakeTds().Done(1);
    while (const int type = SkipMessage(fd)) {
        const bool sent = type == attention ? Send(fd, FakeTds::AttentionDone())
                          : rows == 0       ? Send(fd, oneChanged)
                                            : SendRows(fd, rows, cycle);
        if (!sent) return;
    }
}

}  // namespace

RowServer::RowServer(int rows) {
    const int listener = test::ListenOnLoopback(port_);
    process_ = fork();
    if (process_ != 0) {
        close(listener);
        return;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const QByteArray cycle = Rows(CycleRows);
    signal(SIGCHLD, SIG_IGN);
    for (;;) {
        const int fd = accept(listener, nullptr, nullptr);
        if (fd < 0) _exit(0);
        if (fork() == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            Serve(fd, rows, cycle);
            _exit(0);
        }
        close(fd);
    }
}

RowServer::~RowServer() {
    if (process_ <= 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

}  // namespace quarv::bench
