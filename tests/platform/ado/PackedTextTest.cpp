#include "platform/ado/PackedText.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv::test {

using ado::ByteLog;
using ado::PackedText;
using Form = PackedText::Form;

namespace {

constexpr qint64 Whole = 0x7FFFFFFFFFFFFFFF;

// A text between other bytes.
struct Written {
    explicit Written(const QString& text) {
        log.Append("head", 4);
        const PackedText packed(text);
        place = {packed.GetForm(), log.Size(), packed.Bytes()};
        packed.Write(log);
        EXPECT_EQ(log.Size() - place.start, place.bytes);
        log.Append("tail", 4);
    }

    QString Read(qint64 most = Whole) const { return PackedText::Read(log, place, most); }
    qint64 Length() const { return PackedText::Length(log, place); }

    ByteLog log;
    PackedText::Place place{};
};

struct FormCase {
    const char* name;
    QString text;
    Form form;
    quint64 bytes;
};

const FormCase Forms[] = {
    {"Empty", QStringLiteral(u""), Form::Latin1, 0},
    {"Ascii", QStringLiteral(u"abc"), Form::Latin1, 3},
    {"Latin1", QStringLiteral(u"Gr\u00F6\u00DFe \u00FF"), Form::Latin1, 7},
    {"Euro", QStringLiteral(u"Gr\u00F6\u00DFe 5 \u20AC"), Form::Utf8, 1 + 13},
    {"Polish", QStringLiteral(u"Wroc\u0142aw"), Form::Utf8, 1 + 8},
    {"Cyrillic", QStringLiteral(u"\u0416\u0417\u0418"), Form::Utf16, 6},
    {"Japanese", QStringLiteral(u"\u65E5\u672C"), Form::Utf16, 4},
    {"Emoji", QStringLiteral(u"\U0001F600"), Form::Utf16, 4},
    {"EmojiAmongLetters", QStringLiteral(u"well done \U0001F600"), Form::Utf8, 1 + 14},
    {"Mark", QStringLiteral(u"\uFEFFabcdef"), Form::Utf8, 1 + 9},
    {"Zeros", QString(3, QChar(0)) + u'x', Form::Latin1, 4},
    {"HighHalfAtTheEnd", QString(20, u'x') + QChar(0xD83D), Form::Utf16, 42},
    {"HighHalfBeforeALetter", QChar(0xD83D) + QString(20, u'x'), Form::Utf16, 42},
    {"LowHalf", QString(20, u'x') + QChar(0xDE00) + u'y', Form::Utf16, 44},
    {"HalvesInTheWrongOrder", QString(20, u'x') + QChar(0xDE00) + QChar(0xD83D), Form::Utf16, 44},
};

class PackedTextTest : public testing::TestWithParam<FormCase> {};

}  // namespace

TEST_P(PackedTextTest, TakesTheShortestFormAndComesBack) {
    const FormCase& c = GetParam();
    const Written written(c.text);
    EXPECT_EQ(written.place.form, c.form);
    EXPECT_EQ(written.place.bytes, c.bytes);
    EXPECT_EQ(written.Length(), c.text.size());
    EXPECT_EQ(written.Read(), c.text);
}

INSTANTIATE_TEST_SUITE_P(Forms, PackedTextTest, testing::ValuesIn(Forms),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(PackedText, StartIsCutAfterAnyUnit) {
    for (const QString& text : {QStringLiteral("abcdefgh"), QStringLiteral(u"\u65E5\u672C\u8A9E"),
                                QStringLiteral(u"a\U0001F600b\u20AC\u0142cdefghi")}) {
        const Written written(text);
        for (qint64 most = 1; most <= text.size() + 1; ++most)
            EXPECT_EQ(written.Read(most), text.left(most)) << most;
    }
}

// Pairs lie across the ends of the pieces in which a text is encoded.
TEST(PackedText, LongTextsComeBackWhole) {
    for (int shift = 0; shift < 3; ++shift) {
        const QString text =
            QString(shift, u'a') + QStringLiteral(u"bc\u20AC\U0001F600de").repeated(30000);
        const Written narrow(text);
        EXPECT_EQ(narrow.place.form, Form::Utf8);
        EXPECT_TRUE(narrow.Read() == text);
        EXPECT_TRUE(narrow.Read(70001) == text.left(70001));
        EXPECT_EQ(narrow.Length(), text.size());
    }
    const QString letters = QStringLiteral("0123456789").repeated(30000);
    EXPECT_TRUE(Written(letters).Read() == letters);
    const QString wide = QStringLiteral(u"\u0416\u65E5").repeated(100000);
    EXPECT_TRUE(Written(wide).Read() == wide);
}

}  // namespace quarv::test
