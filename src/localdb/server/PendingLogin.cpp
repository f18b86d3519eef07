#include "localdb/server/PendingLogin.h"

#include <array>
#include <utility>

#include "localdb/server/LoginReply.h"
#include "localdb/server/ServerMessages.h"
#include "localdb/tds/ProtocolError.h"

namespace quarv::localdb::server {

namespace {

// Replies before login are small: one that the socket's own buffer does not take at once goes to
// a peer that does not read.
class WholeOutput final : public tds::PacketOutput {
  public:
    explicit WholeOutput(Socket& socket) : socket_(socket) {}
    bool Take(std::span<const std::byte> packets, bool must) override {
        if (!must) return false;
        size_t count = 0;
        whole_ = whole_ && socket_.Write(packets, count) == Socket::Result::Done &&
                 count == packets.size();
        return true;
    }
    bool Whole() const { return whole_; }

  private:
    Socket& socket_;
    bool whole_ = true;
};

}  // namespace

PendingLogin::PendingLogin(Socket socket, const Settings& settings, Log& log)
    : socket_(std::move(socket)),
      settings_(settings),
      log_(log),
      deadline_(Clock::now() + settings.loginTime),
      reader_(tds::PacketHeader::LargestPacket, settings.largestLogin) {}

template <typename Write>
bool PendingLogin::Reply(Write write) {
    WholeOutput output(socket_);
    tds::PacketWriter writer(output, tds::PacketHeader::DefaultPacket, 0);
    write(writer);
    return output.Whole();
}

PendingLogin::Outcome PendingLogin::Advance() {
    std::array<std::byte, 4096> buffer;
    size_t count = 0;
    switch (socket_.Read(buffer, count)) {
        case Socket::Result::WouldBlock:
            return Outcome::Waiting;
        case Socket::Result::Ended:
            return Outcome::Finished;
        case Socket::Result::Done:
            break;
    }
    try {
        return AdvanceWith(std::span(buffer).first(count));
    } catch (const tds::ProtocolError& error) {
        log_.Write(QStringLiteral("login: refused: ") + error.Description());
        return Outcome::Finished;
    }
}

PendingLogin::Outcome PendingLogin::AdvanceWith(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        bytes = bytes.subspan(reader_.Feed(bytes));
        if (!reader_.HasMessage()) continue;
        const Outcome outcome = Answer(reader_.Take());
        if (outcome == Outcome::Admitted) early_.assign(bytes.begin(), bytes.end());
        if (outcome != Outcome::Waiting) return outcome;
    }
    return Outcome::Waiting;
}

PendingLogin::Outcome PendingLogin::Answer(const tds::Message& message) {
    switch (message.type) {
        case tds::PacketType::Prelogin: {
            tds::Prelogin::Decode(message.body);
            const bool sent = Reply([this](tds::PacketWriter& writer) {
                WritePreloginReply(writer, settings_.version);
            });
            return sent ? Outcome::Waiting : Outcome::Finished;
        }
        case tds::PacketType::Login7:
            return CheckLogin(message);
        default:
            log_.Write(QStringLiteral("login: refused: a request came before the login"));
            return Outcome::Finished;
    }
}

PendingLogin::Outcome PendingLogin::CheckLogin(const tds::Message& message) {
    login_ = tds::Login7::Decode(message.body);
    tds::ServerMessage told;
    QString why = ObjectionTo(login_, settings_, told);
    if (why.isEmpty() && !settings_.account.Admits(login_.userName, login_.password)) {
        // The client is not told which of the two it was.
        told = MakeMessage(message::LoginFailed, {login_.userName}, settings_.serverName);
        why = QStringLiteral("wrong name or password");
    }
    login_.password.fill(u'\0');
    if (why.isEmpty()) return Outcome::Admitted;
    log_.Write(QStringLiteral("login: refused for \"%1\": %2").arg(login_.userName, why));
    Refuse(told);
    return Outcome::Finished;
}

void PendingLogin::Refuse(const tds::ServerMessage& message) {
    Reply([&](tds::PacketWriter& writer) {
        WriteLoginRefusal(writer, {&message, 1}, tds::NearestDialect(login_.tdsVersion));
    });
    socket_.FinishWriting();
}

void PendingLogin::RefuseAsFull() {
    log_.Write(QStringLiteral("login: refused: too many sessions"));
    Refuse(MakeMessage(message::TooManySessions, {QString::number(settings_.largestSessions)},
                       settings_.serverName));
}

}  // namespace quarv::localdb::server
