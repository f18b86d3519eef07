#include <gmock/gmock.h>
#include <sys/resource.h>

#include <list>

#include "RunningServer.h"
#include "localdb/tds/SqlBatch.h"

namespace quarv::localdb::server {

namespace {

std::vector<std::byte> Bytes(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

// Prelogin and login as they go over the wire.
std::vector<std::byte> WholeLogin() {
    tds::BufferWriter prelogin;
    tds::Prelogin{}.Encode(prelogin);
    auto bytes = TestClient::Packet(tds::PacketType::Prelogin, prelogin.Written());
    const auto login =
        TestClient::Packet(tds::PacketType::Login7, TestClient::Body(TestClient::GoodLogin()));
    bytes.insert(bytes.end(), login.begin(), login.end());
    return bytes;
}

void AllowDescriptors(rlim_t count) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min(count, limit.rlim_max);
    setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

TEST(HostileClientsTest, GarbageIsClosedAtOnce) {
    RunningServer server;
    for (const char* text : {"GET / HTTP/1.1\r\n\r\n", "\x16\x03\x01\x02\x00\x01\x00\x01",
                             "\x01\x01\xFF\xFF\x00\x00\x00\x00", "\x12\x01\x00\x01\x00\x00\x00"}) {
        TestClient client(server.Port());
        client.SendBytes(Bytes(std::string_view(text, std::max<size_t>(8, strlen(text)))));
        EXPECT_TRUE(client.IsClosed());
    }
    TestClient client(server.Port());
    EXPECT_TRUE(client.LogIn()->ack);
}

TEST(HostileClientsTest, RequestBeforeTheLoginIsClosed) {
    RunningServer server;
    TestClient client(server.Port());
    client.SendBatch(QStringLiteral("rows 1"));
    EXPECT_TRUE(client.IsClosed());
    EXPECT_TRUE(server.Engine().Ran().isEmpty());
}

TEST(HostileClientsTest, LoginCutAtEveryByteHurtsNoOne) {
    RunningServer server;
    TestClient other(server.Port());
    ASSERT_TRUE(other.LogIn()->ack);
    const auto bytes = WholeLogin();
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        TestClient client(server.Port());
        client.SendBytes(std::span(bytes).first(cut));
    }
    EXPECT_EQ(other.Run(QStringLiteral("rows 2"))->rows.size(), 2u);
    EXPECT_TRUE(Eventually([&] { return server.Engine().Sessions() == 1; }));
}

TEST(HostileClientsTest, LoginByteByByteIsServed) {
    RunningServer server;
    TestClient client(server.Port());
    for (const std::byte b : WholeLogin()) client.SendBytes({&b, 1});
    ASSERT_TRUE(client.ReceivePrelogin());
    const auto reply = client.Receive();
    ASSERT_TRUE(reply);
    EXPECT_TRUE(reply->ack);
}

TEST(HostileClientsTest, LoginThatNeverEndsIsClosedByItsSize) {
    RunningServer server;
    TestClient client(server.Port());
    const std::vector<std::byte> body(4000);
    for (int i = 0; i < 100; ++i) client.Send(tds::PacketType::Login7, body, 0);
    EXPECT_TRUE(client.IsClosed());
}

TEST(HostileClientsTest, SilentConnectionIsClosedAfterItsTime) {
    Settings settings = TestSettings();
    settings.loginTime = std::chrono::milliseconds(50);
    RunningServer server(settings);
    TestClient silent(server.Port());
    TestClient halfway(server.Port());
    ASSERT_TRUE(halfway.Prelogin());
    EXPECT_TRUE(silent.IsClosed());
    EXPECT_TRUE(halfway.IsClosed());
}

TEST(HostileClientsTest, ThousandSilentConnectionsKeepNoOneOut) {
    AllowDescriptors(4096);
    Settings settings = TestSettings();
    settings.largestPending = 500;
    settings.loginTime = std::chrono::minutes(10);
    RunningServer server(settings);
    std::list<TestClient> silent;
    for (int i = 0; i < 1000; ++i) silent.emplace_back(server.Port());
    TestClient client(server.Port());
    const auto reply = client.LogIn();
    ASSERT_TRUE(reply);
    EXPECT_TRUE(reply->ack);
    EXPECT_EQ(client.Run(QStringLiteral("rows 2"))->rows.size(), 2u);
    // The oldest had to make room.
    EXPECT_TRUE(silent.front().IsClosed());
}

TEST(HostileClientsTest, SessionBeyondTheLimitIsToldAndClosed) {
    Settings settings = TestSettings();
    settings.largestSessions = 2;
    RunningServer server(settings);
    TestClient first(server.Port());
    auto second = std::make_unique<TestClient>(server.Port());
    ASSERT_TRUE(first.LogIn()->ack);
    ASSERT_TRUE(second->LogIn()->ack);
    TestClient third(server.Port());
    const auto refused = third.LogIn();
    ASSERT_TRUE(refused);
    EXPECT_TRUE(refused->Has(17809));
    EXPECT_TRUE(third.IsClosed());
    second.reset();
    ASSERT_TRUE(Eventually([&] { return server.Engine().Sessions() == 1; }));
    EXPECT_TRUE(Eventually([&] {
        TestClient fourth(server.Port());
        const auto reply = fourth.LogIn();
        return reply && reply->ack;
    }));
}

TEST(HostileClientsTest, DisconnectInMidResultEndsTheStatement) {
    RunningServer server;
    TestClient other(server.Port());
    ASSERT_TRUE(other.LogIn()->ack);
    for (const char* sql : {"endless", "busy"}) {
        SCOPED_TRACE(sql);
        auto client = std::make_unique<TestClient>(server.Port());
        ASSERT_TRUE(client->LogIn()->ack);
        client->SendBatch(QString::fromLatin1(sql));
        ASSERT_TRUE(Eventually([&] {
            return server.Engine().Ran().contains(QStringLiteral("batch:") +
                                                  QString::fromLatin1(sql));
        }));
        client.reset();
        EXPECT_TRUE(Eventually([&] { return server.Engine().Sessions() == 1; }));
    }
    EXPECT_EQ(other.Run(QStringLiteral("rows 2"))->rows.size(), 2u);
}

TEST(HostileClientsTest, ClientThatDoesNotReadHoldsBackItsOwnRowsOnly) {
    RunningServer server;
    TestClient lazy(server.Port());
    ASSERT_TRUE(lazy.LogIn()->ack);
    lazy.SendBatch(QStringLiteral("endless"));
    int64_t sent = -1;
    // Rows stop coming once the buffers between the two are full.
    ASSERT_TRUE(Eventually([&] {
        const int64_t before = server.Engine().RowsSent();
        QThread::msleep(100);
        sent = server.Engine().RowsSent();
        return sent > 0 && sent == before;
    }));
    TestClient other(server.Port());
    EXPECT_TRUE(other.LogIn()->ack);
    EXPECT_EQ(other.Run(QStringLiteral("rows 2"))->rows.size(), 2u);
    // An attention is seen even then.
    lazy.SendAttention();
    ASSERT_TRUE(lazy.Receive());
    const auto ack = lazy.Receive();
    ASSERT_TRUE(ack);
    EXPECT_EQ(ack->dones[0].status, tds::Done::Attention);
}

TEST(HostileClientsTest, EndOfTheServerEndsRunningStatements) {
    RunningServer server;
    TestClient busy(server.Port());
    TestClient rows(server.Port());
    TestClient idle(server.Port());
    ASSERT_TRUE(busy.LogIn()->ack);
    ASSERT_TRUE(rows.LogIn()->ack);
    ASSERT_TRUE(idle.LogIn()->ack);
    busy.SendBatch(QStringLiteral("busy"));
    rows.SendBatch(QStringLiteral("endless"));
    ASSERT_TRUE(Eventually([&] { return server.Engine().Ran().size() == 2; }));
    server.Stop();
    EXPECT_EQ(server.Engine().Sessions(), 0);
    EXPECT_TRUE(idle.IsClosed());
}

struct BadRequest {
    const char* name;
    std::vector<std::byte> packet;
    bool told;  // with a message before the end
};

class BadRequests : public testing::TestWithParam<BadRequest> {};

TEST_P(BadRequests, EndTheirSessionAlone) {
    RunningServer server;
    TestClient other(server.Port());
    ASSERT_TRUE(other.LogIn()->ack);
    TestClient client(server.Port());
    ASSERT_TRUE(client.LogIn()->ack);
    client.SendBytes(GetParam().packet);
    const auto reply = client.Receive();
    EXPECT_EQ(reply.has_value(), GetParam().told);
    if (reply) {
        EXPECT_TRUE(reply->Has(4002));
    }
    EXPECT_TRUE(client.IsClosed());
    EXPECT_EQ(other.Run(QStringLiteral("rows 2"))->rows.size(), 2u);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadRequests,
    testing::Values(
        BadRequest{"NoHeaders", TestClient::Packet(tds::PacketType::Batch, {}), true},
        BadRequest{"HeadersBeyondTheEnd",
                   TestClient::Packet(tds::PacketType::Batch,
                                      Bytes(std::string_view("\xFF\xFF\xFF\x7F", 4))),
                   true},
        BadRequest{"EmptyCall", TestClient::Packet(tds::PacketType::Rpc, {}), true},
        BadRequest{"EmptyTransactionRequest", TestClient::Packet(tds::PacketType::Transaction, {}),
                   true},
        BadRequest{
            "SecondLogin",
            TestClient::Packet(tds::PacketType::Login7, TestClient::Body(TestClient::GoodLogin())),
            true},
        BadRequest{"UnknownPacket", Bytes(std::string_view("\x55\x01\x00\x08\x00\x00\x01\x00", 8)),
                   true},
        BadRequest{"PacketTooShort", Bytes(std::string_view("\x01\x01\x00\x07\x00\x00\x01\x00", 8)),
                   true},
        BadRequest{"PacketTooLong", Bytes(std::string_view("\x01\x01\xFF\xFF\x00\x00\x01\x00", 8)),
                   true}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(HostileClientsTest, RequestBeyondItsLimitIsRefused) {
    Settings settings = TestSettings();
    settings.largestRequest = 10'000;
    RunningServer server(settings);
    TestClient client(server.Port());
    ASSERT_TRUE(client.LogIn()->ack);
    const std::vector<std::byte> body(4000);
    for (int i = 0; i < 3; ++i) client.Send(tds::PacketType::Batch, body, 0);
    const auto reply = client.Receive();
    ASSERT_TRUE(reply);
    EXPECT_TRUE(reply->Has(4002));
    EXPECT_TRUE(client.IsClosed());
}

TEST(HostileClientsTest, ValueThatItsColumnCannotCarryNeverLooksWhole) {
    RunningServer server;
    TestClient client(server.Port());
    ASSERT_TRUE(client.LogIn()->ack);
    EXPECT_FALSE(client.Run(QStringLiteral("overlong")));
    EXPECT_TRUE(client.IsClosed());
}

TEST(HostileClientsTest, ServerEndsWhenItIsIdle) {
    Settings settings = TestSettings();
    settings.idleTime = std::chrono::milliseconds(100);
    RunningServer server(settings);
    {
        TestClient client(server.Port());
        ASSERT_TRUE(client.LogIn()->ack);
        QThread::msleep(200);
        // Not while someone is there, however silent.
        EXPECT_EQ(client.Run(QStringLiteral("rows 2"))->rows.size(), 2u);
    }
    server.Join();
    EXPECT_EQ(server.Engine().Sessions(), 0);
}

}  // namespace quarv::localdb::server
