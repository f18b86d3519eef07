#include "platform/registry/HiveText.h"

#include <gtest/gtest.h>

#include "platform/registry/RegTypes.h"

namespace quarv::registry {
namespace {

using Outcome = ParsedHive::Outcome;

const QByteArray Sample =
    "quarv-hive 1\n"
    "key \"\"\n"
    "value \"\" text \"at the root\"\n"
    "key \"Software\"\n"
    "key \"Software\\\\Kel\"\n"
    "value \"ConnStr\" text "
    "\"a\\\\b\\\"c\\n\\r\\t\\u{0}\\u{2028}\\u{feff}\xc3\xa4\xf0\x9f\x98\x80\"\n"
    "value \"Count\" number 4294967295\n"
    "value \"Blob\" data 3 00ff10\n"
    "value \"Nothing\" data 0\n"
    "value \"No terminator\" data 1 6162\n"
    "end\n";

const HiveValue* ValueAt(const HiveKey& root, const QStringList& path, const char* name) {
    const HiveKey* key = root.Find(path);
    return key == nullptr ? nullptr : key->values.Find(QString::fromUtf8(name));
}

TEST(HiveTextTest, ReadsEveryKindOfValue) {
    const ParsedHive hive = ParseHive(Sample, HiveKind::Plain);
    ASSERT_EQ(Outcome::Good, hive.outcome) << hive.line << hive.problem.toStdString();
    EXPECT_EQ(QByteArray("at the root", 12), ValueAt(hive.root, {}, "")->data);
    const QStringList kel{"software", "KEL"};
    EXPECT_EQ(QByteArray("a\\b\"c\n\r\t\0\xe2\x80\xa8\xef\xbb\xbf\xc3\xa4\xf0\x9f\x98\x80", 22),
              ValueAt(hive.root, kel, "connstr")->data);
    EXPECT_EQ(quint32{REG_SZ}, ValueAt(hive.root, kel, "ConnStr")->type);
    EXPECT_EQ(QByteArray("\xff\xff\xff\xff"), ValueAt(hive.root, kel, "Count")->data);
    EXPECT_EQ(quint32{REG_DWORD}, ValueAt(hive.root, kel, "Count")->type);
    EXPECT_EQ(QByteArray("\x00\xff\x10", 3), ValueAt(hive.root, kel, "Blob")->data);
    EXPECT_EQ(quint32{REG_BINARY}, ValueAt(hive.root, kel, "Blob")->type);
    EXPECT_EQ(QByteArray(), ValueAt(hive.root, kel, "Nothing")->data);
    EXPECT_EQ(QByteArray("ab"), ValueAt(hive.root, kel, "No terminator")->data);
}

TEST(HiveTextTest, WritesWhatItRead) {
    const ParsedHive hive = ParseHive(Sample, HiveKind::Plain);
    QByteArray text;
    EXPECT_EQ(ERROR_SUCCESS, WriteHive(hive.root, text));
    EXPECT_EQ(Sample, text);
}

TEST(HiveTextTest, AnEmptyHiveIsTwoLines) {
    QByteArray text;
    EXPECT_EQ(ERROR_SUCCESS, WriteHive(HiveKey(), text));
    EXPECT_EQ("quarv-hive 1\nend\n", text);
}

TEST(HiveTextTest, CutAnywhereItIsDamaged) {
    for (qsizetype length = 0; length < Sample.size(); ++length) {
        const ParsedHive hive = ParseHive(Sample.first(length), HiveKind::Plain);
        EXPECT_EQ(Outcome::Damaged, hive.outcome) << "cut at " << length;
        EXPECT_TRUE(hive.root.IsBare());
    }
}

TEST(HiveTextTest, WithAnyByteMadeInvalidItIsDamaged) {
    for (qsizetype at = 0; at < Sample.size(); ++at) {
        QByteArray bytes = Sample;
        bytes[at] = '\xff';
        EXPECT_EQ(Outcome::Damaged, ParseHive(bytes, HiveKind::Plain).outcome) << "byte " << at;
    }
}

TEST(HiveTextTest, MarksOfDeletionAreKeptInAnOverlay) {
    const QByteArray overlay =
        "quarv-hive 1\nkey \"a\" deleted\nkey \"b\" anew\nvalue \"v\" deleted\nend\n";
    const ParsedHive hive = ParseHive(overlay, HiveKind::Overlay);
    ASSERT_EQ(Outcome::Good, hive.outcome);
    EXPECT_EQ(HiveKey::Mark::Deleted, hive.root.Find({"a"})->mark);
    EXPECT_EQ(HiveKey::Mark::Anew, hive.root.Find({"b"})->mark);
    EXPECT_TRUE(ValueAt(hive.root, {"b"}, "v")->deleted);
    QByteArray text;
    EXPECT_EQ(ERROR_SUCCESS, WriteHive(hive.root, text));
    EXPECT_EQ(overlay, text);
}

struct BadRow {
    const char* title;
    const char* lines;  // between the first and the last
    int line;

    friend void PrintTo(const BadRow& row, std::ostream* out) { *out << row.title; }
};

class BadHiveTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadHiveTest, IsDamagedAndSaysWhere) {
    const QByteArray bytes = QByteArray("quarv-hive 1\n") + GetParam().lines + "end\n";
    const ParsedHive hive = ParseHive(bytes, HiveKind::Plain);
    EXPECT_EQ(Outcome::Damaged, hive.outcome);
    EXPECT_EQ(GetParam().line, hive.line);
    EXPECT_FALSE(hive.problem.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadHiveTest,
    testing::Values(BadRow{"UnknownWord", "keys \"a\"\n", 2}, BadRow{"NoQuote", "key a\n", 2},
                    BadRow{"NoBlank", "key\"a\"\n", 2}, BadRow{"OpenString", "key \"a\n", 2},
                    BadRow{"EscapeAtTheEnd", "key \"a\\\n", 2},
                    BadRow{"UnknownEscape", "key \"\\x\"\n", 2},
                    BadRow{"SurrogateEscape", "key \"\\u{d800}\"\n", 2},
                    BadRow{"EscapeBeyondUnicode", "key \"\\u{110000}\"\n", 2},
                    BadRow{"EmptyEscape", "key \"\\u{}\"\n", 2},
                    BadRow{"PathBeginsWithBackslash", "key \"\\\\a\"\n", 2},
                    BadRow{"PathHoldsNul", "key \"a\\u{0}\"\n", 2},
                    BadRow{"CarriageReturn", "key \"a\"\r\n", 2},
                    BadRow{"RawTab", "value \"a\tb\" number 1\n", 2},
                    BadRow{"WordsBehindTheEnd", "key \"a\" more\n", 2},
                    BadRow{"MarkOutsideAnOverlay", "key \"a\" deleted\n", 2},
                    BadRow{"DeletedValueOutsideAnOverlay", "value \"a\" deleted\n", 2},
                    BadRow{"NoData", "value \"a\"\n", 2},
                    BadRow{"NumberTooLarge", "value \"a\" number 4294967296\n", 2},
                    BadRow{"NegativeNumber", "value \"a\" number -1\n", 2},
                    BadRow{"OddHex", "value \"a\" data 3 123\n", 2},
                    BadRow{"NotHex", "value \"a\" data 3 1g\n", 2},
                    BadRow{"NameTwice", "value \"a\" number 1\nvalue \"A\" number 2\n", 3},
                    BadRow{"EndTwice", "end\n", 2}, BadRow{"InvalidUtf8", "key \"\xc3\"\n", 2}),
    [](const auto& row) { return row.param.title; });

TEST(HiveTextTest, ALaterVersionIsUnsupportedNotDamaged) {
    EXPECT_EQ(Outcome::Unsupported, ParseHive("quarv-hive 2\n", HiveKind::Plain).outcome);
    EXPECT_EQ(Outcome::Unsupported, ParseHive("quarv-hive 10 more\n\xff", HiveKind::Plain).outcome);
    EXPECT_EQ(Outcome::Damaged, ParseHive("quarv-hive 0\nend\n", HiveKind::Plain).outcome);
    EXPECT_EQ(Outcome::Damaged, ParseHive("quarv-hive x\nend\n", HiveKind::Plain).outcome);
}

TEST(HiveTextTest, NothingStandsInADeletedKey) {
    const QByteArray head = "quarv-hive 1\nkey \"a\" deleted\n";
    EXPECT_EQ(Outcome::Damaged,
              ParseHive(head + "value \"v\" number 1\nend\n", HiveKind::Overlay).outcome);
    EXPECT_EQ(Outcome::Damaged,
              ParseHive(head + "key \"a\\\\b\"\nend\n", HiveKind::Overlay).outcome);
}

TEST(HiveTextTest, ReadingIsBounded) {
    QByteArray many = "quarv-hive 1\n";
    for (int i = 0; i < 200; ++i)
        many += "key \"" + QByteArray::number(i) + QByteArray("\\\\a").repeated(400) + "\"\n";
    EXPECT_EQ(Outcome::Damaged, ParseHive(many + "end\n", HiveKind::Plain).outcome);
    const QByteArray huge = "quarv-hive 1\nvalue \"a\" text \"" + QByteArray(9000000, 'x');
    EXPECT_EQ(Outcome::Damaged, ParseHive(huge + "\"\nend\n", HiveKind::Plain).outcome);
}

TEST(HiveTextTest, WritingIsBounded) {
    HiveKey wide;
    for (int i = 0; i < 65536; ++i) wide.EnsureChild(QString::number(i));
    QByteArray text;
    EXPECT_EQ(ERROR_NOT_ENOUGH_QUOTA, WriteHive(wide, text));
    HiveKey heavy;
    heavy.SetValue(
        {.name = {}, .type = REG_BINARY, .data = QByteArray(5000000, 'x'), .deleted = false});
    EXPECT_EQ(ERROR_NOT_ENOUGH_QUOTA, WriteHive(heavy, text));
}

}  // namespace
}  // namespace quarv::registry
