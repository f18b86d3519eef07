// RecordingProxy: stands on a loopback port of its own before a server on another, one thread a
// connection, and keeps every byte that clients send. It can cut its connections, at once or in the
// middle of an answer. It changes nothing that it passes on.
#pragma once

#include <QStringList>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/ado/odbc/ClientMessage.h"

namespace quarv::test {

class RecordingProxy {
  public:
    // The server's address is 127.0.0.1.
    explicit RecordingProxy(int serverPort);
    ~RecordingProxy();
    RecordingProxy(const RecordingProxy&) = delete;
    RecordingProxy& operator=(const RecordingProxy&) = delete;

    int Port() const { return port_; }
    // Connections that clients have made so far, those cut included.
    int Connections() const;
    // What clients have asked for since the start or the last Forget, in order: texts of batches,
    // names of procedures called.
    QStringList Statements() const;
    // The bytes of all messages since then, logins included; of packets only the headers are left
    // out, so that no text is interrupted by one.
    QByteArray Bytes() const;
    void Forget();

    // Cuts every connection off. New ones are let through.
    void CutOff();
    // Lets the server say so many more bytes, then cuts off the connection that said them.
    void CutAfter(qint64 bytes);
    // Keeps back what servers say from now on; the connections stay.
    void Hush();

  private:
    struct Link {
        int client;
        int server;
        ClientMessages messages;
    };

    void Accept();
    void Serve(Link& link);
    // False where the connection is to end.
    bool PassOn(Link& link);
    bool PassBack(Link& link);
    void Record(Link& link, const QByteArray& bytes);

    static constexpr qint64 NoLimit = -1;

    int serverPort_;
    int port_ = 0;
    int listener_;
    mutable std::mutex mutex_;
    // What follows is guarded by the mutex.
    bool ending_ = false;
    int connections_ = 0;
    qint64 bytesLeft_ = NoLimit;
    bool hushed_ = false;
    std::vector<std::unique_ptr<Link>> links_;
    std::vector<std::thread> threads_;
    QStringList statements_;
    QByteArray bytes_;
    std::thread acceptor_;
};

}  // namespace quarv::test
