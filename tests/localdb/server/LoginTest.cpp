#include <gmock/gmock.h>

#include "RunningServer.h"

namespace quarv::localdb::server {

namespace {

using testing::ElementsAre;

std::vector<int> Numbers(const Reply& reply) {
    std::vector<int> numbers;
    for (const auto& message : reply.messages) numbers.push_back(message.number);
    return numbers;
}

}  // namespace

TEST(LoginTest, PreloginIsAnsweredWithoutEncryption) {
    RunningServer server;
    TestClient client(server.Port());
    const auto reply = client.Prelogin();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->encryption, tds::Encryption::NotSupported);
    EXPECT_EQ(reply->version, (tds::ProgramVersion{16, 0, 1000}));
}

TEST(LoginTest, ReplyHasItsTokensInTheirOrder) {
    RunningServer server;
    TestClient client(server.Port());
    const auto reply = client.LogIn();
    ASSERT_TRUE(reply);
    EXPECT_THAT(reply->tokens, ElementsAre(0xE3, 0xAB, 0xE3, 0xE3, 0xAB, 0xAD, 0xE3, 0xFD));
    EXPECT_THAT(Numbers(*reply), ElementsAre(5701, 5703));
    EXPECT_EQ(reply->messages[0].text, QStringLiteral("Changed database context to 'master'."));
    EXPECT_EQ(reply->messages[1].text, QStringLiteral("Changed language setting to us_english."));
    EXPECT_EQ(reply->changes[0].newText, QStringLiteral("master"));
    EXPECT_EQ(reply->changes[1].newBytes, QByteArray::fromHex("0904D00034"));
    EXPECT_EQ(reply->changes[2].newText, QStringLiteral("us_english"));
    EXPECT_EQ(reply->changes[3].newText, QStringLiteral("4096"));
    EXPECT_EQ(reply->ack->tdsVersion, 0x74000004u);
    EXPECT_EQ(reply->ack->version, (tds::ProgramVersion{16, 0, 1000}));
    EXPECT_EQ(reply->dones[0].status, 0);
    EXPECT_GE(reply->spid, 51);
}

TEST(LoginTest, NamedDatabaseBecomesCurrent) {
    RunningServer server;
    TestClient client(server.Port());
    tds::Login7 login = TestClient::GoodLogin();
    login.database = QStringLiteral("mirel");
    const auto reply = client.LogIn(login);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->changes[0].newText, QStringLiteral("mirel"));
    EXPECT_EQ(reply->changes[0].oldText, QStringLiteral("master"));
}

TEST(LoginTest, LoginWithoutPreloginIsServed) {
    RunningServer server;
    TestClient client(server.Port());
    client.Send(tds::PacketType::Login7, TestClient::Body(TestClient::GoodLogin()));
    const auto reply = client.Receive();
    ASSERT_TRUE(reply);
    EXPECT_TRUE(reply->ack);
}

TEST(LoginTest, LoginNameIsKnownInAnyLetterCase) {
    RunningServer server;
    TestClient client(server.Port());
    tds::Login7 login = TestClient::GoodLogin();
    login.userName = QStringLiteral("TESTER");
    EXPECT_TRUE(client.LogIn(login)->ack);
}

struct Refusal {
    const char* name;
    void (*change)(tds::Login7& login);
    std::vector<int> numbers;
    const char* text;  // of the first message
};

class RefusedLogins : public testing::TestWithParam<Refusal> {};

TEST_P(RefusedLogins, AreToldWhyAndClosed) {
    RunningServer server;
    TestClient client(server.Port());
    tds::Login7 login = TestClient::GoodLogin();
    GetParam().change(login);
    const auto reply = client.LogIn(login);
    ASSERT_TRUE(reply);
    EXPECT_FALSE(reply->ack);
    EXPECT_EQ(Numbers(*reply), GetParam().numbers);
    EXPECT_EQ(reply->messages[0].text, QString::fromLatin1(GetParam().text));
    ASSERT_EQ(reply->dones.size(), 1u);
    EXPECT_EQ(reply->dones[0].status, tds::Done::Error);
    EXPECT_TRUE(client.IsClosed());
    TestClient next(server.Port());
    EXPECT_TRUE(next.LogIn()->ack);
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedLogins,
    testing::Values(
        Refusal{"WrongSecret",
                [](tds::Login7& l) { l.password = QStringLiteral("Right"); },
                {18456},
                "Login failed for user 'tester'."},
        Refusal{"NoSecret",
                [](tds::Login7& l) { l.password.clear(); },
                {18456},
                "Login failed for user 'tester'."},
        Refusal{"UnknownName",
                [](tds::Login7& l) { l.userName = QStringLiteral("x"); },
                {18456},
                "Login failed for user 'x'."},
        Refusal{"NoName",
                [](tds::Login7& l) { l.userName.clear(); },
                {18456},
                "Login failed for user ''."},
        Refusal{"UnknownDatabase",
                [](tds::Login7& l) { l.database = QStringLiteral("nowhere"); },
                {4060, 18456},
                "Cannot open database \"nowhere\" requested by the login. The login failed."},
        Refusal{"Integrated",
                [](tds::Login7& l) { l.flags2 = 0x80; },
                {18452},
                "Login failed. The login is from an untrusted domain and cannot be used with "
                "Integrated authentication."},
        Refusal{"NewerProtocol",
                [](tds::Login7& l) { l.tdsVersion = 0x75000000; },
                {40517},
                "Keyword or statement option 'TDS version 0x75000000' is not supported in this "
                "version of SQL Server."},
        Refusal{"AttachedFile",
                [](tds::Login7& l) { l.attachFile = QStringLiteral("f"); },
                {40517},
                "Keyword or statement option 'AttachDBFilename' is not supported in this version "
                "of SQL Server."},
        Refusal{"NewPassword",
                [](tds::Login7& l) { l.newPassword = QStringLiteral("f"); },
                {40517},
                "Keyword or statement option 'change of password at login' is not supported in "
                "this version of SQL Server."}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(LoginTest, LogHoldsTheNameAndNoSecret) {
    RunningServer server;
    TestClient client(server.Port());
    tds::Login7 login = TestClient::GoodLogin();
    login.userName = QStringLiteral("a\nforged line");
    login.password = QStringLiteral("hunter2");
    client.LogIn(login);
    const QString log = server.LogText();
    EXPECT_TRUE(log.contains(QStringLiteral("a?forged line")));
    EXPECT_FALSE(log.contains(QStringLiteral("hunter2")));
    EXPECT_EQ(log.count(u'\n'), 1);
}

struct SizeWish {
    uint32_t wish;
    size_t granted;
};

class PacketSizes : public testing::TestWithParam<SizeWish> {};

TEST_P(PacketSizes, AreGrantedWithinTheirBounds) {
    RunningServer server;
    TestClient client(server.Port());
    tds::Login7 login = TestClient::GoodLogin();
    login.packetSize = GetParam().wish;
    const auto reply = client.LogIn(login);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->changes[3].newText, QString::number(GetParam().granted));
    const auto rows = client.Run(QStringLiteral("wide"));
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->rows.size(), 100u);
    EXPECT_EQ(rows->largestPacket, GetParam().granted);
}

INSTANTIATE_TEST_SUITE_P(All, PacketSizes,
                         testing::Values(SizeWish{0, 4096}, SizeWish{1, 512}, SizeWish{512, 512},
                                         SizeWish{8000, 8000}, SizeWish{32767, 32767},
                                         SizeWish{0xFFFFFFFF, 32767}));

}  // namespace quarv::localdb::server
