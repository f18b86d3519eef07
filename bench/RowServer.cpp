#include "RowServer.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
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

// What is sent over and over, cut into packets once.
struct RowBlocks {
    QByteArray header;
    QByteArray cycle;
};

// Cuts `tokens` into packets of one message; its last one ends the message where `last`.
QByteArray Packets(const QByteArray& tokens, bool last) {
    constexpr qsizetype room = PacketSize - HeaderSize;
    QByteArray packets;
    for (qsizetype at = 0; at < tokens.size(); at += room) {
        const qsizetype part = std::min(room, tokens.size() - at);
        const auto length = static_cast<int>(part) + HeaderSize;
        packets += '\4';
        packets += last && at + part == tokens.size() ? '\1' : '\0';
        packets += static_cast<char>(length >> 8);
        packets += static_cast<char>(length);
        packets += QByteArray::fromHex("00330100");
        packets += tokens.mid(at, part);
    }
    return packets;
}

FakeTds Header() {
    FakeTds tokens;
    tokens.Columns({FakeColumn::Int("a"), FakeColumn::Int("b", 8), FakeColumn::Bit("c"),
                    FakeColumn::Float("d"), FakeColumn::Decimal("e", 18, 4),
                    FakeColumn::NVarChar("f", 40), FakeColumn::NVarChar("g", 100),
                    FakeColumn::VarChar("h", 20), FakeColumn::DateTime2("i", 3),
                    FakeColumn::Guid("j")});
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
                    Le(n * 0x9E3779B97F4A7C15ULL, 8) + Le(n * 0xC2B2AE3D27D4EB4FULL, 8)});
    }
    return tokens.Bytes().mid(start);
}

struct Request {
    int type = 0;  // 0: the client is gone
    QByteArray body;
};

Request Receive(int fd) {
    Request request;
    for (;;) {
        unsigned char header[HeaderSize];
        if (recv(fd, header, sizeof header, MSG_WAITALL) != HeaderSize) return {};
        const int rest = (header[2] << 8 | header[3]) - HeaderSize;
        if (rest < 0) return {};
        QByteArray body(rest, 0);
        // Reading nothing would wait for the next message.
        if (rest > 0 && recv(fd, body.data(), static_cast<std::size_t>(body.size()), MSG_WAITALL) !=
                            body.size())
            return {};
        request.body += body;
        request.type = header[0];
        if (header[1] & 1) return request;
    }
}

// The first number in a statement's text, else `otherwise`.
int RowsAskedFor(const QByteArray& batch, int otherwise) {
    constexpr int headers = 22;  // the text, UTF-16, lies behind them
    int number = -1;
    for (qsizetype at = headers; at + 1 < batch.size(); at += 2) {
        const char digit = batch[at];
        if (digit >= '0' && digit <= '9')
            number = std::max(number, 0) * 10 + (digit - '0');
        else if (number >= 0)
            break;
    }
    return number >= 0 ? number : otherwise;
}

bool HasWord(int fd) {
    char byte = 0;
    return recv(fd, &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

// Ends early where the client speaks up meanwhile: all that it can say is that it wants no more.
bool SendRows(int fd, int rows, const RowBlocks& blocks) {
    bool sent = SendAll(fd, blocks.header);
    int left = rows;
    for (; sent && left >= CycleRows && !HasWord(fd); left -= CycleRows)
        sent = SendAll(fd, blocks.cycle);
    if (left < CycleRows) sent = sent && SendAll(fd, Packets(Rows(left), false));
    return sent && SendAll(fd, Packets(FakeTds().Done(rows), true));
}

void Serve(int fd, int rows, const RowBlocks& blocks) {
    const auto send = [fd](const QByteArray& tokens) { return SendAll(fd, Packets(tokens, true)); };
    if (!Receive(fd).type || !send(FakeTds::PreLogin())) return;
    if (!Receive(fd).type || !send(FakeTds::LoginOk("bench"))) return;
    constexpr int attention = 6;
    const QByteArray oneChanged = FakeTds().Done(1);
    for (;;) {
        const Request request = Receive(fd);
        if (request.type == 0) return;
        const bool sent = request.type == attention ? send(FakeTds::AttentionDone())
                          : rows == 0               ? send(oneChanged)
                                      : SendRows(fd, RowsAskedFor(request.body, rows), blocks);
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
    const RowBlocks blocks{Packets(Header(), false), Packets(Rows(CycleRows), false)};
    signal(SIGCHLD, SIG_IGN);
    for (;;) {
        const int fd = accept(listener, nullptr, nullptr);
        if (fd < 0) _exit(0);
        if (fork() == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            Serve(fd, rows, blocks);
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
