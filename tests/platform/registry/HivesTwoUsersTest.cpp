// One machine-wide hive and two users, each with a home of his own. Where the test is root they are
// two users to the kernel as well.
#include <fcntl.h>

#include "platform/registry/InChild.h"
#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

constexpr char General[] = "Software\\Kel\\Quarv\\General";

struct User {
    uid_t id;
    HivePaths paths;
};

class HivesTwoUsersTest : public RegistryHome {
  protected:
    HivesTwoUsersTest()
        : ada_(MakeUser("ada", OrdinaryUser)), bo_(MakeUser("bo", OrdinaryUser - 1)) {
        Hives installer = NewHives();
        Set(installer, HKEY_LOCAL_MACHINE, General, "ConnStr", "for all");
        Set(installer, HKEY_LOCAL_MACHINE, General, "Other", "for all too");
        Ship();
    }
    ~HivesTwoUsersTest() override { Protect(0755, 0600); }

    User MakeUser(const char* name, uid_t id) {
        const QByteArray home = QFile::encodeName(folder_.path()) + '/' + name;
        ::mkdir(home.constData(), 0700);
        if (::geteuid() == 0 && ::chown(home.constData(), id, id) != 0) ADD_FAILURE() << "chown";
        return {.id = id,
                .paths = {.user = home + "/quarv/user.hive",
                          .machine = paths_.machine,
                          .overlay = home + "/quarv/machine-overlay.hive"}};
    }

    void Protect(mode_t folder, mode_t file) {
        ::chmod(paths_.machine.first(paths_.machine.lastIndexOf('/')).constData(), folder);
        ::chmod(paths_.machine.constData(), file);
    }
    // As an installer leaves it: for all to read, for none of them to write.
    void Ship() { Protect(0555, 0644); }

    // Whether the user, in a process of his own, found `body` true.
    testing::AssertionResult As(const User& user, const std::function<bool(Hives&)>& body) {
        const int status = RunInChild([&] {
            if (!BecomeOrdinaryUser(user.id)) return 2;
            Hives hives(user.paths, [](const QString&) {});
            return body(hives) ? 0 : 1;
        });
        if (status == 0) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "status " << status;
    }
    testing::AssertionResult Reads(const User& user, const char* name, const QByteArray& text) {
        return As(user, [&](Hives& hives) {
            return Get(hives, HKEY_LOCAL_MACHINE, General, name) == text;
        });
    }
    testing::AssertionResult Writes(const User& user, const char* name, const QByteArray& text) {
        return As(user, [&](Hives& hives) {
            return Set(hives, HKEY_LOCAL_MACHINE, General, name, text) == ERROR_SUCCESS;
        });
    }

    static void ExpectPrivate(const User& user) {
        struct stat there {};
        ASSERT_EQ(0, ::stat(user.paths.overlay.constData(), &there));
        EXPECT_EQ(0600u, there.st_mode & 07777u);
        EXPECT_EQ(::geteuid() == 0 ? user.id : ::geteuid(), there.st_uid);
    }

    User ada_;
    User bo_;
};

TEST_F(HivesTwoUsersTest, WhatAnInstallerShippedIsReadByAll) {
    EXPECT_TRUE(Reads(ada_, "ConnStr", "for all"));
    EXPECT_TRUE(Reads(bo_, "ConnStr", "for all"));
    EXPECT_FALSE(Exists(ada_.paths.overlay));
    EXPECT_FALSE(Exists(bo_.paths.overlay));
}

TEST_F(HivesTwoUsersTest, EachReadsHisOwnAndNotTheOthers) {
    const QByteArray before = FileBytes(paths_.machine);
    EXPECT_TRUE(Writes(ada_, "ConnStr", "Ada's"));
    EXPECT_TRUE(Reads(ada_, "ConnStr", "Ada's"));
    EXPECT_TRUE(Reads(bo_, "ConnStr", "for all"));
    EXPECT_TRUE(Writes(bo_, "ConnStr", "Bo's"));
    EXPECT_TRUE(Reads(ada_, "ConnStr", "Ada's"));
    EXPECT_TRUE(Reads(bo_, "ConnStr", "Bo's"));
    EXPECT_TRUE(Reads(bo_, "Other", "for all too"));
    ExpectPrivate(ada_);
    ExpectPrivate(bo_);
    EXPECT_EQ(before, FileBytes(paths_.machine));
}

TEST_F(HivesTwoUsersTest, AnOverlayIsClosedToTheOther) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can be two users";
    EXPECT_TRUE(Writes(ada_, "ConnStr", "Password=secret;"));
    ::chmod((QFile::encodeName(folder_.path()) + "/ada").constData(), 0755);
    ::chmod((QFile::encodeName(folder_.path()) + "/ada/quarv").constData(), 0755);
    EXPECT_TRUE(As(bo_, [&](Hives&) {
        return ::open(ada_.paths.overlay.constData(), O_RDONLY) < 0 && errno == EACCES;
    }));
    // Pointed at it, his reads see what is there for all, and his writes leave it alone.
    const User prying{.id = bo_.id, .paths = ada_.paths};
    EXPECT_TRUE(Reads(prying, "ConnStr", "for all"));
    EXPECT_FALSE(Writes(prying, "ConnStr", "Bo's"));
    EXPECT_TRUE(Reads(ada_, "ConnStr", "Password=secret;"));
}

TEST_F(HivesTwoUsersTest, AnOverlayWinsOverWhatOneWithRightsWroteLater) {
    EXPECT_TRUE(Writes(ada_, "ConnStr", "Ada's"));
    Protect(0755, 0644);
    Hives administrator = NewHives();
    EXPECT_EQ(ERROR_SUCCESS, Set(administrator, HKEY_LOCAL_MACHINE, General, "ConnStr", "new"));
    EXPECT_EQ(ERROR_SUCCESS, Set(administrator, HKEY_LOCAL_MACHINE, General, "Other", "new too"));
    Ship();
    EXPECT_TRUE(Reads(ada_, "ConnStr", "Ada's"));
    EXPECT_TRUE(Reads(ada_, "Other", "new too"));
    EXPECT_TRUE(Reads(bo_, "ConnStr", "new"));
    EXPECT_EQ("new", Get(administrator, HKEY_LOCAL_MACHINE, General, "ConnStr"));
}

TEST_F(HivesTwoUsersTest, WhatOneWithRightsWroteIsHisUntilHeOpensItToAll) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can be two users";
    Hives administrator = NewHives();
    Set(administrator, HKEY_LOCAL_MACHINE, General, "ConnStr", "Password=secret;");
    EXPECT_TRUE(Reads(ada_, "ConnStr", "(code 2)"));
    EXPECT_TRUE(Writes(ada_, "ConnStr", "Ada's"));
    EXPECT_TRUE(Reads(ada_, "ConnStr", "Ada's"));
    EXPECT_EQ("Password=secret;", Get(administrator, HKEY_LOCAL_MACHINE, General, "ConnStr"));
}

}  // namespace
}  // namespace quarv::registry
