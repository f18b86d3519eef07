// Several values of a key changed at one stroke.
#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

ValueChange SetText(const char* name, const QByteArray& text) {
    return {.name = name, .type = REG_SZ, .data = text + '\0'};
}

ValueChange Deletion(const char* name) {
    return {.name = name, .type = REG_NONE, .data = {}};
}

class HivesKeyValuesTest : public RegistryHome {
  protected:
    ResultCode SetAll(const std::vector<ValueChange>& changes) {
        return hives_.RegSetKeyValues(HKEY_CURRENT_USER, "K", changes);
    }

    Hives hives_ = NewHives();
};

TEST_F(HivesKeyValuesTest, AreMadeInTheirOrderWithTheirKey) {
    EXPECT_EQ(ERROR_SUCCESS,
              SetAll({SetText("b", "2"),
                      SetText("a", "1"),
                      Deletion("b"),
                      {.name = "n", .type = REG_DWORD, .data = QByteArray("\7\0\0\0", 4)},
                      {.name = "", .type = REG_SZ, .data = QByteArray("")}}));
    EXPECT_EQ(
        "quarv-hive 1\n"
        "key \"K\"\n"
        "value \"a\" text \"1\"\n"
        "value \"n\" number 7\n"
        "value \"\" data 1\n"
        "end\n",
        FileBytes(paths_.user));
}

TEST_F(HivesKeyValuesTest, LeaveOtherValuesAndTheNamesAsTheyAre) {
    Set(hives_, HKEY_CURRENT_USER, "K", "One", "1");
    Set(hives_, HKEY_CURRENT_USER, "K", "Two", "2");
    Set(hives_, HKEY_CURRENT_USER, "K", "Three", "3");
    EXPECT_EQ(ERROR_SUCCESS, SetAll({SetText("ONE", "new"), Deletion("three")}));
    EXPECT_EQ(
        "quarv-hive 1\n"
        "key \"K\"\n"
        "value \"One\" text \"new\"\n"
        "value \"Two\" text \"2\"\n"
        "end\n",
        FileBytes(paths_.user));
}

TEST_F(HivesKeyValuesTest, OfAnOpenKeyItselfNeedTheRightToSet) {
    Set(hives_, HKEY_CURRENT_USER, "K", "v", "before");
    HKey key = NoKey;
    hives_.RegOpenKeyEx(HKEY_CURRENT_USER, "K", KEY_QUERY_VALUE, &key);
    EXPECT_EQ(ERROR_ACCESS_DENIED, hives_.RegSetKeyValues(key, nullptr, {SetText("v", "x")}));
    EXPECT_EQ(ERROR_ACCESS_DENIED, hives_.RegSetKeyValues(key, "Below", {SetText("v", "x")}));
    hives_.RegCloseKey(key);
    EXPECT_EQ("before", Get(hives_, HKEY_CURRENT_USER, "K", "v"));
    hives_.RegOpenKeyEx(HKEY_CURRENT_USER, "K", KEY_SET_VALUE, &key);
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegSetKeyValues(key, nullptr, {SetText("v", "after")}));
    EXPECT_EQ("after", Get(hives_, HKEY_CURRENT_USER, "K", "v"));
    hives_.RegDeleteTree(HKEY_CURRENT_USER, "K");
    EXPECT_EQ(ERROR_KEY_DELETED, hives_.RegSetKeyValues(key, nullptr, {SetText("v", "x")}));
    hives_.RegCloseKey(key);
    EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegSetKeyValues(key, nullptr, {SetText("v", "x")}));
}

TEST_F(HivesKeyValuesTest, NeedAKeyPathThatCouldBeMade) {
    EXPECT_EQ(ERROR_BAD_PATHNAME,
              hives_.RegSetKeyValues(HKEY_CURRENT_USER, "\\K", {SetText("v", "x")}));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              hives_.RegSetKeyValues(HKEY_CURRENT_USER, QByteArray("K\\").repeated(33).constData(),
                                     {SetText("v", "x")}));
    EXPECT_EQ(ERROR_SUCCESS,
              hives_.RegSetKeyValues(HKEY_CURRENT_USER, QByteArray("K\\").repeated(32).constData(),
                                     {SetText("v", "x")}));
}

TEST_F(HivesKeyValuesTest, ThatAreOnlyDeletedMakeNoKey) {
    EXPECT_EQ(ERROR_SUCCESS, SetAll({Deletion("a"), Deletion("b")}));
    EXPECT_EQ(ERROR_SUCCESS, SetAll({}));
    EXPECT_FALSE(Exists(paths_.user));
}

TEST_F(HivesKeyValuesTest, ThatAreThereAlreadyWriteNothing) {
    SetAll({SetText("a", "1"), SetText("b", "2")});
    struct stat before {
    }, after{};
    ::stat(paths_.user.constData(), &before);
    EXPECT_EQ(ERROR_SUCCESS, SetAll({SetText("a", "1"), SetText("b", "2"), Deletion("c")}));
    ::stat(paths_.user.constData(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
}

struct RefusedRow {
    const char* title;
    ValueChange last;
    ResultCode code;

    friend void PrintTo(const RefusedRow& row, std::ostream* out) { *out << row.title; }
};

class RefusedKeyValuesTest : public HivesKeyValuesTest,
                             public testing::WithParamInterface<RefusedRow> {};

TEST_P(RefusedKeyValuesTest, LeaveEveryValueAsItWas) {
    SetAll({SetText("a", "1"), SetText("b", "2")});
    const QByteArray before = FileBytes(paths_.user);
    EXPECT_EQ(GetParam().code,
              SetAll({SetText("a", "new"), Deletion("b"), SetText("half", QByteArray(5000000, 'h')),
                      GetParam().last}));
    EXPECT_EQ(before, FileBytes(paths_.user));
    EXPECT_EQ("1", Get(hives_, HKEY_CURRENT_USER, "K", "a"));
    EXPECT_EQ("2", Get(hives_, HKEY_CURRENT_USER, "K", "b"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RefusedKeyValuesTest,
    testing::Values(RefusedRow{"NameNotUtf8", SetText("\xff", "x"), ERROR_INVALID_PARAMETER},
                    RefusedRow{"DeletedNameNotUtf8", Deletion("\xff"), ERROR_INVALID_PARAMETER},
                    RefusedRow{"NameTooLong",
                               {.name = QByteArray(16384, 'n'), .type = REG_SZ, .data = "x"},
                               ERROR_INVALID_PARAMETER},
                    RefusedRow{"OneTooLarge", SetText("c", QByteArray(9000000, 'x')),
                               ERROR_NOT_ENOUGH_QUOTA},
                    RefusedRow{"TooLargeTogether", SetText("c", QByteArray(5000000, 'x')),
                               ERROR_NOT_ENOUGH_QUOTA}),
    [](const auto& row) { return row.param.title; });

TEST_F(HivesKeyValuesTest, ThatCannotBeWrittenAreAllAsBefore) {
    SetAll({SetText("a", "1"), SetText("b", "2")});
    const QByteArray before = FileBytes(paths_.user);
    QDir().mkpath(QFile::decodeName(paths_.user) + ".new/in the way");
    EXPECT_EQ(ERROR_ACCESS_DENIED, SetAll({SetText("a", "new"), Deletion("b")}));
    EXPECT_EQ(before, FileBytes(paths_.user));
    EXPECT_EQ("1", Get(hives_, HKEY_CURRENT_USER, "K", "a"));
    EXPECT_EQ("2", Get(hives_, HKEY_CURRENT_USER, "K", "b"));
}

TEST_F(HivesKeyValuesTest, GoToTheOverlayTogether) {
    PutFile(paths_.machine, "quarv-hive 1\nkey \"K\"\nvalue \"b\" text \"for all\"\nend\n");
    QDir().mkpath(QFile::decodeName(paths_.machine) + ".new/in the way");
    const std::vector<ValueChange> changes = {SetText("a", "mine"), Deletion("b"), Deletion("c")};
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegSetKeyValues(HKEY_LOCAL_MACHINE, "K", changes));
    EXPECT_EQ(
        "quarv-hive 1\n"
        "key \"K\"\n"
        "value \"a\" text \"mine\"\n"
        "value \"b\" deleted\n"
        "end\n",
        FileBytes(paths_.overlay));
    struct stat before {
    }, after{};
    ::stat(paths_.overlay.constData(), &before);
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegSetKeyValues(HKEY_LOCAL_MACHINE, "K", changes));
    ::stat(paths_.overlay.constData(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(HivesKeyValuesTest, ThatReachTheMachineHiveAreNotHiddenByTheOverlay) {
    PutFile(paths_.overlay,
            "quarv-hive 1\nkey \"K\"\n"
            "value \"a\" text \"old\"\nvalue \"b\" deleted\nvalue \"c\" text \"old\"\nend\n");
    EXPECT_EQ(ERROR_SUCCESS,
              hives_.RegSetKeyValues(HKEY_LOCAL_MACHINE, "K",
                                     {SetText("a", "1"), SetText("b", "2"), Deletion("c")}));
    EXPECT_EQ("1", Get(hives_, HKEY_LOCAL_MACHINE, "K", "a"));
    EXPECT_EQ("2", Get(hives_, HKEY_LOCAL_MACHINE, "K", "b"));
    EXPECT_EQ("(code 2)", Get(hives_, HKEY_LOCAL_MACHINE, "K", "c"));
}

}  // namespace
}  // namespace quarv::registry
