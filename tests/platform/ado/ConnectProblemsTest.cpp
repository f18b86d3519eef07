#include "platform/ado/ConnectProblems.h"

#include "platform/ado/ErrorOf.h"

namespace quarv::test {

using ado::ConnectProblem;

TEST(ConnectProblems, EveryCauseHasWords) {
    const int last = static_cast<int>(ConnectProblem::LocalServerUnreadable);
    for (int i = 0; i <= last; ++i) {
        const DataError error =
            ado::MakeConnectError(static_cast<ConnectProblem>(i), {"one", "two", "three"});
        EXPECT_GT(error.Description().size(), 20) << i;
        EXPECT_FALSE(error.Description().contains(u'%')) << i;
        EXPECT_LT(error.Number(), 0) << i;
    }
}

TEST(ConnectProblems, DetailsAreNotReadForMarks) {
    const DataError error = ado::MakeConnectError(ConnectProblem::NothingListens, {"%2%1", "1433"});
    EXPECT_TRUE(error.Description().startsWith("Nothing answers at \"%2%1\", port 1433."));
}

TEST(ConnectProblems, EndlessNamesAreCutAndMessagesAreNot) {
    const DataError unknown = MakeConnectError(ConnectProblem::UnknownHost, {QString(261, u'h')});
    EXPECT_TRUE(
        unknown.Description().contains(u'"' + QString(260, u'h') + QStringLiteral("\u2026\"")));
    const DataError known = MakeConnectError(ConnectProblem::UnknownHost, {QString(260, u'h')});
    EXPECT_TRUE(known.Description().contains(u'"' + QString(260, u'h') + u'"'));
    const DataError paired =
        MakeConnectError(ConnectProblem::UnknownHost, {QString(259, u'h') + u"\U0001F375xy"_qs});
    EXPECT_TRUE(
        paired.Description().contains(u'"' + QString(259, u'h') + QStringLiteral("\u2026\"")));
    const DataError ticket =
        MakeConnectError(ConnectProblem::WindowsAccountFailed, {QString(300, u'h'), "1433"});
    EXPECT_FALSE(ticket.Description().contains(QString(261, u'h')));
    const DataError refused = MakeConnectError(ConnectProblem::LoginRefused, {QString(900, u'm')});
    EXPECT_TRUE(refused.Description().startsWith(QString(900, u'm') + u' '));
}

TEST(ConnectProblems, DriversReportIsKept) {
    const DataError error = ado::MakeConnectError(ConnectProblem::LoginRefused,
                                                  {"Login failed for user 'x'."}, {"42000", 18456});
    EXPECT_EQ(error.Number(), -2147217843);
    EXPECT_EQ(error.Description(),
              QStringLiteral("Login failed for user 'x'. Check the user name and the password."));
    EXPECT_EQ(error.SqlState(), QStringLiteral("42000"));
    EXPECT_EQ(error.NativeError(), 18456);
}

}  // namespace quarv::test
