#include "localdb/server/Account.h"

#include <gtest/gtest.h>

namespace quarv::localdb::server {

TEST(AccountTest, AdmitsNameInAnyCaseAndTheExactPassword) {
    const Account account(QStringLiteral("Sa"), QStringLiteral("Secret"));
    EXPECT_TRUE(account.Admits(QStringLiteral("sA"), QStringLiteral("Secret")));
    EXPECT_FALSE(account.Admits(QStringLiteral("sa"), QStringLiteral("secret")));
    EXPECT_FALSE(account.Admits(QStringLiteral("sa"), QStringLiteral("Secret ")));
    EXPECT_FALSE(account.Admits(QStringLiteral("sa"), QString()));
    EXPECT_FALSE(account.Admits(QString(), QStringLiteral("Secret")));
}

TEST(AccountTest, EmptyAccountAdmitsNoOne) {
    EXPECT_FALSE(Account().Admits(QString(), QString()));
}

}  // namespace quarv::localdb::server
