// FakeBrowser: a SQL Server Browser for a test, at a loopback address of its own, since its port is
// fixed. A thread of its own answers every question with what the test says.
#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "base/UniqueFd.h"

namespace quarv::test {

class FakeBrowser {
  public:
    struct Answer {
        QByteArray bytes;
        bool fromElsewhere = false;  // from another port of the same address
    };
    // What is sent, in this order, when the question comes for the `asked`th time, counted from 1.
    using Answers = std::function<std::vector<Answer>(int asked)>;

    // Without answers it is silent.
    explicit FakeBrowser(Answers answers = {});
    ~FakeBrowser();
    FakeBrowser(const FakeBrowser&) = delete;
    FakeBrowser& operator=(const FakeBrowser&) = delete;

    // "127.x.y.z"; nothing else is at this address.
    const QString& Address() const { return address_; }
    QList<QByteArray> Questions() const;
    void AnswerWith(Answers answers);
    // Always with where the instance EXPRESS listens.
    void AnswerWithPort(int port);

    // An answer as [MC-SQLR] lays down in "SVR_RESP", with this instance and this port.
    static QByteArray Naming(const QByteArray& instance, const QByteArray& port);
    static QByteArray Response(const QByteArray& text);

  private:
    void Serve();

    QString address_;
    UniqueFd socket_;
    UniqueFd elsewhere_;
    UniqueFd wake_;
    mutable std::mutex mutex_;
    Answers answers_;
    QList<QByteArray> questions_;
    std::thread thread_;
};

}  // namespace quarv::test
