// The machine-wide hive as one user meets it: writable, blocked, another's.
#include "platform/registry/InChild.h"
#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

constexpr char General[] = "Software\\Kel\\Quarv\\General";

class HivesOverlayTest : public RegistryHome {};

TEST_F(HivesOverlayTest, AWritableMachineHiveNeedsNoOverlay) {
    Hives hives = NewHives();
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_LOCAL_MACHINE, General, "ConnStr", "x"));
    EXPECT_TRUE(Exists(paths_.machine));
    EXPECT_FALSE(Exists(paths_.overlay));
    EXPECT_EQ("x", Get(hives, HKEY_LOCAL_MACHINE, General, "ConnStr"));
}

TEST_F(HivesOverlayTest, AWriteToABlockedMachineHiveGoesToTheOverlay) {
    BlockMachineHive();
    Hives hives = NewHives();
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_LOCAL_MACHINE, General, "ConnStr", "mine"));
    EXPECT_TRUE(Exists(paths_.overlay));
    EXPECT_EQ("mine", Get(hives, HKEY_LOCAL_MACHINE, General, "ConnStr"));
    Hives other = NewHives();
    EXPECT_EQ("mine", Get(other, HKEY_LOCAL_MACHINE, General, "ConnStr"));
    EXPECT_EQ("(code 2)", Get(other, HKEY_CURRENT_USER, General, "ConnStr"));
    EXPECT_EQ(QStringList(), reports_);
}

TEST_F(HivesOverlayTest, AMachineHiveThatIsAFolderGivesWayWhereItCanBeSetAside) {
    QDir().mkpath(QFile::decodeName(paths_.machine) + "/kept");
    Hives hives = NewHives();
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_LOCAL_MACHINE, General, "ConnStr", "x"));
    EXPECT_EQ("x", Get(hives, HKEY_LOCAL_MACHINE, General, "ConnStr"));
    EXPECT_TRUE(Exists(paths_.machine + ".damaged-1/kept"));
}

TEST_F(HivesOverlayTest, AWriteThatReachesTheMachineHiveIsNotHiddenByTheOverlay) {
    PutFile(paths_.overlay, "quarv-hive 1\nkey \"K\"\nvalue \"v\" text \"old mine\"\nend\n");
    Hives hives = NewHives();
    EXPECT_EQ("old mine", Get(hives, HKEY_LOCAL_MACHINE, "K", "v"));
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_LOCAL_MACHINE, "K", "v", "for all"));
    EXPECT_EQ("for all", Get(hives, HKEY_LOCAL_MACHINE, "K", "v"));
    EXPECT_FALSE(FileBytes(paths_.overlay).contains("old mine"));
}

TEST_F(HivesOverlayTest, ADamagedOverlayLeavesTheMachineHiveInSight) {
    Hives hives = NewHives();
    Set(hives, HKEY_LOCAL_MACHINE, "K", "v", "for all");
    PutFile(paths_.overlay, "rubbish");
    EXPECT_EQ("for all", Get(hives, HKEY_LOCAL_MACHINE, "K", "v"));
    EXPECT_EQ("rubbish", FileBytes(paths_.overlay + ".damaged-1"));
}

// What an ordinary user does, in a child that is one. Each line that fails has its own status.
class TwoUsersTest : public RegistryHome {
  protected:
    TwoUsersTest() {
        Hives administrator = NewHives();
        Set(administrator, HKEY_LOCAL_MACHINE, "K", "shared", "for all");
        Set(administrator, HKEY_LOCAL_MACHINE, "K", "other", "for all too");
        const QByteArray home = paths_.user.first(paths_.user.indexOf("/quarv/"));
        ::mkdir(home.constData(), 0700);
        if (::geteuid() == 0 && ::chown(home.constData(), OrdinaryUser, OrdinaryUser) != 0)
            ADD_FAILURE() << "chown";
        Protect(0555, 0644);
    }
    ~TwoUsersTest() override { Protect(0755, 0600); }

    void Protect(mode_t folder, mode_t file) {
        ::chmod(paths_.machine.first(paths_.machine.lastIndexOf('/')).constData(), folder);
        ::chmod(paths_.machine.constData(), file);
    }

    // 0 where the child, as an ordinary user, found `body` true.
    int AsOrdinaryUser(const std::function<bool(Hives&)>& body) {
        return RunInChild([&] {
            if (!BecomeOrdinaryUser()) return 2;
            Hives hives = NewHives();
            return body(hives) ? 0 : 1;
        });
    }
};

TEST_F(TwoUsersTest, AWriteSucceedsForItsWriterAlone) {
    const QByteArray before = FileBytes(paths_.machine);
    EXPECT_EQ(0, AsOrdinaryUser([](Hives& hives) {
                  return Set(hives, HKEY_LOCAL_MACHINE, "K", "shared", "mine") == ERROR_SUCCESS &&
                         Get(hives, HKEY_LOCAL_MACHINE, "K", "shared") == "mine" &&
                         Get(hives, HKEY_LOCAL_MACHINE, "K", "other") == "for all too";
              }));
    EXPECT_EQ(before, FileBytes(paths_.machine));
    struct stat there {};
    ASSERT_EQ(0, ::stat(paths_.overlay.constData(), &there));
    EXPECT_EQ(0600u, there.st_mode & 07777u);
}

TEST_F(TwoUsersTest, ADeletedValueIsGoneForItsWriterAlone) {
    EXPECT_EQ(0, AsOrdinaryUser([](Hives& hives) {
                  return Delete(hives, HKEY_LOCAL_MACHINE, "K", "shared") == ERROR_SUCCESS &&
                         Delete(hives, HKEY_LOCAL_MACHINE, "K", "shared") == ERROR_FILE_NOT_FOUND &&
                         Get(hives, HKEY_LOCAL_MACHINE, "K", "shared") == "(code 2)" &&
                         hives.RegDeleteTree(HKEY_LOCAL_MACHINE, "K") == ERROR_SUCCESS &&
                         Get(hives, HKEY_LOCAL_MACHINE, "K", "other") == "(code 2)";
              }));
    EXPECT_TRUE(FileBytes(paths_.machine).contains("for all too"));
}

TEST_F(TwoUsersTest, AnUnreadableMachineHiveCountsAsEmpty) {
    Protect(0755, 0600);
    if (::geteuid() != 0) Protect(0555, 0000);
    EXPECT_EQ(0, AsOrdinaryUser([](Hives& hives) {
                  return Get(hives, HKEY_LOCAL_MACHINE, "K", "shared") == "(code 2)" &&
                         Set(hives, HKEY_LOCAL_MACHINE, "K", "shared", "mine") == ERROR_SUCCESS &&
                         Get(hives, HKEY_LOCAL_MACHINE, "K", "shared") == "mine";
              }));
}

TEST_F(TwoUsersTest, ADamagedMachineHiveIsLeftWhereItMayNotBeRenamed) {
    Protect(0755, 0600);
    PutFile(paths_.machine, "rubbish");
    Protect(0555, 0644);
    EXPECT_EQ(0, AsOrdinaryUser([](Hives& hives) {
                  return Get(hives, HKEY_LOCAL_MACHINE, "K", "shared") == "(code 2)" &&
                         Set(hives, HKEY_LOCAL_MACHINE, "K", "shared", "mine") == ERROR_SUCCESS &&
                         Get(hives, HKEY_LOCAL_MACHINE, "K", "shared") == "mine";
              }));
    EXPECT_EQ("rubbish", FileBytes(paths_.machine));
}

}  // namespace
}  // namespace quarv::registry
