#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/Error.h"
#include "base/StringList.h"
#include "support/Raised.h"

namespace quarv {

namespace {

QString Joined(const StringList& list) {
    QString text;
    for (int i = 1; i <= list.Count(); ++i) text += list.Items(static_cast<qint16>(i)) + u'|';
    return text;
}

template <typename Action>
QString Described(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Description();
    }
    return {};
}

class StringListFile : public testing::Test {
  protected:
    QString Path(const QString& name) const { return folder_.filePath(name); }

    void Write(const QString& name, const QByteArray& bytes) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QByteArray Read(const QString& name) const {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    // Files are given by their bytes in hex.
    void ExpectRefused(std::initializer_list<const char*> files, const QString& reason) const {
        StringList list;
        for (const char* hex : files) {
            Write("lines", QByteArray::fromHex(hex));
            EXPECT_EQ(Described([&] { list.LoadFromFile(Path("lines")); }),
                      "Path or file access error: " + Path("lines") + ": " + reason)
                << hex;
        }
        EXPECT_EQ(list.Count(), 0);
    }

  private:
    QTemporaryDir folder_;
};

}  // namespace

TEST_F(StringListFile, SavesUtf8LinesAndLoadsThemBack) {
    StringList list;
    list.Add("a");
    list.Add("");
    list.Add("\u00e4\u20ac\U0001F600");
    list.Add("");
    EXPECT_TRUE(list.SaveToFile(Path("lines")));
    EXPECT_EQ(Read("lines"), QByteArray("a\r\n\r\n\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\r\n\r\n"));
    StringList loaded;
    EXPECT_TRUE(loaded.LoadFromFile(Path("lines")));
    EXPECT_EQ(Joined(loaded), "a||\u00e4\u20ac\U0001F600||");
}

TEST_F(StringListFile, ItemWithALineBreakBecomesSeveral) {
    StringList list;
    list.Add("a\r\nb\nc");
    EXPECT_TRUE(list.SaveToFile(Path("lines")));
    StringList loaded;
    EXPECT_TRUE(loaded.LoadFromFile(Path("lines")));
    EXPECT_EQ(Joined(loaded), "a|b|c|");
}

TEST_F(StringListFile, LoadsEveryLineEnd) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"a", "a|"},
        {"a\n", "a|"},
        {"a\r", "a|"},
        {"a\r\nb\nc\rd", "a|b|c|d|"},
        {"\n\n", "||"},
        {"a\n\rb", "a||b|"},
        {"a\n\n\nb\r\r\nc\n\r\n", "a|||b||c||"},
        {"\r\n\n\r", "|||"},
        {"\xef\xbb\xbfmark\n", "mark|"},
        {"\xef\xbb\xbf", ""},
        {"\xef\xbb\xbf\xef\xbb\xbf\n\xef\xbb\xbf", "\ufeff|\ufeff|"},
    };
    for (const auto& [bytes, items] : cases) {
        Write("lines", QByteArray(bytes));
        StringList list;
        EXPECT_TRUE(list.LoadFromFile(Path("lines")));
        EXPECT_EQ(Joined(list), items) << bytes;
    }
}

TEST_F(StringListFile, LoadAppends) {
    Write("lines", "b\n");
    StringList list;
    list.Add("a");
    EXPECT_TRUE(list.LoadFromFile(Path("lines")));
    EXPECT_EQ(Joined(list), "a|b|");
}

TEST_F(StringListFile, LoadOfAMissingFileIsFalse) {
    StringList list;
    list.Add("a");
    EXPECT_FALSE(list.LoadFromFile(Path("missing")));
    EXPECT_FALSE(list.LoadFromFile(Path("")));  // the folder itself
    EXPECT_FALSE(list.LoadFromFile(""));
    EXPECT_EQ(Joined(list), "a|");
}

TEST_F(StringListFile, LoadReadsUtf16WhereAMarkSaysSo) {
    const std::pair<const char*, const char*> cases[] = {
        {"fffe", ""},
        {"feff", ""},
        {"fffe 6100 0d00 0a00 e400 ac20 0a00", "a|\u00e4\u20ac|"},
        {"feff 0061 000d 000a 00e4 20ac 000a", "a|\u00e4\u20ac|"},
        {"fffe 3dd8 00de 0d00 0a0d", "\U0001F600|\u0d0a|"},
        {"feff d83d de00 000d 0d0a", "\U0001F600|\u0d0a|"},
        {"fffe fffe 6100", "\ufeff\u0061|"},
    };
    for (const auto& [hex, items] : cases) {
        Write("lines", QByteArray::fromHex(hex));
        StringList list;
        EXPECT_TRUE(list.LoadFromFile(Path("lines"))) << hex;
        EXPECT_EQ(Joined(list), items) << hex;
    }
}

TEST_F(StringListFile, LoadRefusesOtherBytesAndAddsNothing) {
    ExpectRefused(
        {
            "676f6f640a 626164 ff 0a",  // no UTF-8
            "637574 e282",              // cut off in a character
            "eda080",                   // a surrogate in UTF-8
            "c080",                     // a character of code 0 in more bytes than it needs
            "fffe 6100 0a",             // half a unit
            "feff 00",                  // half a unit
            "fffe 6100 3dd8",           // a lone leading surrogate
            "fffe 3dd8 6100",           // likewise, before a letter
            "feff de00 0061",           // a lone trailing surrogate
            "feff de00 d83d",           // a pair the wrong way round
        },
        "the file is neither UTF-8 nor marked UTF-16 text");
}

TEST_F(StringListFile, LoadRefusesACharacterOfCodeZeroAndAddsNothing) {
    ExpectRefused(
        {
            "00",                          // a program
            "610a 62006300",               // UTF-8
            "6100 6200",                   // UTF-16 without a mark
            "fffe 6100 0000",              // UTF-16
            "feff 0061 0000",              // UTF-16
            "fffe0000 61000000 0a000000",  // UTF-32, whose mark begins like UTF-16's
            "fffe0000",
            "0000feff 00000061",  // UTF-32 the other way round
        },
        "the file is no text: it holds a character of code 0");
}

TEST_F(StringListFile, LoadRefusesAFileLargerThanItsLimit) {
    QFile file(Path("large"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(64 * 1024 * 1024 + 1));
    StringList list;
    EXPECT_EQ(Raised([&] { list.LoadFromFile(Path("large")); }), 75);
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(StringListFile, LoadFillsTheListToItsLastPlace) {
    Write("lines", QByteArray("x\n").repeated(32756) + "last");
    StringList list;
    EXPECT_TRUE(list.LoadFromFile(Path("lines")));
    EXPECT_EQ(list.Count(), 32757);
    EXPECT_EQ(list.Items(32757), "last");
}

TEST_F(StringListFile, LoadAddsNothingWhereTheListCannotHoldAllLines) {
    Write("lines", QByteArray("x\n").repeated(32757) + "y");
    StringList list;
    EXPECT_EQ(Raised([&] { list.LoadFromFile(Path("lines")); }), 6);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(Described([&] { list.LoadFromFile(Path("lines")); }),
              "Overflow: " + Path("lines") + ": more than 32757 lines");
}

TEST_F(StringListFile, LoadCountsWhatTheListAlreadyHolds) {
    Write("lines", QByteArray("\r\n").repeated(32756));
    StringList list;
    list.Add("a");
    list.Add("b");
    EXPECT_EQ(Described([&] { list.LoadFromFile(Path("lines")); }),
              "Overflow: " + Path("lines") + ": more than 32755 lines");
    EXPECT_EQ(Joined(list), "a|b|");
    list.Remove(2);
    EXPECT_TRUE(list.LoadFromFile(Path("lines")));
    EXPECT_EQ(list.Count(), 32757);
}

TEST_F(StringListFile, LoadRaisesWhereReadingFails) {
    StringList list;
    EXPECT_EQ(Raised([&] { list.LoadFromFile("/proc/self/mem"); }), 75);
}

TEST_F(StringListFile, ForbiddenFileRaisesPermissionDenied) {
    if (geteuid() == 0) GTEST_SKIP() << "the system's administrator may read every file";
    Write("lines", "a\n");
    ASSERT_TRUE(QFile::setPermissions(Path("lines"), QFileDevice::WriteOwner));
    StringList list;
    EXPECT_EQ(Raised([&] { list.LoadFromFile(Path("lines")); }), 70);
}

TEST_F(StringListFile, SaveReplacesALongerFile) {
    Write("lines", QByteArray("x").repeated(1000));
    StringList list;
    list.Add("a");
    EXPECT_TRUE(list.SaveToFile(Path("lines")));
    EXPECT_EQ(Read("lines"), QByteArray("a\r\n"));
}

TEST_F(StringListFile, SaveOfAnUndeletableFileIsFalse) {
    EXPECT_FALSE(StringList().SaveToFile("/proc/version"));
}

TEST_F(StringListFile, SaveRaisesWhereOpeningFails) {
    EXPECT_EQ(Raised([&] { StringList().SaveToFile(Path("no such folder/lines")); }), 75);
    EXPECT_EQ(Raised([&] { StringList().SaveToFile(Path("")); }), 75);
    EXPECT_EQ(Raised([&] { StringList().SaveToFile(""); }), 75);
    EXPECT_EQ(Raised([&] { StringList().SaveToFile(Path(QString("a") + QChar(0))); }), 75);
}

TEST_F(StringListFile, SaveRaisesOnAFullDisk) {
    StringList list;
    list.Add("a");
    EXPECT_EQ(Raised([&] { list.SaveToFile("/dev/full"); }), 75);
}

}  // namespace quarv
