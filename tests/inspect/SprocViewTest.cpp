#include "inspect/SprocView.h"

#include <QAbstractScrollArea>
#include <QFontMetricsF>
#include <QTest>

#include "base/LateBinding.h"
#include "inspect/PaneTest.h"
#include "platform/forms/Label.h"
#include "platform/forms/TextBox.h"
#include "support/Raised.h"

namespace quarv {
namespace {

constexpr int NullAsText = 94;
constexpr int NoCurrentRow = -2146825267;  // 3021 as an HRESULT
const DateTime Created{.month = 2, .day = 9, .hour = 13, .minute = 5, .second = 9, .year = 2024};

ado::MemoryResult Routines(std::vector<ado::MemoryResult::Row> rows) {
    return ado::MemoryResult::Rows(
        {"ROUTINE_SCHEMA", "ROUTINE_NAME", "ROUTINE_DEFINITION", "CREATED"}, std::move(rows));
}

ado::MemoryResult Routine(Value source) {
    return Routines({{u"dbo", u"p", std::move(source), Created}});
}

ado::MemoryResult Object() {
    return ado::MemoryResult::Rows({"Name", "Owner", "Type", "Created_datetime"},
                                   {{u"p", u"dbo", u"stored procedure", Created}});
}

ado::MemoryResult Parameters(const std::vector<Value>& names) {
    std::vector<ado::MemoryResult::Row> rows;
    for (const Value& name : names) rows.push_back({name, u"int"});
    return ado::MemoryResult::Rows({"Parameter_name", "Type"}, std::move(rows));
}

class SprocViewTest : public PaneTest<SprocView, forms::TextBox> {
  protected:
    SprocViewTest() { QLocale::setDefault(QLocale("de_DE")); }
    ~SprocViewTest() override { QLocale::setDefault(QLocale::c()); }

    forms::Label& Info() { return PartNamed<forms::Label>("Info"); }

    // Shows the procedure p with these answers.
    void Show(ado::MemoryResult routines, ado::MemoryResults help) {
        script_->Answer("select * from information_schema.routines where routine_name= 'p'",
                        std::move(routines));
        script_->Answer("sp_help 'p'", std::move(help));
        view_.Investigate(QStringLiteral("p"), db_);
    }
    void ShowSource(const QString& source) { Show(Routine(source), {Object()}); }
    void ShowParameters(const std::vector<Value>& names) {
        Show(Routine(u"x"), {Object(), Parameters(names)});
    }
    // Another procedure, for what the next one leaves of it.
    void ShowEarlier() {
        Show(Routines({{u"old", u"q", u"earlier", Created}}), {Object(), Parameters({u"@e"})});
    }
    void ExpectEarlier() {
        EXPECT_EQ(BorderFrame().Caption(), "old.q, created 09.02.2024 13:05:09");
        EXPECT_EQ(view_.Text(), "earlier");
        EXPECT_EQ(Info().Caption(), "@e");
    }
};

TEST_F(SprocViewTest, LaysOutItsParts) {
    EXPECT_EQ(Info().Left(), 120);
    EXPECT_EQ(Info().Top(), 360);
    EXPECT_EQ(Info().Height(), 255);
    EXPECT_EQ(Detail().Left(), 120);
    EXPECT_EQ(Detail().Top(), 600);
    EXPECT_TRUE(Detail().MultiLine());
    EXPECT_EQ(Detail().ScrollBars(), forms::TextBox::Both);
    EXPECT_EQ(view_.Text(), "");
}

TEST_F(SprocViewTest, SourceIsShownInAFixedPitch) {
    const auto* editor = Detail().findChild<QAbstractScrollArea*>();
    const QFontMetricsF metrics(editor->font());
    EXPECT_EQ(metrics.horizontalAdvance("iiii"), metrics.horizontalAdvance("WWWW"));
    EXPECT_EQ(editor->accessibleName(), "Source");
}

TEST_F(SprocViewTest, TypingChangesNothing) {
    ShowSource(QStringLiteral("select 1"));
    QTest::keyClicks(Detail().findChild<QAbstractScrollArea*>(), "drop");
    EXPECT_EQ(view_.Text(), "select 1");
}

TEST_F(SprocViewTest, ShowsTitleSourceAndParameters) {
    Show(Routines({{u"sales", u"p", u"create proc p as select 1", Created}}),
         {Object(), Parameters({u"@from"})});
    EXPECT_EQ(BorderFrame().Caption(), "sales.p, created 09.02.2024 13:05:09");
    EXPECT_EQ(view_.Text(), "create proc p as select 1");
    EXPECT_EQ(Detail().Text(), "create proc p as select 1");
    EXPECT_EQ(Info().Caption(), "@from");
    EXPECT_EQ(script_->Statements(),
              (QStringList{"select * from information_schema.routines where routine_name= 'p'",
                           "sp_help 'p'"}));
}

TEST_F(SprocViewTest, DateFollowsTheLocale) {
    QLocale::setDefault(QLocale("en_US"));
    ShowSource(QStringLiteral("x"));
    EXPECT_EQ(BorderFrame().Caption(), "dbo.p, created 2/9/2024 1:05:09 PM");
}

TEST_F(SprocViewTest, TextIsReadByName) {
    ShowSource(QStringLiteral("select 1"));
    EXPECT_EQ(GetByName(&view_, QStringLiteral("Text")).Text(), "select 1");
}

TEST_F(SprocViewTest, FirstOfTwoSchemasIsShown) {
    Show(Routines({{u"a", u"p", u"first", Created}, {u"b", u"p", u"second", Created}}), {Object()});
    EXPECT_EQ(BorderFrame().Caption(), "a.p, created 09.02.2024 13:05:09");
    EXPECT_EQ(view_.Text(), "first");
}

TEST_F(SprocViewTest, NoSecondResultIsNoParameters) {
    ShowEarlier();
    Show(Routine(u"x"), {Object()});
    EXPECT_EQ(Info().Caption(), "No parameters");
}

TEST_F(SprocViewTest, ClosedSecondResultIsNoParameters) {
    ShowEarlier();
    Show(Routine(u"x"), {Object(), ado::MemoryResult::Closed()});
    EXPECT_EQ(Info().Caption(), "No parameters");
}

TEST_F(SprocViewTest, ResultsBehindTheSecondDoNotCount) {
    Show(Routine(u"x"), {Object(), ado::MemoryResult::Closed(), Parameters({u"@late"})});
    EXPECT_EQ(Info().Caption(), "No parameters");
}

TEST_F(SprocViewTest, OpenResultWithoutRowsLeavesTheNamesEmpty) {
    ShowEarlier();
    ShowParameters({});
    EXPECT_EQ(Info().Caption(), "");
}

TEST_F(SprocViewTest, ThreeParametersArePartedByCommaAndBlank) {
    ShowParameters({u"@a", u"@b", u"@c"});
    EXPECT_EQ(Info().Caption(), "@a, @b, @c");
}

TEST_F(SprocViewTest, ParametersStayOnOneLine) {
    ShowParameters({u"@a", u"@b"});
    EXPECT_FALSE(Info().wordWrap());
}

TEST_F(SprocViewTest, NamesOfAnyLettersComeBackExactly) {
    script_->Answer(QStringLiteral("select * from information_schema.routines where routine_name= "
                                   "' O''Brien] \u05E9\u05DC '"),
                    Routines({{u"my ] schema", u" O'Brien] \u05E9\u05DC ", u"x", Created}}));
    script_->Answer(QStringLiteral("sp_help ' O''Brien] \u05E9\u05DC '"),
                    {Object(), Parameters({u"@a&b", u"@<b>]", u"@\u05D0, '"})});
    view_.Investigate(QStringLiteral(" O'Brien] \u05E9\u05DC "), db_);
    EXPECT_EQ(BorderFrame().Caption(),
              QStringLiteral("my ] schema. O'Brien] \u05E9\u05DC , created 09.02.2024 13:05:09"));
    EXPECT_EQ(Info().Caption(), QStringLiteral("@a&b, @<b>], @\u05D0, '"));
}

struct SourceCase {
    QString given;
    QString shown;
};
void PrintTo(const SourceCase& c, std::ostream* out) {
    PrintTo(c.given, out);
}

class SprocViewSource : public SprocViewTest, public testing::WithParamInterface<SourceCase> {};

TEST_P(SprocViewSource, LosesOnlyTheBlanksAtItsEnds) {
    ShowSource(GetParam().given);
    EXPECT_EQ(view_.Text(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Ends, SprocViewSource,
    testing::Values(
        SourceCase{"  a  b  ", "a  b"}, SourceCase{"\r\ncreate", "\r\ncreate"},
        SourceCase{"\ncreate\n", "\ncreate\n"}, SourceCase{" \r\n a\t ", "\r\n a\t"},
        SourceCase{"\t a \t", "\t a \t"}, SourceCase{"   ", ""}, SourceCase{"", ""},
        SourceCase{"a\r\nb\nc\rd", "a\r\nb\nc\rd"},
        SourceCase{QStringLiteral("\u00A0a\u3000"), QStringLiteral("\u00A0a\u3000")},
        SourceCase{QStringLiteral(" <b>\u05E9'] &\u2028 "), QStringLiteral("<b>\u05E9'] &\u2028")},
        SourceCase{QString(QChar(0xD800)) + QChar(0), QString(QChar(0xD800)) + QChar(0)}));

TEST_F(SprocViewTest, UnknownProcedureLeavesThePaneAsItWas) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] { Show(Routines({}), {Object()}); }), NoCurrentRow);
    ExpectEarlier();
    EXPECT_EQ(script_->Statements().size(), 3);
}

TEST_F(SprocViewTest, EncryptedProcedureFailsBehindTheTitle) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] { Show(Routine(Value::Null()), {Object()}); }), NullAsText);
    EXPECT_EQ(BorderFrame().Caption(), "dbo.p, created 09.02.2024 13:05:09");
    EXPECT_EQ(view_.Text(), "earlier");
    EXPECT_EQ(Info().Caption(), "@e");
    EXPECT_EQ(script_->Statements().size(), 3);
}

TEST_F(SprocViewTest, NullInTheTitleLeavesThePaneAsItWas) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] {
                  Show(Routines({{u"dbo", u"p", u"x", Value::Null()}}), {Object()});
              }),
              NullAsText);
    ExpectEarlier();
}

TEST_F(SprocViewTest, FailingQueryLeavesThePaneAsItWas) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] { Show(ado::MemoryResult::Fails("no such view"), {Object()}); }),
              -2147217900);
    ExpectEarlier();
}

TEST_F(SprocViewTest, FailingHelpKeepsTheEarlierParameters) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] { Show(Routine(u"new"), {ado::MemoryResult::Fails("gone")}); }),
              -2147217900);
    EXPECT_EQ(BorderFrame().Caption(), "dbo.p, created 09.02.2024 13:05:09");
    EXPECT_EQ(view_.Text(), "new");
    EXPECT_EQ(Info().Caption(), "@e");
}

TEST_F(SprocViewTest, FailingSecondResultKeepsTheEarlierParameters) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] {
                  Show(Routine(u"new"), {Object(), ado::MemoryResult::Fails("gone")});
              }),
              -2147217900);
    EXPECT_EQ(view_.Text(), "new");
    EXPECT_EQ(Info().Caption(), "@e");
}

TEST_F(SprocViewTest, NullParameterNameFailsBehindNoParameters) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] { ShowParameters({u"@a", Value::Null()}); }), NullAsText);
    EXPECT_EQ(view_.Text(), "x");
    EXPECT_EQ(Info().Caption(), "No parameters");
}

TEST_F(SprocViewTest, LostConnectionAmongTheParametersFailsBehindNoParameters) {
    ShowEarlier();
    EXPECT_EQ(Raised([this] {
                  Show(Routine(u"x"), {Object(), Parameters({u"@a"}).ThenFails("lost")});
              }),
              -2147467259);
    EXPECT_EQ(Info().Caption(), "No parameters");
}

TEST_F(SprocViewTest, ResizingFillsThePane) {
    EXPECT_EQ(BorderFrame().Width(), 9000);
    EXPECT_EQ(BorderFrame().Height(), 6000);
    EXPECT_EQ(Info().Width(), 8760);
    EXPECT_EQ(Info().Height(), 255);
    EXPECT_EQ(Detail().Width(), 8760);
    EXPECT_EQ(Detail().Height(), 5385);
}

TEST_F(SprocViewTest, ResizingFollowsWhereThePartsStand) {
    Detail().SetLeft(200);
    Info().Move(120, 400, 100, 300);
    view_.Move(0, 0, 4000, 3000);
    EXPECT_EQ(Info().Width(), 3600);
    EXPECT_EQ(Info().Height(), 300);
    EXPECT_EQ(Detail().Left(), 200);
    EXPECT_EQ(Detail().Top(), 600);
    EXPECT_EQ(Detail().Width(), 3600);
    EXPECT_EQ(Detail().Height(), 2300);
}

TEST_F(SprocViewTest, TinyPaneLeavesSizesAsTheyWere) {
    view_.Move(0, 0, 30, 30);
    EXPECT_EQ(BorderFrame().Width(), 9000);
    EXPECT_EQ(BorderFrame().Height(), 6000);
    view_.Move(0, 0, 270, 645);
    EXPECT_EQ(BorderFrame().Width(), 270);
    EXPECT_EQ(BorderFrame().Height(), 645);
    EXPECT_EQ(Info().Width(), 8760);
    EXPECT_EQ(Detail().Width(), 8760);
    EXPECT_EQ(Detail().Height(), 5385);
    view_.Move(0, 0, 271, 646);
    EXPECT_EQ(Info().Width(), 31);
    EXPECT_EQ(Info().Height(), 255);
    EXPECT_EQ(Detail().Width(), 31);
    EXPECT_EQ(Detail().Height(), 31);
}

}  // namespace
}  // namespace quarv
