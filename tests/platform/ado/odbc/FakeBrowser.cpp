#include "platform/ado/odbc/FakeBrowser.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <QRandomGenerator>
#include <array>

namespace quarv::test {

namespace {

constexpr int BrowserPort = 1434;
constexpr int Attempts = 100;

// An empty one where the address or the port is taken.
UniqueFd BindTo(quint32 address, int port) {
    UniqueFd fd(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(static_cast<in_port_t>(port));
    place.sin_addr.s_addr = htonl(address);
    if (bind(fd.Get(), reinterpret_cast<sockaddr*>(&place), sizeof place) != 0) return {};
    return fd;
}

}  // namespace

FakeBrowser::FakeBrowser(Answers answers)
    : wake_(eventfd(0, EFD_CLOEXEC)), answers_(std::move(answers)) {
    quint32 address = 0;
    for (int i = 0; i < Attempts && !socket_; ++i) {
        address = 0x7F000000 | QRandomGenerator::global()->bounded(0x010000, 0xFF0000);
        socket_ = BindTo(address, BrowserPort);
    }
    elsewhere_ = BindTo(address, 0);
    if (!socket_ || !elsewhere_) qFatal("no loopback address for a browser");
    address_ = QStringLiteral("127.%1.%2.%3")
                   .arg(address >> 16 & 0xFF)
                   .arg(address >> 8 & 0xFF)
                   .arg(address & 0xFF);
    thread_ = std::thread([this] { Serve(); });
}

FakeBrowser::~FakeBrowser() {
    eventfd_write(wake_.Get(), 1);
    thread_.join();
}

QList<QByteArray> FakeBrowser::Questions() const {
    const std::lock_guard lock(mutex_);
    return questions_;
}

void FakeBrowser::AnswerWith(Answers answers) {
    const std::lock_guard lock(mutex_);
    answers_ = std::move(answers);
}

void FakeBrowser::AnswerWithPort(int port) {
    AnswerWith([port](int) -> std::vector<Answer> {
        return {{Naming("EXPRESS", QByteArray::number(port))}};
    });
}

QByteArray FakeBrowser::Naming(const QByteArray& instance, const QByteArray& port) {
    return Response("ServerName;HOST;InstanceName;" + instance +
                    ";IsClustered;No;Version;15.0.2000.5;tcp;" + port + ";;");
}

QByteArray FakeBrowser::Response(const QByteArray& text) {
    return QByteArray(1, 5) + static_cast<char>(text.size()) + static_cast<char>(text.size() >> 8) +
           text;
}

void FakeBrowser::Serve() {
    std::array<char, 2048> question{};
    for (;;) {
        std::array waiting{pollfd{socket_.Get(), POLLIN, 0}, pollfd{wake_.Get(), POLLIN, 0}};
        poll(waiting.data(), waiting.size(), -1);
        if (waiting[1].revents != 0) return;
        sockaddr_in from{};
        socklen_t length = sizeof from;
        const ssize_t size = recvfrom(socket_.Get(), question.data(), question.size(), 0,
                                      reinterpret_cast<sockaddr*>(&from), &length);
        if (size < 0) continue;
        const std::lock_guard lock(mutex_);
        questions_.append(QByteArray(question.data(), size));
        if (!answers_) continue;
        for (const Answer& answer : answers_(static_cast<int>(questions_.size()))) {
            const UniqueFd& fd = answer.fromElsewhere ? elsewhere_ : socket_;
            sendto(fd.Get(), answer.bytes.constData(),
                   static_cast<std::size_t>(answer.bytes.size()), 0,
                   reinterpret_cast<sockaddr*>(&from), length);
        }
    }
}

}  // namespace quarv::test
