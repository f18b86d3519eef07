#include "platform/ado/odbc/RecordingProxy.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

#include "platform/ado/odbc/Loopback.h"

namespace quarv::test {

namespace {

bool HasNews(const pollfd& watched) {
    return (watched.revents & (POLLIN | POLLHUP | POLLERR)) != 0;
}

}  // namespace

RecordingProxy::RecordingProxy(int serverPort)
    : serverPort_(serverPort), listener_(ListenOnLoopback(port_)) {
    acceptor_ = std::thread([this] { Accept(); });
}

RecordingProxy::~RecordingProxy() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    CutOff();
    for (std::thread& thread : threads_) thread.join();
    for (const auto& link : links_) {
        close(link->client);
        close(link->server);
    }
    close(listener_);
}

int RecordingProxy::Connections() const {
    const std::lock_guard lock(mutex_);
    return connections_;
}

QStringList RecordingProxy::Statements() const {
    const std::lock_guard lock(mutex_);
    return statements_;
}

QByteArray RecordingProxy::Bytes() const {
    const std::lock_guard lock(mutex_);
    return bytes_;
}

void RecordingProxy::Forget() {
    const std::lock_guard lock(mutex_);
    statements_.clear();
    bytes_.clear();
}

void RecordingProxy::CutOff() {
    const std::lock_guard lock(mutex_);
    for (const auto& link : links_) {
        shutdown(link->client, SHUT_RDWR);
        shutdown(link->server, SHUT_RDWR);
    }
}

void RecordingProxy::CutAfter(qint64 bytes) {
    const std::lock_guard lock(mutex_);
    bytesLeft_ = bytes;
}

void RecordingProxy::Hush() {
    const std::lock_guard lock(mutex_);
    hushed_ = true;
}

void RecordingProxy::Accept() {
    for (;;) {
        const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        const std::lock_guard lock(mutex_);
        if (client < 0 || ending_) {
            if (client >= 0) close(client);
            return;
        }
        ++connections_;
        links_.push_back(std::make_unique<Link>(Link{client, ConnectToLoopback(serverPort_), {}}));
        threads_.emplace_back([this, link = links_.back().get()] { Serve(*link); });
    }
}

// The sockets stay open until the end, so that CutOff meets no other file under their numbers.
void RecordingProxy::Serve(Link& link) {
    for (bool goes = link.server >= 0; goes;) {
        pollfd watched[] = {{link.client, POLLIN, 0}, {link.server, POLLIN, 0}};
        if (poll(watched, 2, -1) < 0) break;
        if (HasNews(watched[0])) goes = PassOn(link);
        if (goes && HasNews(watched[1])) goes = PassBack(link);
    }
    shutdown(link.client, SHUT_RDWR);
    shutdown(link.server, SHUT_RDWR);
}

bool RecordingProxy::PassOn(Link& link) {
    const QByteArray bytes = ReceiveSome(link.client);
    if (bytes.isEmpty()) return false;
    Record(link, bytes);
    return SendAll(link.server, bytes);
}

bool RecordingProxy::PassBack(Link& link) {
    QByteArray bytes = ReceiveSome(link.server);
    if (bytes.isEmpty()) return false;
    bool goes = true;
    {
        const std::lock_guard lock(mutex_);
        if (hushed_) return true;
        if (bytesLeft_ != NoLimit) {
            bytes.truncate(std::min<qint64>(bytes.size(), bytesLeft_));
            bytesLeft_ -= bytes.size();
            goes = bytesLeft_ > 0;
            if (!goes) bytesLeft_ = NoLimit;
        }
    }
    return SendAll(link.client, bytes) && goes;
}

void RecordingProxy::Record(Link& link, const QByteArray& bytes) {
    link.messages.Append(bytes);
    const std::lock_guard lock(mutex_);
    while (const auto message = link.messages.Take()) {
        bytes_ += message->body;
        if (message->IsRequest()) statements_ += message->Text();
    }
}

}  // namespace quarv::test
