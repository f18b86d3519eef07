// What lies at a hive's place and what becomes of it.
#include <fcntl.h>
#include <unistd.h>

#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

class HiveFileTest : public RegistryHome {
  protected:
    QByteArray Folder() const { return paths_.user.first(paths_.user.lastIndexOf('/')); }
};

TEST_F(HiveFileTest, IsMadeWithItsFoldersForTheUserAlone) {
    ::umask(0);
    Hives hives = NewHives();
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "v", "secret"));
    ::umask(022);
    struct stat there {};
    ASSERT_EQ(0, ::stat(paths_.user.constData(), &there));
    EXPECT_EQ(0600u, there.st_mode & 07777u);
    ASSERT_EQ(0, ::stat(Folder().constData(), &there));
    EXPECT_EQ(0700u, there.st_mode & 07777u);
    EXPECT_EQ(
        "quarv-hive 1\n"
        "key \"K\"\n"
        "value \"v\" text \"secret\"\n"
        "end\n",
        FileBytes(paths_.user));
}

TEST_F(HiveFileTest, ReadingMakesNothing) {
    Hives hives = NewHives();
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ("(code 2)", Get(hives, HKEY_LOCAL_MACHINE, "K", "v"));
    EXPECT_FALSE(Exists(Folder()));
}

TEST_F(HiveFileTest, AHiveThatAllMayReadBecomesPrivateWhenItIsWritten) {
    PutFile(paths_.machine, "quarv-hive 1\nkey \"K\"\nvalue \"a\" text \"1\"\nend\n");
    ::chmod(paths_.machine.constData(), 0644);
    Hives hives = NewHives();
    EXPECT_EQ("1", Get(hives, HKEY_LOCAL_MACHINE, "K", "a"));
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_LOCAL_MACHINE, "K", "b", "2"));
    struct stat there {};
    ASSERT_EQ(0, ::stat(paths_.machine.constData(), &there));
    EXPECT_EQ(0600u, there.st_mode & 07777u);
    EXPECT_EQ("1", Get(hives, HKEY_LOCAL_MACHINE, "K", "a"));
}

TEST_F(HiveFileTest, WritingWhatIsThereAlreadyWritesNothing) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "v", "x");
    struct stat before {
    }, after{};
    ::stat(paths_.user.constData(), &before);
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "k", "V", "x"));
    ::stat(paths_.user.constData(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
}

TEST_F(HiveFileTest, WhatACrashLeftBehindIsNoHindrance) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "a", "1");
    PutFile(paths_.user + ".new", "quarv-hive 1\nkey \"K\"\nvalue \"a\" text \"ha");
    EXPECT_EQ("1", Get(hives, HKEY_CURRENT_USER, "K", "a"));
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "b", "2"));
    EXPECT_FALSE(Exists(paths_.user + ".new"));
    Hives other = NewHives();
    EXPECT_EQ("1", Get(other, HKEY_CURRENT_USER, "K", "a"));
    EXPECT_EQ("2", Get(other, HKEY_CURRENT_USER, "K", "b"));
}

TEST_F(HiveFileTest, ANewFilesNameThatIsTakenByAFolderFailsTheWriteAlone) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "a", "1");
    QDir().mkpath(QFile::decodeName(paths_.user) + ".new/kept");
    EXPECT_EQ(ERROR_ACCESS_DENIED, Set(hives, HKEY_CURRENT_USER, "K", "a", "2"));
    EXPECT_EQ("1", Get(hives, HKEY_CURRENT_USER, "K", "a"));
    EXPECT_TRUE(Exists(paths_.user + ".new/kept"));
}

struct DamageRow {
    const char* title;
    QByteArray bytes;

    friend void PrintTo(const DamageRow& row, std::ostream* out) { *out << row.title; }
};

class DamagedHiveTest : public HiveFileTest, public testing::WithParamInterface<DamageRow> {};

TEST_P(DamagedHiveTest, IsSetAsideByAReadWhichFindsNothing) {
    PutFile(paths_.user, GetParam().bytes);
    Hives hives = NewHives();
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_FALSE(Exists(paths_.user));
    EXPECT_EQ(GetParam().bytes, FileBytes(paths_.user + ".damaged-1"));
    EXPECT_EQ(1, reports_.size());
}

TEST_P(DamagedHiveTest, IsSetAsideByAWriteWhichSucceeds) {
    PutFile(paths_.user, GetParam().bytes);
    PutFile(paths_.user + ".damaged-1", "an earlier one");
    Hives hives = NewHives();
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "v", "x"));
    EXPECT_EQ("x", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ("an earlier one", FileBytes(paths_.user + ".damaged-1"));
    EXPECT_EQ(GetParam().bytes, FileBytes(paths_.user + ".damaged-2"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DamagedHiveTest,
    testing::Values(DamageRow{"Empty", ""},
                    DamageRow{"Rubbish",
                              "\x7f"
                              "ELF\1\2\3"},
                    DamageRow{"HalfWritten", "quarv-hive 1\nkey \"K\"\nvalue \"v\" text \"x\"\n"},
                    DamageRow{"NotUtf8", "quarv-hive 1\nkey \"\xff\"\nend\n"},
                    DamageRow{"Huge", QByteArray(9000000, '\n').replace(0, 12, "quarv-hive 1")}),
    [](const auto& row) { return row.param.title; });

TEST_F(HiveFileTest, AFolderInItsPlaceIsSetAside) {
    QDir().mkpath(QFile::decodeName(paths_.user) + "/kept");
    Hives hives = NewHives();
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "v", "x"));
    EXPECT_TRUE(Exists(paths_.user + ".damaged-1/kept"));
}

TEST_F(HiveFileTest, APipeInItsPlaceHoldsNobodyUp) {
    QDir().mkpath(QFile::decodeName(Folder()));
    ASSERT_EQ(0, ::mkfifo(paths_.user.constData(), 0600));
    Hives hives = NewHives();
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "v", "x"));
}

TEST_F(HiveFileTest, ASparseGiantIsNotReadWhole) {
    PutFile(paths_.user, "quarv-hive 1\n");
    ASSERT_EQ(0, ::truncate(paths_.user.constData(), off_t{1} << 40));
    Hives hives = NewHives();
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_TRUE(Exists(paths_.user + ".damaged-1"));
}

TEST_F(HiveFileTest, ALaterVersionIsNeitherReadNorTouched) {
    PutFile(paths_.user, "quarv-hive 2\nwhatever\n");
    Hives hives = NewHives();
    EXPECT_EQ("(code 50)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ(ERROR_NOT_SUPPORTED, Set(hives, HKEY_CURRENT_USER, "K", "v", "x"));
    EXPECT_EQ("quarv-hive 2\nwhatever\n", FileBytes(paths_.user));
}

TEST_F(HiveFileTest, ASymbolicLinkStaysOne) {
    const QByteArray target = QFile::encodeName(folder_.path()) + "/elsewhere/my.hive";
    PutFile(target, "quarv-hive 1\nkey \"K\"\nvalue \"a\" text \"1\"\nend\n");
    QDir().mkpath(QFile::decodeName(Folder()));
    ASSERT_EQ(0, ::symlink(target.constData(), paths_.user.constData()));
    Hives hives = NewHives();
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "b", "2"));
    struct stat there {};
    ASSERT_EQ(0, ::lstat(paths_.user.constData(), &there));
    EXPECT_TRUE(S_ISLNK(there.st_mode));
    EXPECT_TRUE(FileBytes(target).contains("value \"b\" text \"2\""));
    EXPECT_TRUE(FileBytes(target).contains("value \"a\" text \"1\""));
}

TEST_F(HiveFileTest, ChangesOfOthersAreSeenAtOnce) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "v", "one");
    PutFile(paths_.user, "quarv-hive 1\nkey \"K\"\nvalue \"v\" text \"two\"\nend\n");
    EXPECT_EQ("two", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    QFile::remove(QFile::decodeName(paths_.user));
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "v"));
}

}  // namespace
}  // namespace quarv::registry
