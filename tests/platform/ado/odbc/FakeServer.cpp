#include "platform/ado/odbc/FakeServer.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QRandomGenerator>
#include <algorithm>
#include <optional>

#include "platform/ado/odbc/Loopback.h"

namespace quarv::test {

const QByteArray FakeServer::ThenClose = QByteArray("\0<close>", 8);
const QByteArray FakeServer::ThenSilence = QByteArray("\0<quiet>", 8);

namespace {

constexpr quint8 Reply = ClientMessage::Reply;
constexpr int HeaderSize = 8;
constexpr int PacketSize = 4096;

std::optional<QByteArray> Receive(int fd, int count) {
    QByteArray bytes(count, 0);
    for (int got = 0; got < count;) {
        const ssize_t n = recv(fd, bytes.data() + got, static_cast<std::size_t>(count - got), 0);
        if (n <= 0) return std::nullopt;
        got += static_cast<int>(n);
    }
    return bytes;
}

QByteArray Header(quint8 type, bool last, int length) {
    return QByteArray(1, static_cast<char>(type)) + QByteArray(1, last ? 1 : 0) +
           QByteArray(1, static_cast<char>(length >> 8)) +
           QByteArray(1, static_cast<char>(length)) + QByteArray::fromHex("00330100");
}

bool SendMessage(int fd, const QByteArray& body, bool complete = true) {
    constexpr int room = PacketSize - HeaderSize;
    QByteArray all;
    qsizetype at = 0;
    do {
        const QByteArray part = body.mid(at, room);
        at += part.size();
        const bool last = complete && at >= body.size();
        all += Header(Reply, last, static_cast<int>(part.size()) + HeaderSize) + part;
    } while (at < body.size());
    return SendAll(fd, all);
}

QByteArray Noise(int count) {
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(QRandomGenerator::global()->bounded(256));
    return bytes;
}

QString TextAt(const QByteArray& body, qsizetype at, qsizetype units) {
    return QString::fromUtf16(
        reinterpret_cast<const char16_t*>(body.mid(at, units * 2).constData()), units);
}

int ShortAt(const QByteArray& body, qsizetype at) {
    return static_cast<quint8>(body[at]) | static_cast<quint8>(body[at + 1]) << 8;
}

}  // namespace

FakeServer::FakeServer(const FakeTds& answer)
    : FakeServer([bytes = answer.Bytes()](const QString&) { return bytes; }) {}

FakeServer::FakeServer(Manners manners, Answerer answerer, Verifier verifier)
    : manners_(manners),
      answerer_(std::move(answerer)),
      verifier_(std::move(verifier)),
      listener_(ListenOnLoopback(port_)) {
    acceptor_ = std::thread([this] { Accept(); });
}

FakeServer::~FakeServer() {
    ending_ = true;
    shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    CutOff();
    for (std::thread& thread : threads_) thread.join();
    close(listener_);
}

QString FakeServer::ConnectionString(const QString& more) const {
    return QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1,%1;User Id=sa;Password=secret;")
               .arg(port_) +
           more;
}

QStringList FakeServer::Statements() const {
    const std::lock_guard lock(mutex_);
    return statements_;
}

QStringList FakeServer::Login() const {
    const std::lock_guard lock(mutex_);
    return login_;
}

QByteArray FakeServer::LoginBytes() const {
    const std::lock_guard lock(mutex_);
    return loginBytes_;
}

QString FakeServer::WindowsAccount() const {
    const std::lock_guard lock(mutex_);
    return proof_ ? proof_->account : QString();
}

QString FakeServer::Account() const {
    const std::lock_guard lock(mutex_);
    return proof_ ? proof_->account : login_[0];
}

void FakeServer::CutOff() {
    const std::lock_guard lock(mutex_);
    for (const int fd : open_) shutdown(fd, SHUT_RDWR);
}

void FakeServer::Accept() {
    for (;;) {
        const int fd = accept(listener_, nullptr, nullptr);
        if (fd < 0 || ending_) {
            if (fd >= 0) close(fd);
            return;
        }
        const std::lock_guard lock(mutex_);
        open_.push_back(fd);
        threads_.emplace_back([this, fd] {
            Serve(fd);
            const std::lock_guard closing(mutex_);
            std::erase(open_, fd);
            close(fd);
        });
    }
}

namespace {

// The next whole message; nothing where the client is gone. A client waits for its answer, so
// nothing is lost that came behind the message.
std::optional<ClientMessage> ReceiveMessage(int fd) {
    ClientMessages messages;
    for (;;) {
        QByteArray bytes(PacketSize, 0);
        const ssize_t n = recv(fd, bytes.data(), static_cast<std::size_t>(bytes.size()), 0);
        if (n <= 0) return std::nullopt;
        messages.Append(bytes.first(n));
        if (auto message = messages.Take()) return message;
    }
}

}  // namespace

void FakeServer::Serve(int fd) {
    if (manners_ == Manners::ClosesAtOnce) return;
    if (manners_ == Manners::Silent) {
        Receive(fd, 1 << 20);
        return;
    }
    if (!Greet(fd)) return;
    while (const auto request = ReceiveMessage(fd))
        if (!Answer(fd, *request)) return;
}

bool FakeServer::Greet(int fd) {
    const auto preLogin = ReceiveMessage(fd);
    if (!preLogin) return false;
    if (manners_ == Manners::Garbage || manners_ == Manners::Trickles ||
        manners_ == Manners::Floods || manners_ == Manners::GarbageTls) {
        Misbehave(fd);
        return false;
    }
    if (!SendMessage(fd, FakeTds::PreLogin())) return false;
    const auto login = ReceiveMessage(fd);
    if (!login || manners_ == Manners::ClosesAfterPreLogin) return false;
    RememberLogin(login->body);
    switch (manners_) {
        case Manners::SilentAfterPreLogin:
            Receive(fd, 1 << 20);
            return false;
        case Manners::GarbageAfterLogin:
            SendAll(fd, Noise(2000));
            Receive(fd, 1 << 20);
            return false;
        case Manners::RefusesLogin:
            SendMessage(fd, FakeTds::LoginFailed(Account()));
            return false;
        case Manners::WrongDatabase: {
            const QString text = QStringLiteral(
                "Cannot open database \"%1\" requested by the "
                "login. The login failed.");
            SendMessage(fd, FakeTds()
                                .Error(4060, text.arg(Login()[3]), 1, 11)
                                .Raw(FakeTds::LoginFailed(Account())));
            return false;
        }
        default:
            break;
    }
    return AnswerLogin(fd);
}

bool FakeServer::AnswerLogin(int fd) const {
    QByteArray answer;
    {
        const std::lock_guard lock(mutex_);
        const bool untrusted = !token_.isEmpty() && !proof_;
        if (untrusted) answer = FakeTds::LoginUntrusted();
        if (proof_) answer = FakeTds::Sspi(proof_->answer);
        if (!untrusted) answer += FakeTds::LoginOk(login_[3]);
    }
    return SendMessage(fd, answer);
}

void FakeServer::Misbehave(int fd) {
    const QByteArray packet = Header(Reply, false, 0x7FFF) + QByteArray(0x7FFF - HeaderSize, 0);
    switch (manners_) {
        case Manners::Garbage:
            SendAll(fd, Noise(2000));
            break;
        case Manners::GarbageTls:
            SendMessage(fd, FakeTds::PreLogin(0));
            Receive(fd, HeaderSize);
            SendMessage(fd, Noise(200));
            break;
        case Manners::Trickles:
            while (!ending_ && SendAll(fd, QByteArray(1, 4))) {
                pollfd none{fd, POLLRDHUP, 0};
                if (poll(&none, 1, 100) > 0) return;
            }
            return;
        case Manners::Floods:
            while (!ending_ && SendAll(fd, packet)) continue;
            return;
        default:
            return;
    }
    Receive(fd, 1 << 20);
}

bool FakeServer::Answer(int fd, const ClientMessage& request) {
    if (request.type == ClientMessage::Attention) return SendMessage(fd, FakeTds::AttentionDone());
    if (!request.IsRequest()) return false;
    const QString text = request.Text();
    {
        const std::lock_guard lock(mutex_);
        statements_.append(text);
    }
    QByteArray reply = answerer_ ? answerer_(text) : FakeTds().Done();
    const bool thenClose = reply.endsWith(ThenClose);
    const bool thenSilence = reply.endsWith(ThenSilence);
    if (thenClose || thenSilence) reply.chop(ThenClose.size());
    if (reply.isEmpty() && thenSilence) return true;
    return SendMessage(fd, reply, !thenSilence && !thenClose) && !thenClose;
}

void FakeServer::RememberLogin(const QByteArray& body) {
    const auto field = [&body](int entry) {
        return TextAt(body, ShortAt(body, entry), ShortAt(body, entry + 2));
    };
    QByteArray secret = body.mid(ShortAt(body, 44), ShortAt(body, 46) * 2);
    for (char& byte : secret) {
        const auto plain = static_cast<quint8>(static_cast<quint8>(byte) ^ 0xA5);
        byte = static_cast<char>(plain >> 4 | plain << 4);
    }
    const QByteArray token = body.mid(ShortAt(body, 78), ShortAt(body, 80));
    const auto proof = verifier_ && !token.isEmpty() ? verifier_(token) : std::nullopt;
    const std::lock_guard lock(mutex_);
    loginBytes_ = body;
    token_ = token;
    proof_ = proof;
    login_ = {field(40), TextAt(secret, 0, secret.size() / 2), field(48), field(68)};
}

}  // namespace quarv::test
