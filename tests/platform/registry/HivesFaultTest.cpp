// A file system that refuses: no rights, no room, no end of a write.
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <csignal>

#include "platform/registry/InChild.h"
#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

constexpr int Skipped = 77;

// In a child: root takes a mount namespace, any other user one in a user namespace that knows it.
bool HasMountsOfItsOwn() {
    const QByteArray user = "0 " + QByteArray::number(::geteuid()) + " 1\n";
    const QByteArray group = "0 " + QByteArray::number(::getegid()) + " 1\n";
    if (::unshare(CLONE_NEWNS) == 0) return true;
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    const auto tell = [](const char* path, const QByteArray& text) {
        QFile file(QString::fromLatin1(path));
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) > 0;
    };
    return tell("/proc/self/setgroups", "deny") && tell("/proc/self/uid_map", user) &&
           tell("/proc/self/gid_map", group);
}

class HivesFaultTest : public RegistryHome {
  protected:
    HivesFaultTest() {
        Hives hives = NewHives();
        Set(hives, HKEY_CURRENT_USER, "K", "kept", "as it was");
    }

    void GiveToOrdinaryUser(const QByteArray& path) {
        if (::geteuid() == 0) {
            ASSERT_EQ(0, ::chown(path.constData(), OrdinaryUser, OrdinaryUser));
        }
    }

    QByteArray Folder() const { return paths_.user.first(paths_.user.lastIndexOf('/')); }
};

TEST_F(HivesFaultTest, AFileThatMayNotGrowKeepsTheOldHive) {
    const QByteArray before = FileBytes(paths_.user);
    EXPECT_EQ(
        0, RunInChild([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{.rlim_cur = 200, .rlim_max = 200};
            if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
            Hives hives = NewHives();
            if (Set(hives, HKEY_CURRENT_USER, "K", "big", QByteArray(5000, 'b')) != ERROR_DISK_FULL)
                return 3;
            return Get(hives, HKEY_CURRENT_USER, "K", "kept") == "as it was" &&
                           Get(hives, HKEY_CURRENT_USER, "K", "big") == "(code 2)"
                       ? 0
                       : 4;
        }));
    EXPECT_EQ(before, FileBytes(paths_.user));
    EXPECT_FALSE(Exists(paths_.user + ".new"));
}

TEST_F(HivesFaultTest, AFullDiskKeepsTheOldHive) {
    const int status = RunInChild([&] {
        if (!HasMountsOfItsOwn()) return Skipped;
        ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
        if (::mount("none", Folder().constData(), "tmpfs", 0, "size=16k") != 0) return Skipped;
        Hives hives = NewHives();
        if (Set(hives, HKEY_CURRENT_USER, "K", "small", "fits") != ERROR_SUCCESS) return 2;
        if (Set(hives, HKEY_CURRENT_USER, "K", "big", QByteArray(50000, 'b')) != ERROR_DISK_FULL)
            return 3;
        Hives other = NewHives();
        if (Get(other, HKEY_CURRENT_USER, "K", "small") != "fits") return 4;
        if (Exists(paths_.user + ".new")) return 5;
        return Set(other, HKEY_CURRENT_USER, "K", "more", "fits too") == ERROR_SUCCESS ? 0 : 6;
    });
    if (status == Skipped) GTEST_SKIP() << "no mount of its own is allowed here";
    EXPECT_EQ(0, status);
}

TEST_F(HivesFaultTest, AWriterKilledInMidWriteLeavesTheOldHive) {
    const pid_t child = StartChild([&] {
        const rlimit limit{.rlim_cur = 200, .rlim_max = 200};
        ::setrlimit(RLIMIT_FSIZE, &limit);  // its signal kills the child within the write
        std::signal(SIGXFSZ, SIG_DFL);
        Hives hives = NewHives();
        Set(hives, HKEY_CURRENT_USER, "K", "big", QByteArray(5000, 'b'));
        return 0;
    });
    int status = 0;
    ASSERT_EQ(child, ::waitpid(child, &status, 0));
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(Exists(paths_.user + ".new"));
    Hives hives = NewHives();
    EXPECT_EQ("as it was", Get(hives, HKEY_CURRENT_USER, "K", "kept"));
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "next", "x"));
    EXPECT_FALSE(Exists(paths_.user + ".new"));
    EXPECT_EQ("as it was", Get(hives, HKEY_CURRENT_USER, "K", "kept"));
}

TEST_F(HivesFaultTest, AnUnreadableHiveIsNeitherReadNorReplaced) {
    const QByteArray before = FileBytes(paths_.user);
    for (const QByteArray& path : {Folder(), paths_.user, paths_.user + ".lock"})
        GiveToOrdinaryUser(path);
    ::chmod(paths_.user.first(paths_.user.indexOf("/quarv/")).constData(), 0755);
    ::chmod(paths_.user.constData(), 0);
    EXPECT_EQ(0, RunInChild([&] {
                  if (!BecomeOrdinaryUser()) return 2;
                  Hives hives = NewHives();
                  if (Get(hives, HKEY_CURRENT_USER, "K", "kept") != "(code 5)") return 3;
                  return Set(hives, HKEY_CURRENT_USER, "K", "v", "x") == ERROR_ACCESS_DENIED ? 0
                                                                                             : 4;
              }));
    ::chmod(paths_.user.constData(), 0600);
    EXPECT_EQ(before, FileBytes(paths_.user));
}

TEST_F(HivesFaultTest, AReadOnlyHiveIsReadAndNotReplaced) {
    const QByteArray before = FileBytes(paths_.user);
    for (const QByteArray& path : {Folder(), paths_.user, paths_.user + ".lock"})
        GiveToOrdinaryUser(path);
    ::chmod(paths_.user.first(paths_.user.indexOf("/quarv/")).constData(), 0755);
    ::chmod(paths_.user.constData(), 0400);
    EXPECT_EQ(0, RunInChild([&] {
                  if (!BecomeOrdinaryUser()) return 2;
                  Hives hives = NewHives();
                  if (Set(hives, HKEY_CURRENT_USER, "K", "v", "x") != ERROR_ACCESS_DENIED) return 3;
                  return Get(hives, HKEY_CURRENT_USER, "K", "kept") == "as it was" ? 0 : 4;
              }));
    EXPECT_EQ(before, FileBytes(paths_.user));
}

TEST_F(HivesFaultTest, AHomeThatCannotBeMadeRefusesWritesAndReadsNothing) {
    paths_.user = paths_.user + "/below/a/file/user.hive";
    Hives hives = NewHives();
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ(ERROR_ACCESS_DENIED, Set(hives, HKEY_CURRENT_USER, "K", "v", "x"));
}

}  // namespace
}  // namespace quarv::registry
