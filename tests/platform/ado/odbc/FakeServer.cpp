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

FakeServer::FakeServer(Settings settings)
    : settings_(std::move(settings)),
      port_(settings_.port),
      listener_(ListenOnLoopback(port_, settings_.address)) {
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
    return QStringLiteral("Provider=sqloledb;Data Source=%1,%2;User Id=sa;Password=secret;")
               .arg(settings_.address)
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

void FakeServer::Serve(int fd) {
    FakeWire wire(fd);
    if (settings_.manners == Manners::ClosesAtOnce) return;
    if (settings_.manners == Manners::Silent) {
        wire.AwaitEnd();
        return;
    }
    if (!Greet(wire)) return;
    while (const auto request = wire.ReceiveMessage())
        if (!Answer(wire, *request)) return;
}

bool FakeServer::Greet(FakeWire& wire) {
    const auto preLogin = wire.ReceiveMessage();
    if (!preLogin || settings_.manners == Manners::ClosesUnanswered) return false;
    switch (settings_.manners) {
        case Manners::Garbage:
        case Manners::Trickles:
        case Manners::Floods:
        case Manners::GarbageTls:
        case Manners::TlsAlert:
        case Manners::SilentTls:
            Misbehave(wire);
            return false;
        default:
            break;
    }
    if (!OfferEncryption(wire)) return false;
    const auto login = wire.ReceiveMessage();
    if (!login || settings_.manners == Manners::ClosesAfterPreLogin) return false;
    if (settings_.encryption == Encryption::LoginOnly) wire.Decrypt();
    RememberLogin(login->body);
    if (settings_.manners == Manners::Good) return AnswerLogin(wire);
    if (settings_.manners == Manners::GarbageAfterLogin) wire.Send(Noise(2000));
    wire.AwaitEnd();
    return false;
}

bool FakeServer::OfferEncryption(FakeWire& wire) {
    const auto offer = static_cast<quint8>(settings_.encryption);
    return wire.SendMessage(FakeTds::PreLogin(offer)) &&
           (settings_.encryption == Encryption::None || wire.Encrypt());
}

bool FakeServer::AnswerLogin(FakeWire& wire) {
    if (!settings_.refusal.isEmpty()) {
        wire.SendMessage(settings_.refusal);
        return false;
    }
    QByteArray answer;
    {
        const std::lock_guard lock(mutex_);
        const bool untrusted = !token_.isEmpty() && !proof_;
        if (untrusted) answer = FakeTds::LoginUntrusted();
        if (proof_) answer = FakeTds::Sspi(proof_->answer);
        if (!untrusted) answer += FakeTds::LoginOk(login_[3]);
    }
    return wire.SendMessage(answer);
}

void FakeServer::Misbehave(FakeWire& wire) {
    constexpr int greatest = 0x7FFF;
    const QByteArray packet = FakeWire::Header(ClientMessage::Reply, false, greatest) +
                              QByteArray(greatest - FakeWire::HeaderSize, 0);
    switch (settings_.manners) {
        case Manners::Garbage:
            wire.Send(Noise(2000));
            break;
        case Manners::GarbageTls:
        case Manners::TlsAlert:
        case Manners::SilentTls:
            wire.SendMessage(FakeTds::PreLogin(static_cast<quint8>(Encryption::Demanded)));
            wire.ReceiveMessage();
            // No record of TLS begins so.
            if (settings_.manners == Manners::GarbageTls) wire.SendMessage(QByteArray(200, '\0'));
            if (settings_.manners == Manners::TlsAlert)
                wire.SendMessage(FakeTds::TlsHandshakeFailure(), true, FakeWire::PreLogin);
            break;
        case Manners::Trickles:
            while (!ending_ && wire.Send(QByteArray(1, 4))) {
                pollfd none{wire.Socket(), POLLRDHUP, 0};
                if (poll(&none, 1, 100) > 0) return;
            }
            return;
        case Manners::Floods:
            while (!ending_ && wire.Send(packet)) continue;
            return;
        default:
            return;
    }
    wire.AwaitEnd();
}

bool FakeServer::Answer(FakeWire& wire, const ClientMessage& request) {
    if (request.type == ClientMessage::Attention) return wire.SendMessage(FakeTds::AttentionDone());
    if (!request.IsRequest()) return false;
    const QString text = request.Text();
    {
        const std::lock_guard lock(mutex_);
        statements_.append(text);
    }
    QByteArray reply = settings_.answerer ? settings_.answerer(text) : FakeTds().Done();
    const bool thenClose = reply.endsWith(ThenClose);
    const bool thenSilence = reply.endsWith(ThenSilence);
    if (thenClose || thenSilence) reply.chop(ThenClose.size());
    if (reply.isEmpty() && thenSilence) return true;
    return wire.SendMessage(reply, !thenSilence && !thenClose) && !thenClose;
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
    const auto proof =
        settings_.verifier && !token.isEmpty() ? settings_.verifier(token) : std::nullopt;
    const std::lock_guard lock(mutex_);
    loginBytes_ = body;
    token_ = token;
    proof_ = proof;
    login_ = {field(40), TextAt(secret, 0, secret.size() / 2), field(48), field(68)};
}

}  // namespace quarv::test
