// What programs of other makers see of this server: they log in, read rows and errors, and leave.
#include <gmock/gmock.h>

#include "ClientRuns.h"
#include "RunningServer.h"

namespace quarv::localdb::server {

using testing::HasSubstr;

TEST(ClientProgramsTest, TsqlReadsRowsAndErrors) {
    if (!HasProgram("tsql")) GTEST_SKIP() << "tsql is not installed";
    RunningServer server;
    const Output output =
        RunTsql({server.Port()}, "rows 3\ngo\nerror\ngo\nprint\ngo\nnulls\ngo\nexit\n");
    EXPECT_EQ(output.status, 0) << output.text;
    EXPECT_THAT(output.text, HasSubstr("id\tname"));
    EXPECT_THAT(output.text, HasSubstr("2\ttext"));
    EXPECT_THAT(output.text, HasSubstr("(3 rows affected)"));
    EXPECT_THAT(output.text, HasSubstr("Msg 208 (severity 16, state 1) from here Line 2:"));
    EXPECT_THAT(output.text, HasSubstr("Invalid object name 'x'."));
    EXPECT_THAT(output.text, HasSubstr("hello"));
    EXPECT_THAT(output.text, HasSubstr("NULL\tb"));
}

TEST(ClientProgramsTest, TsqlIsRefusedWithAWrongPassword) {
    if (!HasProgram("tsql")) GTEST_SKIP() << "tsql is not installed";
    RunningServer server;
    Target target{server.Port()};
    target.password = QStringLiteral("wrong");
    const Output output = RunTsql(target, "exit\n");
    EXPECT_NE(output.status, 0);
    EXPECT_THAT(output.text, HasSubstr("Msg 18456"));
    EXPECT_THAT(output.text, HasSubstr("Login failed for user 'tester'."));
}

TEST(ClientProgramsTest, BsqldbReadsManyRows) {
    if (!HasProgram("bsqldb")) GTEST_SKIP() << "bsqldb is not installed";
    RunningServer server;
    const Output output = RunBsqldb({server.Port()}, "rows 2000\n");
    EXPECT_EQ(output.status, 0) << output.text.substr(0, 2000);
    EXPECT_THAT(output.text, HasSubstr("1999"));
}

}  // namespace quarv::localdb::server
