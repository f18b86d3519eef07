#include "base/RUtils.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "support/Raised.h"

namespace quarv {

TEST(RUtils, TextStartsWithIgnoresCase) {
    EXPECT_TRUE(TextStartsWith(u"Select * from t", u"SELECT"));
    EXPECT_FALSE(TextStartsWith(u"Sel", u"Select"));
    EXPECT_FALSE(TextStartsWith(u" Select", u"Select"));
    EXPECT_TRUE(TextStartsWith(u"x", u""));
    EXPECT_TRUE(TextStartsWith(u"", u""));
    EXPECT_TRUE(TextStartsWith(u"\u00c4pfel", u"\u00e4P"));
}

TEST(RUtils, SameTextIgnoresCase) {
    EXPECT_TRUE(SameText(u"Data Source", u"dATA sOURCE"));
    EXPECT_TRUE(SameText(u"\u0416", u"\u0436"));
    EXPECT_TRUE(SameText(u"\u03a3", u"\u03c2"));  // both sigmas fold alike
    EXPECT_TRUE(SameText(u"\U00010400", u"\U00010428"));
    EXPECT_TRUE(SameText(u"", QStringView()));
    EXPECT_FALSE(SameText(u"a", u"a "));
    EXPECT_FALSE(SameText(u"a", u"b"));
}

TEST(RUtils, AddToCommaListSeparates) {
    QString list;
    AddToCommaList(list, "a");
    AddToCommaList(list, "b");
    EXPECT_EQ(list, "a, b");
    AddToCommaList(list, "");
    EXPECT_EQ(list, "a, b, ");
}

TEST(RUtils, BarsBecomeLineBreaks) {
    EXPECT_EQ(BarsToLineBreaks("a|b||c"), "a\r\nb\r\n\r\nc");
    EXPECT_EQ(BarsToLineBreaks(""), "");
}

TEST(RUtils, TrimAtNullCutsAtTheFirst) {
    EXPECT_EQ(TrimAtNull(QString::fromUtf16(u"ab\0cd\0", 6)), "ab");
    EXPECT_EQ(TrimAtNull("abc"), "abc");
    EXPECT_EQ(TrimAtNull(QString(QChar(0))), "");
}

TEST(RUtils, TrimBlanksTakesBlanksAlone) {
    EXPECT_EQ(TrimBlanks(u"  a b  "), "a b");
    EXPECT_EQ(TrimBlanks(u" \t a \r\n "), "\t a \r\n");
    EXPECT_EQ(TrimBlanks(u"\u00A0a"), "\u00A0a");
    EXPECT_EQ(TrimBlanks(u"   "), "");
    EXPECT_EQ(TrimBlanks(QStringView()), "");
}

TEST(RUtils, MaxAndMinGiveTheSecondOfEquals) {
    EXPECT_EQ(MaxOf(3, 2).ToInteger(), 3);
    EXPECT_EQ(MaxOf(2, 3).ToInteger(), 3);
    EXPECT_EQ(MinOf(3, 2).ToInteger(), 2);
    EXPECT_EQ(MinOf(2, 3).ToInteger(), 2);
    EXPECT_EQ(MaxOf(5, 5.0).kind(), Value::Kind::Floating);
    EXPECT_EQ(MinOf(5, 5.0).kind(), Value::Kind::Floating);
    EXPECT_EQ(MaxOf(99, Value(u"a")).Text(), "a");
    EXPECT_EQ(MaxOf(Value(u"b"), Value(u"a")).Text(), "b");
    EXPECT_EQ(MaxOf(Value::Null(), 1).ToInteger(), 1);
    EXPECT_TRUE(MinOf(1, Value::Null()).IsNull());
}

TEST(RUtils, ClampBringsBetweenAndTheUpperBoundWins) {
    const auto clamp = [](int x, int lo, int hi) {
        Value value = x;
        Clamp(value, lo, hi);
        return value.ToInteger();
    };
    EXPECT_EQ(clamp(5, 1, 9), 5);
    EXPECT_EQ(clamp(0, 1, 9), 1);
    EXPECT_EQ(clamp(10, 1, 9), 9);
    EXPECT_EQ(clamp(5, 9, 1), 1);
    EXPECT_EQ(clamp(0, 9, 1), 1);
}

TEST(RUtils, IsAssignedForAnObjectOnly) {
    struct Thing : Object {};
    EXPECT_TRUE(IsAssigned(ObjectRef(std::make_shared<Thing>())));
    EXPECT_FALSE(IsAssigned(ObjectRef()));
    EXPECT_FALSE(IsAssigned(5));
    EXPECT_FALSE(IsAssigned(Value()));
}

TEST(RUtils, SplitPathPartsBehindTheLastSeparator) {
    const char* cases[][3] = {
        {"C:\\data\\x.sql", "C:\\data\\", "x.sql"},
        {"C:x.sql", "C:", "x.sql"},
        {"x.sql", "", "x.sql"},
        {"a:b\\c:d", "a:b\\", "c:d"},
        {"folder\\", "folder\\", ""},
        {"/home/x.sql", "", "/home/x.sql"},
        {"", "", ""},
    };
    for (const auto& [path, folder, name] : cases) {
        EXPECT_EQ(SplitPath(path).folder, folder) << path;
        EXPECT_EQ(SplitPath(path).name, name) << path;
        EXPECT_EQ(FileNameOf(path), name) << path;
    }
}

TEST(RUtils, FileExistsForRegularFilesOnly) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.sql");
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(path));
    EXPECT_FALSE(FileExists(folder.path()));
    EXPECT_FALSE(FileExists("/dev/null"));
    EXPECT_FALSE(FileExists(QString("a") + QChar(0)));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(FileExists(path));
    EXPECT_FALSE(FileExists(path + "/x"));
    ASSERT_TRUE(QFile::link(path, folder.filePath("link")));
    EXPECT_TRUE(FileExists(folder.filePath("link")));
}

}  // namespace quarv
