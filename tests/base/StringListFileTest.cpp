#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/StringList.h"
#include "support/Raised.h"

namespace quarv {

namespace {

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

  private:
    QTemporaryDir folder_;
};

QString Joined(const StringList& list) {
    QString text;
    for (int i = 1; i <= list.Count(); ++i) text += list.Items(static_cast<qint16>(i)) + u'|';
    return text;
}

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
        {"\xef\xbb\xbfmark\n", "mark|"},
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

TEST_F(StringListFile, LoadRefusesWhatIsNoUtf8AndAddsNothing) {
    Write("lines", "good\nbad \xff\n");
    StringList list;
    EXPECT_EQ(Raised([&] { list.LoadFromFile(Path("lines")); }), 75);
    Write("lines", "cut \xe2\x82");
    EXPECT_EQ(Raised([&] { list.LoadFromFile(Path("lines")); }), 75);
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(StringListFile, LoadRefusesAFileLargerThanItsLimit) {
    QFile file(Path("large"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(64 * 1024 * 1024 + 1));
    StringList list;
    EXPECT_EQ(Raised([&] { list.LoadFromFile(Path("large")); }), 75);
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(StringListFile, LoadStopsWhereTheListIsFull) {
    Write("lines", QByteArray("x\n").repeated(32758));
    StringList list;
    EXPECT_EQ(Raised([&] { list.LoadFromFile(Path("lines")); }), 6);
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
