// What a client was told is committed is there after the server's sudden end, and nothing is there
// by halves, at whatever moment it came.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <map>
#include <random>
#include <thread>

#include "RunningProgram.h"
#include "TestClient.h"
#include "localdb/tds/NumericValues.h"

namespace quarv::localdb::server {

namespace {

constexpr int Kills = 100;
constexpr int LongestMicroseconds = 60'000;  // of writing before a kill
constexpr int RowsOfGroup = 3;

// Writes groups of rows, each by one of three ways, until the server is gone.
class Writer {
  public:
    // The groups that the server has acknowledged.
    const std::vector<int>& Committed() const { return committed_; }
    // The group that was under way at the last kill; it may be there as a whole.
    int UnderWay() const { return next_; }

    void Run(TestClient& client) {
        while (Write(client)) committed_.push_back(next_++);
    }
    // Behind a group that may or may not be there.
    void Skip() { ++next_; }

  private:
    bool Write(TestClient& client) {
        const QString g = QString::number(next_);
        switch (next_ % 3) {
            case 0:
                return Acknowledged(
                    client, QStringLiteral("insert into load values (%1,0),(%1,1),(%1,2)").arg(g));
            case 1:
                return Acknowledged(client, QStringLiteral("begin transaction")) &&
                       Acknowledged(client,
                                    QStringLiteral("insert into load values (%1,0)").arg(g)) &&
                       Acknowledged(client,
                                    QStringLiteral("insert into load select %1, part + 1 from "
                                                   "load where grp = %1")
                                        .arg(g)) &&
                       Acknowledged(client,
                                    QStringLiteral("insert into load values (%1,2)").arg(g)) &&
                       Acknowledged(client, QStringLiteral("commit"));
            default:
                return Acknowledged(client,
                                    QStringLiteral("begin transaction "
                                                   "create table made_%1 (id int) "
                                                   "insert into load values (%1,0),(%1,1),(%1,2) "
                                                   "commit")
                                        .arg(g));
        }
    }

    static bool Acknowledged(TestClient& client, const QString& sql) {
        const auto reply = client.Run(sql);
        if (!reply) return false;
        EXPECT_TRUE(reply->messages.empty()) << reply->messages[0].text.toStdString();
        return !reply->dones.empty() && (reply->dones.back().status & tds::Done::Error) == 0;
    }

    std::vector<int> committed_;
    int next_ = 0;
};

int64_t Number(const tds::RawValue& value) {
    return tds::ReadInteger(value.Bytes());
}

// How many rows each group has.
std::map<int, int64_t> GroupsOf(TestClient& client) {
    std::map<int, int64_t> groups;
    const auto reply = client.Run(QStringLiteral("select grp, count(*) from load group by grp"));
    if (!reply) return groups;
    for (const tds::Row& row : reply->rows) {
        groups[static_cast<int>(Number(row.values[0]))] = Number(row.values[1]);
    }
    return groups;
}

bool HasTable(TestClient& client, int group) {
    const auto reply = client.Run(QStringLiteral("select count(*) from made_%1").arg(group));
    return reply && reply->messages.empty();
}

class KilledServerTest : public testing::Test {
  protected:
    static tds::Login7 LoginTo(const char* database) {
        tds::Login7 login = TestClient::GoodLogin();
        login.database = QString::fromLatin1(database);
        return login;
    }

    // Writes until a moment of the random generator's choosing ends the server.
    void WriteUntilKilled(RunningProgram& server) {
        TestClient client(server.Port());
        ASSERT_TRUE(client.LogIn(LoginTo("kept"))->ack);
        const auto moment =
            std::chrono::microseconds(random_() % static_cast<unsigned>(LongestMicroseconds));
        std::thread killer([&server, moment] {
            std::this_thread::sleep_for(moment);
            ::kill(server.Pid(), SIGKILL);
        });
        writer_.Run(client);
        killer.join();
        server.Kill();
    }

    void ExpectAllIsThere(const RunningProgram& server) {
        ASSERT_GT(server.Port(), 0) << "the server does not start again";
        TestClient client(server.Port());
        const auto reply = client.LogIn(LoginTo("kept"));
        ASSERT_TRUE(reply && reply->ack) << "the database does not open";
        const std::map<int, int64_t> groups = GroupsOf(client);
        for (const auto& [group, rows] : groups) {
            EXPECT_EQ(rows, RowsOfGroup) << "group " << group << " is there by halves";
            EXPECT_LE(group, writer_.UnderWay());
        }
        for (const int group : writer_.Committed()) {
            ASSERT_TRUE(groups.contains(group)) << "group " << group << " is lost";
        }
        for (int group = std::max(0, writer_.UnderWay() - 3); group <= writer_.UnderWay();
             ++group) {
            if (group % 3 != 2) continue;
            EXPECT_EQ(HasTable(client, group), groups.contains(group)) << group;
        }
        writer_.Skip();
    }

    QTemporaryDir home_;
    std::mt19937 random_{2024};
    Writer writer_;
};

}  // namespace

TEST_F(KilledServerTest, NothingCommittedIsLostAndNothingIsThereByHalves) {
    {
        RunningProgram server(home_.path());
        TestClient client(server.Port());
        ASSERT_TRUE(client.LogIn(LoginTo("master"))->ack);
        ASSERT_TRUE(client.Run(QStringLiteral("create database kept"))->messages.empty());
        client.Run(QStringLiteral("use kept"));
        ASSERT_TRUE(
            client
                .Run(QStringLiteral("create table load (grp int not null, part int not null,"
                                    " primary key (grp, part))"))
                ->messages.empty());
        EXPECT_EQ(server.Stop(), 0);
    }
    for (int round = 0; round < Kills && !HasFailure(); ++round) {
        SCOPED_TRACE("kill " + std::to_string(round));
        RunningProgram server(home_.path());
        ExpectAllIsThere(server);
        if (HasFatalFailure()) return;
        WriteUntilKilled(server);
    }
    RunningProgram server(home_.path());
    ExpectAllIsThere(server);
    EXPECT_GT(writer_.Committed().size(), 100u);
    EXPECT_EQ(server.Stop(), 0);
}

}  // namespace quarv::localdb::server
