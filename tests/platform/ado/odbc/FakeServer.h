// FakeServer: a scripted server on a loopback port, one thread a connection. It logs clients in and
// answers each statement with the bytes that the test gives, or misbehaves in a chosen way.
#pragma once

#include <QString>
#include <QStringList>
#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/ado/odbc/ClientMessage.h"
#include "platform/ado/odbc/FakeTds.h"

namespace quarv::test {

class FakeServer {
  public:
    enum class Manners {
        Good,
        ClosesAtOnce,
        Silent,
        Garbage,   // random bytes for an answer, then silence
        Trickles,  // one byte again and again, for ever
        Floods,    // packets of the greatest size, for ever
        ClosesAfterPreLogin,
        SilentAfterPreLogin,
        GarbageAfterLogin,
        RefusesLogin,
        WrongDatabase,
        GarbageTls,
    };
    // The token bytes for a batch's text or, for a procedure call, its name.
    using Answerer = std::function<QByteArray(const QString& sql)>;
    // What the token of a Windows account proves.
    struct Proof {
        QString account;
        QByteArray answer;  // the token that proves the server in return
    };
    // Nothing: the token proves nothing, and the login is refused.
    using Verifier = std::function<std::optional<Proof>(const QByteArray& token)>;

    explicit FakeServer(Manners manners, Answerer answerer = {}, Verifier verifier = {});
    explicit FakeServer(Answerer answerer) : FakeServer(Manners::Good, std::move(answerer)) {}
    // Answers every statement alike.
    explicit FakeServer(const FakeTds& answer);
    ~FakeServer();
    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;

    int Port() const { return port_; }
    // "Provider=sqloledb;..." for this server with an account.
    QString ConnectionString(const QString& more = {}) const;
    QStringList Statements() const;
    // Of the last login: user, password, application, database.
    QStringList Login() const;
    // The last login's message, as it was sent; empty where there was none.
    QByteArray LoginBytes() const;
    // Whom the last login's token proved; empty where it held none or one that proved nothing.
    QString WindowsAccount() const;
    // Cuts every connection off.
    void CutOff();
    // An answer that ends in these bytes is sent without them and the connection is then closed.
    static const QByteArray ThenClose;
    // Likewise, and nothing more is ever sent.
    static const QByteArray ThenSilence;

  private:
    void Accept();
    void Serve(int fd);
    bool Greet(int fd);
    void Misbehave(int fd);
    bool Answer(int fd, const ClientMessage& request);
    void RememberLogin(const QByteArray& body);

    // The name that the last login goes by.
    QString Account() const;
    bool AnswerLogin(int fd) const;

    Manners manners_;
    Answerer answerer_;
    Verifier verifier_;
    int port_ = 0;
    int listener_;
    std::atomic<bool> ending_ = false;
    mutable std::mutex mutex_;
    std::vector<int> open_;
    std::vector<std::thread> threads_;
    std::thread acceptor_;
    QStringList statements_;
    QStringList login_;
    QByteArray loginBytes_;
    QByteArray token_;  // of the last login; empty where it came with a user
    std::optional<Proof> proof_;
};

}  // namespace quarv::test
