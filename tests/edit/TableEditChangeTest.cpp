// What becomes of a cell that the user changed, typed and left by real keys.
#include <limits>

#include "edit/TableEditFixture.h"

namespace quarv::test {
namespace {

class TableEditChangeTest : public TableEditFixture {
  protected:
    void ExpectNothingSent() { EXPECT_EQ(script_->Statements(), QStringList{Query}); }
};

TEST_F(TableEditChangeTest, AChangedCellCountsAsAgreedAndNothingIsSent) {
    Show({{1, u"a", u"x"}});
    Edit(1, 3, "it's new");
    EXPECT_EQ(Row(1).ColumnValue(3).Text(), "it's new");
    EXPECT_EQ(Row(1).OriginalValue(3).Text(), "it's new");
    EXPECT_EQ(boxes_.Seen().size(), 0U);
    ExpectNothingSent();
}

TEST_F(TableEditChangeTest, ValuesAreComparedAsTexts) {
    Show({{5, u"a", u"x"}});
    Edit(1, 1, "5");
    EXPECT_EQ(Row(1).OriginalValue(1).kind(), Value::Kind::Integer);
    Edit(1, 1, "5.0");
    EXPECT_EQ(Row(1).OriginalValue(1).Text(), "5.0");
    EXPECT_EQ(Row(1).PKValue(1).ToInteger(), 5);
    ExpectNothingSent();
}

TEST_F(TableEditChangeTest, ACellThatWasNullIsNeverChanged) {
    Show({{1, u"a", Value::Null()}});
    testing::internal::CaptureStderr();
    Edit(1, 3, "something");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(Row(1).ColumnValue(3).Text(), "something");
    EXPECT_TRUE(Row(1).OriginalValue(3).IsNull());
    ExpectNothingSent();
}

// The update cannot be composed while the key has more columns than the row has key values.
TEST_F(TableEditChangeTest, AnUpdateThatCannotBeComposedIsTold) {
    Show({{1, u"a", u"x"}});
    SetKey("t", {"id", "sub"});
    pane_.DeterminePrimaryKey("t");
    Edit(1, 3, "y");
    EXPECT_EQ(boxes_.Seen(), std::vector<SeenBox>{NoteBox("Error: Subscript out of range doing ")});
    EXPECT_EQ(Row(1).OriginalValue(3).Text(), "x");
}

TEST_F(TableEditChangeTest, AnOpenCellIsWrittenBackBeforeTheRowsGo) {
    Show({{1, u"a", u"x"}});
    const RowRef row = Grid().RowList()->Items(1);
    Open(1, 3);
    Type("typed");
    Show();
    EXPECT_EQ(row->ColumnValue(3).Text(), "typed");
    EXPECT_EQ(Cells(), QStringList{"1|a|x"});
    EXPECT_EQ(Grid().ShownEditor(), nullptr);
}

struct Kind {
    const char* name;
    Value value;
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class UntouchedCellTest : public TableEditFixture,
                          public testing::WithParamInterface<std::tuple<const char*, Kind>> {};

TEST_P(UntouchedCellTest, NeverCountsAsChanged) {
    const auto& [locale, kind] = GetParam();
    QLocale::setDefault(QLocale(QLatin1String(locale)));
    Show({{1, kind.value, u"x"}, {2, u"b", u"y"}});
    for (const Qt::Key leave : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Down}) {
        Open(1, 2);
        Press(leave);
    }
    Open(1, 2);
    Open(2, 1);
    EXPECT_EQ(Row(1).ColumnValue(2).ToText(), kind.value.ToText());
    // An update would have made the original what the editor gave, a text.
    EXPECT_EQ(Row(1).OriginalValue(2).kind(), kind.value.kind());
    EXPECT_EQ(boxes_.Seen().size(), 0U);
}

const Kind Kinds[] = {
    {"integer", std::numeric_limits<qint64>::min()},
    {"boolean", true},
    {"single", 0.1F},
    {"float", 1.0 / 3},
    {"hugeFloat", 1.7976931348623157e308},
    {"tinyFloat", -5e-324},
    {"infinity", std::numeric_limits<double>::infinity()},
    {"decimal", *Decimal::Parse(u"-12345678901234567890123456789012345.670")},
    {"date", DateTime{.kind = DateTime::Kind::Date, .month = 2, .day = 9, .year = 1}},
    {"time", DateTime{.kind = DateTime::Kind::Time, .hour = 23, .second = 59, .fractionDigits = 3}},
    {"momentWithOffset", DateTime{.kind = DateTime::Kind::DateTimeOffset,
                                  .month = 12,
                                  .day = 31,
                                  .hour = 1,
                                  .year = 9999,
                                  .offsetMinutes = -840}},
    {"moment", DateTime{.month = 2,
                        .day = 9,
                        .hour = 13,
                        .minute = 5,
                        .second = 9,
                        .fractionDigits = 7,
                        .year = 2024,
                        .fraction = 1'234'567}},
    {"bytes", QByteArray("\x00\xFF'", 3)},
    {"noBytes", QByteArray()},
    {"emptyText", u""},
    {"blanks", u"  a  "},
    {"lines", u"a\r\nb\nc\td\r"},
    {"noBreakBlank", u"a\u00A0b\u2028c\u2029d"},
    {"markup", u"<b>a</b>&amp;"},
    {"rightToLeft", u"\u05D0\u05D1\u200F a \u202E"},
    {"emoji", u"\U0001F600\u0301"},
    {"loneSurrogate", QString(QChar(0xD83D))},
    {"codeZero", QString::fromUtf16(u"a\0b", 3)},
    {"long", QString(40'000, u'x')},
    {"shownInPart", QString(65'535, u'x') + QStringLiteral("\r\n\r\n")},
};

INSTANTIATE_TEST_SUITE_P(, UntouchedCellTest,
                         testing::Combine(testing::Values("C", "de_DE", "ar_EG", "fa_IR", "sv_SE"),
                                          testing::ValuesIn(Kinds)),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param)) + "_" +
                                    std::get<1>(test.param).name;
                         });

}  // namespace
}  // namespace quarv::test
