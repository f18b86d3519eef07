#include "platform/ado/odbc/InstanceBrowser.h"

#include "platform/ado/odbc/FakeBrowser.h"
#include "platform/ado/odbc/FakeResolver.h"
#include "platform/ado/odbc/Open.h"

namespace quarv::test {

using ado::odbc::BrowseForPort;
using ado::odbc::BrowserAnswer;
using ado::odbc::PortInAnswer;

namespace {

using Answers = std::vector<FakeBrowser::Answer>;

constexpr int Patience = 30000;  // milliseconds

BrowserAnswer Browse(const FakeBrowser& browser, int timeout = Patience) {
    return BrowseForPort(browser.Address(), QStringLiteral("EXPRESS"), timeout);
}

// Good in every way but its length.
QByteArray LongAnswer(qsizetype length) {
    QByteArray text = "ServerName;HOST;InstanceName;EXPRESS;tcp;49172;np;";
    text += QByteArray(length - 3 - text.size() - 2, 'x') + ";;";
    return FakeBrowser::Response(text);
}

// Answers from which no port can be taken, in ways of their own.
QList<QByteArray> UselessAnswers() {
    return {
        QByteArray(),
        QByteArray("\5"),
        QByteArray("\5\0\0", 3),
        QByteArray("HTTP/1.1 400 Bad Request\r\n\r\n"),
        FakeBrowser::Naming("OTHER", "49172"),
        FakeBrowser::Naming("EXPRESS", "0"),
        FakeBrowser::Naming("EXPRESS", "-1"),
        FakeBrowser::Naming("EXPRESS", "65536"),
        FakeBrowser::Naming("EXPRESS", "99999999999"),
        FakeBrowser::Naming("EXPRESS", "x"),
        FakeBrowser::Naming("EXPRESS", ""),
        FakeBrowser::Response("ServerName;HOST;InstanceName;EXPRESS;Version;15;;"),
        FakeBrowser::Response("ServerName;HOST;InstanceName;EXPRESS;tcp"),
        FakeBrowser::Response("tcp;1433;InstanceName;EXPRESS;;"),
        QByteArray("\4\0\0InstanceName;EXPRESS;tcp;1433;;", 35),
        QByteArray(1024, '\5'),
        LongAnswer(1028),
        LongAnswer(60000),
    };
}

}  // namespace

TEST(InstanceBrowser, FindsTheInstancesPort) {
    const QByteArray one = FakeBrowser::Response(
        "ServerName;HOST;InstanceName;EXPRESS;IsClustered;No;Version;15.0.2000.5;tcp;49172;"
        "np;\\\\HOST\\pipe\\sql;;");
    EXPECT_EQ(PortInAnswer(one, "EXPRESS"), 49172);
    EXPECT_EQ(PortInAnswer(one, "express"), 49172);
    EXPECT_EQ(PortInAnswer(one, "OTHER"), std::nullopt);
    EXPECT_EQ(PortInAnswer(FakeBrowser::Naming("EXPRESS", "65535"), "EXPRESS"), 65535);
    EXPECT_EQ(PortInAnswer(LongAnswer(1027), "EXPRESS"), 49172);
}

TEST(InstanceBrowser, RefusesAnswersThatNameNoPort) {
    for (const QByteArray& answer : UselessAnswers())
        EXPECT_EQ(PortInAnswer(answer, "EXPRESS"), std::nullopt)
            << answer.left(100).toHex().constData();
}

TEST(InstanceBrowser, AsksForTheInstanceByName) {
    FakeBrowser browser;
    browser.AnswerWithPort(49172);
    EXPECT_EQ(Browse(browser).port, 49172);
    EXPECT_EQ(browser.Questions(), QList<QByteArray>({QByteArray("\4EXPRESS\0", 9)}));
}

TEST(InstanceBrowser, AsksAgainWhereNoAnswerComes) {
    const FakeBrowser browser([](int asked) -> Answers {
        if (asked < 3) return {};
        return {{FakeBrowser::Naming("EXPRESS", "49172")}};
    });
    EXPECT_EQ(Browse(browser).port, 49172);
    EXPECT_GE(browser.Questions().size(), 3);
}

TEST(InstanceBrowser, UselessAnswersAreReadPastAndBringNoQuestion) {
    for (const QByteArray& useless : UselessAnswers()) {
        const FakeBrowser browser([&useless](int) -> Answers {
            return {{useless}, {useless}, {FakeBrowser::Naming("EXPRESS", "50001")}};
        });
        EXPECT_EQ(Browse(browser).port, 50001) << useless.left(100).toHex().constData();
        EXPECT_EQ(browser.Questions().size(), 1) << useless.left(100).toHex().constData();
    }
}

TEST(InstanceBrowser, AnswersFromElsewhereDoNotCount) {
    const FakeBrowser browser([](int) -> Answers {
        return {{FakeBrowser::Naming("EXPRESS", "666"), true},
                {FakeBrowser::Naming("EXPRESS", "49172")}};
    });
    EXPECT_EQ(Browse(browser).port, 49172);
}

TEST(InstanceBrowser, SilentOneIsGivenUpAtTheEndOfTheTime) {
    const FakeBrowser browser;
    const BrowserAnswer answer = Browse(browser, 100);
    EXPECT_EQ(answer.port, std::nullopt);
    EXPECT_FALSE(answer.hostUnknown);
    EXPECT_LE(browser.Questions().size(), 1);
}

// Nobody waits for the end of the time, which is far.
TEST(InstanceBrowser, HostWithoutABrowserIsGivenUpAtOnce) {
    QString address;
    { address = FakeBrowser().Address(); }
    constexpr int aDay = 86400000;
    const BrowserAnswer answer = BrowseForPort(address, QStringLiteral("EXPRESS"), aDay);
    EXPECT_EQ(answer.port, std::nullopt);
    EXPECT_FALSE(answer.hostUnknown);
}

TEST(InstanceBrowser, UnknownHostIsToldFromASilentOne) {
    const FakeResolver resolver(FakeResolver::Names{{"nosuch.quarv.test", {}}});
    EXPECT_TRUE(BrowseForPort("nosuch.quarv.test", "EXPRESS", Patience).hostUnknown);
    EXPECT_TRUE(BrowseForPort(FakeResolver::Silent, "EXPRESS", 100).hostUnknown);
}

// One time limit for both: the question, and the connection to where the answer leads.
TEST(InstanceBrowser, InstanceThatIsNotFoundIsToldInWords) {
    const auto words = [](const QString& host) {
        return QStringLiteral(
                   "The server \"%1\" did not say where its instance \"EXPRESS\" listens. Check "
                   "the instance's name, that SQL Server Browser runs there and that the instance "
                   "takes TCP/IP connections, or write host,port.")
            .arg(host);
    };
    const auto said = [](const QString& host) {
        return OpenError(QStringLiteral("Provider=sqloledb;Data Source=%1\\EXPRESS;User Id=a;"
                                        "Password=b;Connect Timeout=1")
                             .arg(host))
            .Description();
    };
    QString nobody;
    { nobody = FakeBrowser().Address(); }
    EXPECT_EQ(said(nobody), words(nobody));
    const FakeBrowser silent;
    EXPECT_EQ(said(silent.Address()), words(silent.Address()));
    const FakeBrowser other(
        [](int) -> Answers { return {{FakeBrowser::Naming("OTHER", "49172")}}; });
    EXPECT_EQ(said(other.Address()), words(other.Address()));
    const FakeResolver resolver;
    EXPECT_TRUE(said(FakeResolver::Silent)
                    .startsWith("The server \"silent.quarv.test\" could not be found."));
}

TEST(InstanceBrowser, InstanceWhoseServerIsSilentTimesOut) {
    FakeBrowser browser;
    const FakeServer server(
        FakeServer::Settings{.manners = FakeServer::Manners::Silent, .address = browser.Address()});
    browser.AnswerWithPort(server.Port());
    EXPECT_EQ(OpenError(QStringLiteral("Provider=sqloledb;Data Source=%1\\EXPRESS;User Id=a;"
                                       "Password=b;Connect Timeout=1")
                            .arg(browser.Address()))
                  .Description(),
              QStringLiteral("\"%1\", port %2, did not answer as a SQL Server within 1 second. "
                             "Check that it is the server's port, that the server is well, and "
                             "that no firewall stands between.")
                  .arg(browser.Address())
                  .arg(server.Port()));
}

}  // namespace quarv::test
