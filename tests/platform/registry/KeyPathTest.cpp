#include "platform/registry/KeyPath.h"

#include <gtest/gtest.h>

namespace quarv::registry {
namespace {

struct PathRow {
    const char* title;
    QByteArray text;
    ResultCode code;
    QStringList names;

    friend void PrintTo(const PathRow& row, std::ostream* out) { *out << row.title; }
};

class KeyPathTest : public testing::TestWithParam<PathRow> {};

TEST_P(KeyPathTest, IsSplitOrRefused) {
    QStringList names;
    EXPECT_EQ(GetParam().code, SplitKeyPath(GetParam().text, names));
    EXPECT_EQ(GetParam().names, names);
}

QByteArray Deep(int levels) {
    return QByteArray("a\\").repeated(levels);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, KeyPathTest,
    testing::Values(
        PathRow{"Empty", "", ERROR_SUCCESS, {}},
        PathRow{"One", "Software", ERROR_SUCCESS, {"Software"}},
        PathRow{"Three", "Software\\Kel\\Quarv", ERROR_SUCCESS, {"Software", "Kel", "Quarv"}},
        PathRow{"BackslashAtEnd", "Software\\Kel\\", ERROR_SUCCESS, {"Software", "Kel"}},
        PathRow{"DoubledBackslash", "Software\\\\Kel", ERROR_SUCCESS, {"Software", "Kel"}},
        PathRow{"Slash", "a/b", ERROR_SUCCESS, {"a/b"}},
        PathRow{"BackslashAtStart", "\\Software", ERROR_BAD_PATHNAME, {}},
        PathRow{"NotUtf8", "a\xff", ERROR_INVALID_PARAMETER, {}},
        PathRow{"HoldsNul", QByteArray("a\0b", 3), ERROR_INVALID_PARAMETER, {}},
        PathRow{"LongestName", QByteArray(255, 'k'), ERROR_SUCCESS, {QString(255, u'k')}},
        PathRow{"NameTooLong", QByteArray(256, 'k'), ERROR_INVALID_PARAMETER, {}},
        PathRow{"Deepest", Deep(512), ERROR_SUCCESS, QStringList(512, QStringLiteral("a"))},
        PathRow{"TooDeep", Deep(513), ERROR_INVALID_PARAMETER, {}},
        PathRow{
            "Huge", QByteArray(100000000, '\\').replace(0, 1, "a"), ERROR_INVALID_PARAMETER, {}}),
    [](const auto& row) { return row.param.title; });

TEST(ValueNameTest, IsCheckedAgainstItsLimit) {
    QString name;
    EXPECT_EQ(ERROR_SUCCESS, CheckValueName("", name));
    EXPECT_EQ(QString(), name);
    EXPECT_EQ(ERROR_SUCCESS, CheckValueName(QByteArray(16383, 'n'), name));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, CheckValueName(QByteArray(16384, 'n'), name));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, CheckValueName("\xc3", name));
}

}  // namespace
}  // namespace quarv::registry
