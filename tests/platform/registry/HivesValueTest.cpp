#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

class HivesValueTest : public RegistryHome {
  protected:
    HivesValueTest() { hives_.RegCreateKeyEx(HKEY_CURRENT_USER, "K", 0, KEY_ALL_ACCESS, &key_); }

    ResultCode SetBytes(const char* name, quint32 type, const QByteArray& data) {
        return hives_.RegSetValueEx(key_, name, type, data.constData(),
                                    static_cast<quint32>(data.size()));
    }

    QByteArray Bytes(Hives& hives, const char* name, quint32& type) {
        HKey key = NoKey;
        hives.RegOpenKeyEx(HKEY_CURRENT_USER, "K", KEY_QUERY_VALUE, &key);
        char data[100000];
        quint32 size = sizeof data;
        const ResultCode code = hives.RegQueryValueEx(key, name, &type, data, &size);
        hives.RegCloseKey(key);
        return code == ERROR_SUCCESS ? QByteArray(data, size) : "code";
    }

    Hives hives_ = NewHives();
    HKey key_ = NoKey;
};

struct DataRow {
    const char* title;
    quint32 type;
    QByteArray data;

    friend void PrintTo(const DataRow& row, std::ostream* out) { *out << row.title; }
};

class HivesDataTest : public HivesValueTest, public testing::WithParamInterface<DataRow> {};

TEST_P(HivesDataTest, AnotherProgramReadsTheVeryBytes) {
    ASSERT_EQ(ERROR_SUCCESS, SetBytes("v", GetParam().type, GetParam().data));
    Hives other = NewHives();
    quint32 type = 99;
    EXPECT_EQ(GetParam().data, Bytes(other, "V", type));
    EXPECT_EQ(GetParam().type, type);
    EXPECT_EQ(QStringList(), reports_);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HivesDataTest,
    testing::Values(DataRow{"Text", REG_SZ, QByteArray("abc", 4)},
                    DataRow{"EmptyText", REG_SZ, QByteArray("", 1)},
                    DataRow{"NoBytes", REG_SZ, QByteArray()},
                    DataRow{"NoTerminator", REG_SZ, "abc"},
                    DataRow{"TwoTerminators", REG_SZ, QByteArray("abc\0", 5)},
                    DataRow{"LineBreaks", REG_SZ, QByteArray("a\r\nb\nend\n", 10)},
                    DataRow{"NulWithin", REG_SZ, QByteArray("a\0b", 4)},
                    DataRow{"QuotesAndBackslashes", REG_SZ, QByteArray("\\\"\\\\n\"", 7)},
                    DataRow{"Emoji", REG_SZ, QByteArray("\xf0\x9f\x98\x80", 5)},
                    DataRow{"ByteOrderMark", REG_SZ, QByteArray("\xef\xbb\xbf", 4)},
                    DataRow{"NotUtf8", REG_SZ, QByteArray("\xff\xc3", 3)},
                    DataRow{"Controls", REG_SZ, QByteArray("\x01\x1f\x7f\xc2\x85", 6)},
                    DataRow{"TenThousand", REG_SZ, QByteArray(10000, 'x') + '\0'},
                    DataRow{"Number", REG_DWORD, QByteArray("\x2a\0\0\0", 4)},
                    DataRow{"ShortNumber", REG_DWORD, "\x2a"},
                    DataRow{"Expandable", REG_EXPAND_SZ, QByteArray("%a%", 4)},
                    DataRow{"Binary", REG_BINARY, QByteArray("\0\1\xff", 3)},
                    DataRow{"NoType", REG_NONE, QByteArray()},
                    DataRow{"UnknownType", 0xfffffffeu, "z"}),
    [](const auto& row) { return row.param.title; });

TEST_F(HivesValueTest, NamesMatchInAnyLetterCaseAndKeepTheirFirst) {
    SetBytes("ConnStr", REG_SZ, "1");
    SetBytes("CONNSTR", REG_SZ, "2");
    SetBytes("\xc3\x84rger", REG_SZ, "3");
    SetBytes("\xc3\xa4RGER", REG_SZ, "4");
    KeyInfo info;
    hives_.RegQueryInfoKey(key_, &info);
    EXPECT_EQ(2u, info.values);
    char name[20];
    quint32 size = sizeof name;
    hives_.RegEnumValue(key_, 1, name, &size, nullptr, nullptr, nullptr);
    EXPECT_STREQ("\xc3\x84rger", name);
    quint32 type = 0;
    EXPECT_EQ("4", Bytes(hives_, "\xc3\x84RGER", type));
}

TEST_F(HivesValueTest, ASizeIsAskedForAndABufferTooSmallToldSo) {
    SetBytes("v", REG_SZ, QByteArray("abc", 4));
    quint32 type = 0;
    quint32 size = 0;
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegQueryValueEx(key_, "v", &type, nullptr, &size));
    EXPECT_EQ(4u, size);
    EXPECT_EQ(quint32{REG_SZ}, type);
    char data[4] = {'?', '?', '?', '?'};
    size = 3;
    EXPECT_EQ(ERROR_MORE_DATA, hives_.RegQueryValueEx(key_, "v", nullptr, data, &size));
    EXPECT_EQ(4u, size);
    EXPECT_EQ('?', data[0]);
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegQueryValueEx(key_, "v", nullptr, data, &size));
    EXPECT_STREQ("abc", data);
    EXPECT_EQ(ERROR_INVALID_PARAMETER, hives_.RegQueryValueEx(key_, "v", nullptr, data, nullptr));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, hives_.RegQueryValueEx(key_, "w", nullptr, data, &size));
}

TEST_F(HivesValueTest, TheDefaultValueHasNoName) {
    SetBytes(nullptr, REG_SZ, "d");
    quint32 type = 0;
    EXPECT_EQ("d", Bytes(hives_, "", type));
}

TEST_F(HivesValueTest, NamesBeyondTheLimitAreRefused) {
    EXPECT_EQ(ERROR_INVALID_PARAMETER, SetBytes(QByteArray(16384, 'n').constData(), REG_SZ, "x"));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, SetBytes("\xff", REG_SZ, "x"));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, hives_.RegSetValueEx(key_, "v", REG_SZ, nullptr, 1));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, hives_.RegDeleteValue(key_, "\xff"));
}

TEST_F(HivesValueTest, DataBeyondTheLimitAreRefusedAndNothingElseIsLost) {
    SetBytes("kept", REG_SZ, QByteArray("k", 2));
    EXPECT_EQ(ERROR_NOT_ENOUGH_QUOTA, SetBytes("big", REG_BINARY, QByteArray(5000000, 'b')));
    EXPECT_EQ(ERROR_NOT_ENOUGH_QUOTA, SetBytes("big", REG_SZ, QByteArray(9000000, 'b')));
    EXPECT_EQ("k", Get(hives_, HKEY_CURRENT_USER, "K", "kept"));
    EXPECT_EQ("(code 2)", Get(hives_, HKEY_CURRENT_USER, "K", "big"));
}

TEST_F(HivesValueTest, EnumerationTellsNamesAndSizesAndItsEnd) {
    SetBytes("first", REG_SZ, QByteArray("abc", 4));
    SetBytes("\xc3\xa4", REG_DWORD, QByteArray("\1\0\0\0", 4));
    KeyInfo info;
    ASSERT_EQ(ERROR_SUCCESS, hives_.RegQueryInfoKey(key_, &info));
    EXPECT_EQ(2u, info.values);
    EXPECT_EQ(5u, info.maxValueName);
    EXPECT_EQ(4u, info.maxData);
    EXPECT_EQ(0u, info.subKeys);
    char name[6];
    char data[4];
    quint32 type = 0;
    quint32 nameSize = 6;
    quint32 size = 4;
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegEnumValue(key_, 0, name, &nameSize, &type, data, &size));
    EXPECT_STREQ("first", name);
    EXPECT_EQ(5u, nameSize);
    EXPECT_STREQ("abc", data);
    nameSize = 5;
    EXPECT_EQ(ERROR_MORE_DATA, hives_.RegEnumValue(key_, 0, name, &nameSize, &type, data, &size));
    nameSize = 3;
    size = 4;
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegEnumValue(key_, 1, name, &nameSize, &type, data, &size));
    EXPECT_EQ(2u, nameSize);
    nameSize = 6;
    size = 3;
    EXPECT_EQ(ERROR_MORE_DATA, hives_.RegEnumValue(key_, 1, name, &nameSize, &type, data, &size));
    EXPECT_EQ(4u, size);
    EXPECT_EQ(ERROR_NO_MORE_ITEMS,
              hives_.RegEnumValue(key_, 2, name, &nameSize, &type, data, &size));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              hives_.RegEnumValue(key_, 0, nullptr, nullptr, nullptr, nullptr, nullptr));
}

TEST_F(HivesValueTest, ADeletedValueIsGoneAndTheOrderOfTheOthersStays) {
    for (const char* name : {"a", "b", "c"}) SetBytes(name, REG_SZ, "x");
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegDeleteValue(key_, "A"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, hives_.RegDeleteValue(key_, "a"));
    char name[2];
    quint32 size = sizeof name;
    EXPECT_EQ(ERROR_SUCCESS, hives_.RegEnumValue(key_, 0, name, &size, nullptr, nullptr, nullptr));
    EXPECT_STREQ("b", name);
    quint32 type = 0;
    EXPECT_EQ("x", Bytes(hives_, "c", type));
}

}  // namespace
}  // namespace quarv::registry
