#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

class HivesTest : public RegistryHome {
  protected:
    ResultCode Create(HKey root, const QByteArray& path, quint32* disposition = nullptr) {
        HKey key = NoKey;
        const ResultCode code =
            hives_.RegCreateKeyEx(root, path.constData(), 0, KEY_ALL_ACCESS, &key, disposition);
        hives_.RegCloseKey(key);
        return code;
    }

    ResultCode Open(HKey root, const QByteArray& path, quint32 access, HKey& key) {
        key = NoKey;
        return hives_.RegOpenKeyEx(root, path.constData(), access, &key);
    }

    QByteArray SubKey(HKey key, quint32 index) {
        char name[766];
        quint32 size = sizeof name;
        const ResultCode code = hives_.RegEnumKeyEx(key, index, name, &size);
        return code == ERROR_SUCCESS ? QByteArray(name) : QByteArray::number(code);
    }

    Hives hives_ = NewHives();
};

TEST_F(HivesTest, AKeyIsMadeOnceWithAllAboveIt) {
    quint32 disposition = 0;
    EXPECT_EQ(ERROR_SUCCESS, Create(HKEY_CURRENT_USER, "Software\\Kel", &disposition));
    EXPECT_EQ(quint32{REG_CREATED_NEW_KEY}, disposition);
    EXPECT_EQ(ERROR_SUCCESS, Create(HKEY_CURRENT_USER, "SOFTWARE\\kel", &disposition));
    EXPECT_EQ(quint32{REG_OPENED_EXISTING_KEY}, disposition);
    HKey key = NoKey;
    EXPECT_EQ(ERROR_SUCCESS, Open(HKEY_CURRENT_USER, "software", KEY_ALL_ACCESS, key));
    EXPECT_EQ("Kel", SubKey(key, 0));
    EXPECT_EQ("259", SubKey(key, 1));
}

TEST_F(HivesTest, TheTwoRootsAreApart) {
    Create(HKEY_CURRENT_USER, "Mine");
    HKey key = NoKey;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Open(HKEY_LOCAL_MACHINE, "Mine", KEY_QUERY_VALUE, key));
    EXPECT_EQ(NoKey, key);
}

TEST_F(HivesTest, KeysOpenBelowOpenKeysWhateverTheirRights) {
    Create(HKEY_CURRENT_USER, "A\\B");
    HKey above = NoKey;
    HKey below = NoKey;
    ASSERT_EQ(ERROR_SUCCESS, Open(HKEY_CURRENT_USER, "A", 0, above));
    EXPECT_EQ(ERROR_SUCCESS, Open(above, "B", KEY_QUERY_VALUE, below));
    EXPECT_EQ(ERROR_SUCCESS, Create(above, "C"));
    HKey same = NoKey;
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegOpenKeyEx(above, nullptr, KEY_ENUMERATE_SUB_KEYS, &same));
    EXPECT_EQ("C", SubKey(same, 1));
}

TEST_F(HivesTest, HandlesThatAreNotOpenAreRefused) {
    const HKey strange{4711};
    HKey key = NoKey;
    quint32 size = 0;
    char name[10];
    KeyInfo info;
    for (const HKey none : {NoKey, strange}) {
        EXPECT_EQ(ERROR_INVALID_HANDLE, Open(none, "A", KEY_QUERY_VALUE, key));
        EXPECT_EQ(ERROR_INVALID_HANDLE, Create(none, "A"));
        EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegSetValueEx(none, "v", REG_SZ, "", 1));
        EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegQueryValueEx(none, "v", nullptr, nullptr, &size));
        EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegQueryInfoKey(none, &info));
        EXPECT_EQ(ERROR_INVALID_HANDLE,
                  hives_.RegEnumValue(none, 0, name, &size, nullptr, nullptr, nullptr));
        EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegEnumKeyEx(none, 0, name, &size));
        EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegDeleteValue(none, "v"));
        EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegDeleteTree(none, "A"));
        EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegCloseKey(none));
    }
}

TEST_F(HivesTest, AClosedKeyIsClosedAndAPredefinedOneNever) {
    Create(HKEY_CURRENT_USER, "A");
    HKey key = NoKey;
    Open(HKEY_CURRENT_USER, "A", KEY_ALL_ACCESS, key);
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegCloseKey(key));
    EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegCloseKey(key));
    EXPECT_EQ(ERROR_INVALID_HANDLE, hives_.RegSetValueEx(key, "v", REG_SZ, "", 1));
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegCloseKey(HKEY_CURRENT_USER));
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegCloseKey(HKEY_LOCAL_MACHINE));
    EXPECT_EQ(ERROR_SUCCESS, Create(HKEY_CURRENT_USER, "B"));
}

TEST_F(HivesTest, RightsOfTheHandleCount) {
    Create(HKEY_CURRENT_USER, "A");
    HKey reader = NoKey;
    HKey writer = NoKey;
    Open(HKEY_CURRENT_USER, "A", KEY_QUERY_VALUE, reader);
    Open(HKEY_CURRENT_USER, "A", KEY_SET_VALUE, writer);
    char name[10];
    quint32 size = sizeof name;
    KeyInfo info;
    EXPECT_EQ(ERROR_ACCESS_DENIED, hives_.RegSetValueEx(reader, "v", REG_SZ, "", 1));
    EXPECT_EQ(ERROR_ACCESS_DENIED, hives_.RegDeleteValue(reader, "v"));
    EXPECT_EQ(ERROR_ACCESS_DENIED, hives_.RegEnumKeyEx(reader, 0, name, &size));
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegSetValueEx(writer, "v", REG_SZ, "", 1));
    EXPECT_EQ(ERROR_ACCESS_DENIED, hives_.RegQueryValueEx(writer, "v", nullptr, nullptr, &size));
    EXPECT_EQ(ERROR_ACCESS_DENIED, hives_.RegQueryInfoKey(writer, &info));
    EXPECT_EQ(ERROR_ACCESS_DENIED,
              hives_.RegEnumValue(writer, 0, name, &size, nullptr, nullptr, nullptr));
}

TEST_F(HivesTest, PathsThatCannotBeKeysAreRefused) {
    HKey key = NoKey;
    const QByteArray longName(256, 'k');
    const QByteArray levels32 = QByteArray("a\\").repeated(32);
    EXPECT_EQ(ERROR_BAD_PATHNAME, Create(HKEY_CURRENT_USER, "\\A"));
    EXPECT_EQ(ERROR_BAD_PATHNAME, Open(HKEY_CURRENT_USER, "\\A", KEY_QUERY_VALUE, key));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, Create(HKEY_CURRENT_USER, longName));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, Open(HKEY_CURRENT_USER, longName, KEY_QUERY_VALUE, key));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, Create(HKEY_CURRENT_USER, "a\xff"));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, Create(HKEY_CURRENT_USER, levels32 + "b"));
    EXPECT_EQ(ERROR_SUCCESS, Create(HKEY_CURRENT_USER, levels32));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              hives_.RegCreateKeyEx(HKEY_CURRENT_USER, nullptr, 0, KEY_ALL_ACCESS, &key));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              hives_.RegCreateKeyEx(HKEY_CURRENT_USER, "A", 1, KEY_ALL_ACCESS, &key));
}

TEST_F(HivesTest, KeysNestAtMost512Deep) {
    HKey key = HKEY_CURRENT_USER;
    const QByteArray levels32 = QByteArray("a\\").repeated(32);
    for (int i = 0; i < 16; ++i) {
        HKey below = NoKey;
        ASSERT_EQ(ERROR_SUCCESS,
                  hives_.RegCreateKeyEx(key, levels32.constData(), 0, KEY_ALL_ACCESS, &below));
        key = below;
    }
    EXPECT_EQ(ERROR_INVALID_PARAMETER, Create(key, "a"));
    Hives again = NewHives();
    EXPECT_EQ("(code 2)",
              Get(again, HKEY_CURRENT_USER, QByteArray("a\\").repeated(512).constData(), "v"));
    EXPECT_EQ(QStringList(), reports_);
}

TEST_F(HivesTest, AHandleToADeletedKeySaysSo) {
    Create(HKEY_CURRENT_USER, "A\\B");
    HKey key = NoKey;
    Open(HKEY_CURRENT_USER, "A\\B", KEY_ALL_ACCESS, key);
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegDeleteTree(HKEY_CURRENT_USER, "a"));
    EXPECT_EQ(ERROR_KEY_DELETED, hives_.RegSetValueEx(key, "v", REG_SZ, "", 1));
    EXPECT_EQ(ERROR_KEY_DELETED, hives_.RegQueryValueEx(key, "v", nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_KEY_DELETED, Create(key, "C"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, hives_.RegDeleteTree(HKEY_CURRENT_USER, "A"));
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegCloseKey(key));
}

TEST_F(HivesTest, ARootIsNotDeleted) {
    Create(HKEY_CURRENT_USER, "A");
    EXPECT_EQ(ERROR_INVALID_PARAMETER, hives_.RegDeleteTree(HKEY_CURRENT_USER, ""));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, hives_.RegDeleteTree(HKEY_CURRENT_USER, nullptr));
    EXPECT_EQ("A", SubKey(HKEY_CURRENT_USER, 0));
}

}  // namespace
}  // namespace quarv::registry
