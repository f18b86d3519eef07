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

#include "platform/ado/odbc/FakeTds.h"
#include "platform/ado/odbc/FakeWire.h"

namespace quarv::test {

class FakeServer {
  public:
    enum class Manners {
        Good,
        ClosesAtOnce,
        ClosesUnanswered,  // when the pre-login message has come
        Silent,
        Garbage,   // random bytes for an answer, then silence
        Trickles,  // one byte again and again, for ever
        Floods,    // packets of the greatest size, for ever
        ClosesAfterPreLogin,
        SilentAfterPreLogin,
        GarbageAfterLogin,
        // In answer to the first message of an encryption that it offered itself:
        GarbageTls,
        TlsAlert,  // it and the client have nothing in common
        SilentTls,
    };
    // As the pre-login message numbers them ([MS-TDS], "PRELOGIN").
    enum class Encryption : quint8 { LoginOnly = 0, None = 2, Demanded = 3 };
    // The token bytes for a batch's text or, for a procedure call, its name.
    using Answerer = std::function<QByteArray(const QString& sql)>;
    // What the token of a Windows account proves.
    struct Proof {
        QString account;
        QByteArray answer;  // the token that proves the server in return
    };
    // Nothing: the token proves nothing, and the login is refused.
    using Verifier = std::function<std::optional<Proof>(const QByteArray& token)>;

    struct Settings {
        Manners manners = Manners::Good;
        Answerer answerer = {};
        Verifier verifier = {};
        Encryption encryption = Encryption::None;
        QByteArray refusal = {};  // the tokens that every login is answered with, before the end
        QString address = QStringLiteral("127.0.0.1");
        int port = 0;  // 0: a free one
    };

    explicit FakeServer(Settings settings);
    explicit FakeServer(Manners manners) : FakeServer(Settings{.manners = manners}) {}
    explicit FakeServer(Answerer answerer)
        : FakeServer(Settings{.answerer = std::move(answerer)}) {}
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
    bool Greet(FakeWire& wire);
    bool OfferEncryption(FakeWire& wire);
    void Misbehave(FakeWire& wire);
    void RememberLogin(const QByteArray& body);
    bool AnswerLogin(FakeWire& wire);
    bool Answer(FakeWire& wire, const ClientMessage& request);

    Settings settings_;
    int port_;
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
