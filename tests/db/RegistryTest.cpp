#include "db/Registry.h"

#include "base/RuntimeError.h"
#include "platform/registry/RegistryHome.h"

namespace quarv {
namespace {

using namespace registry;

const QString Path = QStringLiteral("Software\\Kel\\Quarv\\General");

class RegistryTest : public RegistryHome {
  protected:
    // Sets bytes as any other program could.
    void SetBytes(HKey root, const char* path, const char* name, quint32 type,
                  const QByteArray& data) {
        HKey key = NoKey;
        hives_.RegCreateKeyEx(root, path, 0, KEY_ALL_ACCESS, &key);
        EXPECT_EQ(ERROR_SUCCESS, hives_.RegSetValueEx(key, name, type, data.constData(),
                                                      static_cast<quint32>(data.size())));
        hives_.RegCloseKey(key);
    }

    static QString Repeat(int count, char16_t unit) { return QString(count, QChar(unit)); }

    Hives hives_ = NewHives();
    Registry registry_{hives_};
};

TEST_F(RegistryTest, ATextComesBackWithoutItsTerminator) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SetKeyValue("K", "v", QStringLiteral("abc"), REG_SZ);
    EXPECT_EQ(QByteArray("abc"), Get(hives_, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ(QStringLiteral("abc"), registry_.QueryValue("K", "v").Text());
}

TEST_F(RegistryTest, SetKeyValueMakesAKeyThatIsNotThere) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SetKeyValue("A\\B\\C", "n", 7, REG_DWORD);
    EXPECT_EQ(7, registry_.QueryValue("a\\b\\c", "N").ToInteger());
}

TEST_F(RegistryTest, TheRootIsNoneAtFirst) {
    EXPECT_EQ(NoKey, registry_.CurrentRoot());
}

TEST_F(RegistryTest, AMachineWideWriteLeavesTheCurrentUsersRoot) {
    registry_.SetCurrentRoot(HKEY_LOCAL_MACHINE);
    registry_.SetMachineString(Path, "ConnStr", "x");
    EXPECT_EQ(HKEY_CURRENT_USER, registry_.CurrentRoot());
    EXPECT_EQ(QStringLiteral("x"), registry_.GetMachineString(Path, "ConnStr", "default"));
}

TEST_F(RegistryTest, AFailedMachineWideWriteLeavesTheCurrentUsersRootToo) {
    paths_ = {.user = "/dev/null/u", .machine = "/dev/null/m", .overlay = "/dev/null/o"};
    Hives nowhere = NewHives();
    Registry registry(nowhere);
    registry.SetMachineString(Path, "ConnStr", "x");
    EXPECT_EQ(HKEY_CURRENT_USER, registry.CurrentRoot());
    EXPECT_EQ(QStringLiteral("default"), registry.GetMachineString(Path, "ConnStr", "default"));
}

TEST_F(RegistryTest, AMachineWideWriteSucceedsForTheUserWhereTheHiveIsBlocked) {
    BlockMachineHive();
    registry_.SetMachineString(Path, "ConnStr", "mine");
    EXPECT_EQ(QStringLiteral("mine"), registry_.GetMachineString(Path, "ConnStr", "default"));
}

TEST_F(RegistryTest, GetStringKeepsTheCurrentRoot) {
    SetBytes(HKEY_LOCAL_MACHINE, "K", "v", REG_SZ, QByteArray("m", 2));
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    EXPECT_EQ(QStringLiteral("m"), registry_.GetString(HKEY_LOCAL_MACHINE, "K", "v", "default"));
    EXPECT_EQ(HKEY_CURRENT_USER, registry_.CurrentRoot());
    EXPECT_EQ(QStringLiteral("default"), registry_.GetString(NoKey, "K", "v", "default"));
    EXPECT_EQ(HKEY_CURRENT_USER, registry_.CurrentRoot());
}

TEST_F(RegistryTest, AnEmptyResultGivesTheDefault) {
    SetBytes(HKEY_LOCAL_MACHINE, "K", "empty", REG_SZ, QByteArray("", 1));
    SetBytes(HKEY_LOCAL_MACHINE, "K", "none", REG_SZ, QByteArray());
    SetBytes(HKEY_LOCAL_MACHINE, "K", "bytes", REG_BINARY, "abc");
    for (const char* name : {"missing", "empty", "none", "bytes"})
        EXPECT_EQ(QStringLiteral("default"),
                  registry_.GetMachineString("K", QString::fromLatin1(name), "default"))
            << name;
    EXPECT_EQ(QStringLiteral("default"), registry_.GetMachineString("No key", "v", "default"));
}

TEST_F(RegistryTest, ANumberIsReadAsText) {
    SetBytes(HKEY_LOCAL_MACHINE, "K", "n", REG_DWORD, QByteArray("\x2a\0\0\0", 4));
    EXPECT_EQ(QStringLiteral("42"), registry_.GetMachineString("K", "n", "default"));
}

TEST_F(RegistryTest, SectionsBeforeTheFirstMachineWideWriteAreLost) {
    SetBytes(HKEY_CURRENT_USER, "where", "Where-1", REG_SZ, QByteArray("a", 2));
    EXPECT_EQ(QStringLiteral("d"), registry_.GetSectionString("where", "Where-1", "d"));
    EXPECT_TRUE(registry_.GetSectionValues("where").empty());
    registry_.SaveSectionString("where", "Where-1", "b");
    registry_.DeleteSectionValue("where", "Where-1");
    EXPECT_EQ(QByteArray("a"), Get(hives_, HKEY_CURRENT_USER, "where", "Where-1"));
    registry_.SetMachineString(Path, "ConnStr", "x");
    EXPECT_EQ(QStringLiteral("a"), registry_.GetSectionString("where", "Where-1", "d"));
}

TEST_F(RegistryTest, SectionsLieDirectlyUnderTheRoot) {
    registry_.SetMachineString(Path, "ConnStr", "x");
    registry_.SaveSectionString("where", "Where-1", "id > 5");
    EXPECT_EQ(QByteArray("id > 5"), Get(hives_, HKEY_CURRENT_USER, "where", "Where-1"));
    EXPECT_EQ(QStringLiteral("id > 5"), registry_.GetSectionString("WHERE", "where-1", "d"));
    registry_.DeleteSectionValue("where", "Where-1");
    registry_.DeleteSectionValue("where", "Where-1");
    registry_.DeleteSectionValue("no section", "Where-1");
    EXPECT_EQ(QStringLiteral("d"), registry_.GetSectionString("where", "Where-1", "d"));
}

TEST_F(RegistryTest, SectionStringsAreSetInTheirOrderAndOthersDeleted) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SaveSectionString("S", "stale", "x");
    registry_.SaveSectionString("S", "kept", "k");
    registry_.SaveSectionStrings("S", {{"b", QStringLiteral("\u00e4")}, {"a", ""}},
                                 {"stale", "not there"});
    const std::vector<RegistryPair> expected = {
        {"kept", "k"}, {"b", QStringLiteral("\u00e4")}, {"a", ""}};
    EXPECT_EQ(expected, registry_.GetSectionValues("S"));
    EXPECT_EQ(QByteArray("\xc3\xa4"), Get(hives_, HKEY_CURRENT_USER, "S", "b"));
}

TEST_F(RegistryTest, SectionStringsThatCannotAllBeSavedAreDroppedTogether) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SaveSectionString("S", "a", "old");
    registry_.SaveSectionStrings("S", {{"a", "new"}, {"b", Repeat(9000000, u'x')}}, {});
    const std::vector<RegistryPair> expected = {{"a", "old"}};
    EXPECT_EQ(expected, registry_.GetSectionValues("S"));
}

TEST_F(RegistryTest, SectionStringsBeforeTheFirstMachineWideWriteAreLost) {
    registry_.SaveSectionStrings("S", {{"a", "x"}}, {});
    EXPECT_FALSE(Exists(paths_.user));
    EXPECT_FALSE(Exists(paths_.machine));
}

TEST_F(RegistryTest, ASectionThatIsNotThereHasNoValues) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    EXPECT_TRUE(registry_.GetSectionValues("no section").empty());
}

TEST_F(RegistryTest, SectionValuesAreTheTextsInTheirOrder) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SaveSectionString("S", "second", "2");
    SetBytes(HKEY_CURRENT_USER, "S", "number", REG_DWORD, QByteArray("\1\0\0\0", 4));
    SetBytes(HKEY_CURRENT_USER, "S", "expandable", REG_EXPAND_SZ, QByteArray("x", 2));
    registry_.SaveSectionString("S", "first", "");
    const std::vector<RegistryPair> expected = {{"second", "2"}, {"first", ""}};
    EXPECT_EQ(expected, registry_.GetSectionValues("S"));
}

TEST_F(RegistryTest, SectionValuesThatDoNotFitAreLeftOut) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SaveSectionString("S", Repeat(89, u'n'), "name fits");
    registry_.SaveSectionString("S", Repeat(90, u'm'), "name does not");
    registry_.SaveSectionString("S", "fits", Repeat(510, u'x'));
    registry_.SaveSectionString("S", "does not", Repeat(511, u'x'));
    registry_.SaveSectionString("S", "fits in bytes", Repeat(255, u'\u00e4'));
    registry_.SaveSectionString("S", "not in bytes", Repeat(256, u'\u00e4'));
    registry_.SaveSectionString("S", "last", "there");
    const std::vector<RegistryPair> expected = {{Repeat(89, u'n'), "name fits"},
                                                {"fits", Repeat(510, u'x')},
                                                {"fits in bytes", Repeat(255, u'\u00e4')},
                                                {"last", "there"}};
    EXPECT_EQ(expected, registry_.GetSectionValues("S"));
    EXPECT_EQ(Repeat(511, u'x'), registry_.GetSectionString("S", "does not", ""));
}

TEST_F(RegistryTest, AnyTextComesBackAsItWas) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    const QString texts[] = {QStringLiteral("a\r\nb\n\tc"), QString::fromUtf16(u"a\0b", 3),
                             QChar(0xfeff) + QString::fromUtf16(u"\u00e4\U0001f600"),
                             QStringLiteral("\"{}';=\\|"), Repeat(10000, u'\u20ac')};
    for (const QString& text : texts) {
        registry_.SaveSectionString("S", "v", text);
        Hives other = NewHives();
        Registry again(other);
        EXPECT_EQ(text, again.GetString(HKEY_CURRENT_USER, "S", "v", "default"));
    }
}

TEST_F(RegistryTest, NumbersAreSigned32Bit) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SetKeyValue("K", "n", -2147483648LL, REG_DWORD);
    EXPECT_EQ(-2147483648LL, registry_.QueryValue("K", "n").ToInteger());
    EXPECT_EQ(QByteArray("\0\0\0", 3), Get(hives_, HKEY_CURRENT_USER, "K", "n"));
    try {
        registry_.SetKeyValue("K", "n", 2147483648LL, REG_DWORD);
        FAIL() << "no overflow";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(6, error.Number());
    }
}

TEST_F(RegistryTest, OtherTypesAreNeitherWrittenNorRead) {
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.SetKeyValue("K", "v", QStringLiteral("x"), REG_EXPAND_SZ);
    EXPECT_EQ("(code 2)", Get(hives_, HKEY_CURRENT_USER, "K", "v"));
    SetBytes(HKEY_CURRENT_USER, "K", "q", REG_QWORD, QByteArray(8, '\1'));
    EXPECT_TRUE(registry_.QueryValue("K", "q").IsEmpty());
    SetBytes(HKEY_CURRENT_USER, "K", "long", REG_DWORD, QByteArray(5, '\1'));
    EXPECT_TRUE(registry_.QueryValue("K", "long").IsEmpty());
}

TEST_F(RegistryTest, CreateKeyMakesTheKeyAlone) {
    registry_.CreateKey("K");
    EXPECT_FALSE(Exists(paths_.user));
    registry_.SetCurrentRoot(HKEY_CURRENT_USER);
    registry_.CreateKey("A\\B");
    EXPECT_EQ("(code 2)", Get(hives_, HKEY_CURRENT_USER, "A\\B", "v"));
    EXPECT_TRUE(FileBytes(paths_.user).contains("key \"A\\\\B\"\n"));
}

TEST_F(RegistryTest, ADamagedHiveGivesTheDefaultAndIsSetAside) {
    PutFile(paths_.machine, "rubbish");
    EXPECT_EQ(QStringLiteral("default"), registry_.GetMachineString(Path, "ConnStr", "default"));
    EXPECT_EQ(QByteArray("rubbish"), FileBytes(paths_.machine + ".damaged-1"));
}

}  // namespace
}  // namespace quarv
