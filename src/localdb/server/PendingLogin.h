// PendingLogin: a connection that has not logged in yet. It holds a socket, at most one small
// message, and the time by which it must be done. Driven by the listener; never blocks.
#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include "localdb/server/Log.h"
#include "localdb/server/Settings.h"
#include "localdb/server/Socket.h"
#include "localdb/tds/Login7.h"
#include "localdb/tds/MessageReader.h"
#include "localdb/tds/PacketWriter.h"
#include "localdb/tds/ServerMessage.h"

namespace quarv::localdb::server {

class PendingLogin {
  public:
    using Clock = std::chrono::steady_clock;

    enum class Outcome {
        Waiting,   // for more bytes
        Finished,  // refused, malformed or gone: to be closed
        Admitted,  // the account is proved: Login() and TakeSocket() are there
    };

    PendingLogin(Socket socket, const Settings& settings, Log& log);

    // Reads what is there and answers it.
    Outcome Advance();

    Clock::time_point Deadline() const { return deadline_; }
    int Descriptor() const { return socket_.Descriptor(); }
    const tds::Login7& Login() const { return login_; }
    Socket TakeSocket() { return std::move(socket_); }
    // Bytes that came behind the login.
    std::span<const std::byte> Early() const { return early_; }
    // Answers that the server is full; the connection is then to be closed.
    void RefuseAsFull();

  private:
    Outcome AdvanceWith(std::span<const std::byte> bytes);
    Outcome Answer(const tds::Message& message);
    Outcome CheckLogin(const tds::Message& message);
    void Refuse(const tds::ServerMessage& message);
    template <typename Write>
    bool Reply(Write write);

    Socket socket_;
    const Settings& settings_;
    Log& log_;
    Clock::time_point deadline_;
    tds::MessageReader reader_;
    tds::Login7 login_;
    std::vector<std::byte> early_;
};

}  // namespace quarv::localdb::server
