// What is typed into the main window's condition box and is no good, over a real server.
#include "app/ServedDatabase.h"
#include "support/TextPrinter.h"

namespace quarv::test {
namespace {

const QStringList Tables = {
    "create table Orders (id int not null primary key, note nvarchar(60))",
    "insert Orders values (1, N'one'), (2, N'two'), (3, N'three'), (4, N'four'), (5, N'five')",
};
const QStringList AllOrders = {"1|one", "2|two", "3|three", "4|four", "5|five"};

struct Typed {
    const char* condition;
    QStringList boxes;
    QStringList rows;  // of the table, or, where the condition fails, those that were there
};

// For GoogleTest.
void PrintTo(const Typed& typed, std::ostream* out) {
    *out << typed.condition;
}

class BadCondition : public ServedDatabase, public testing::WithParamInterface<Typed> {};

TEST_P(BadCondition, IsToldAndTheWindowGoesOn) {
    ServedWindow& window = Show(Tables);
    window.ClickTable("Orders");
    EXPECT_EQ(window.RunCondition(QString::fromUtf8(GetParam().condition)), "");
    EXPECT_EQ(window.TakeBoxes(), GetParam().boxes);
    EXPECT_EQ(window.editor.Heading(), "id|note");
    EXPECT_EQ(window.editor.Cells(), GetParam().rows);
    EXPECT_EQ(window.RunCondition("id < 3"), "");
    EXPECT_EQ(window.editor.Cells(), (QStringList{"1|one", "2|two"}));
    EXPECT_EQ(window.ClickTable("Orders"), "");
    EXPECT_EQ(window.editor.Cells(), AllOrders);
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    EXPECT_EQ(proxy.Connections(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Typed, BadCondition,
    testing::Values(
        Typed{"id >", {"Error: Incorrect syntax near '>'."}, AllOrders},
        Typed{"nope = 1", {"Error: Invalid column name 'nope'."}, AllOrders},
        Typed{"1=1) or (1=1", {"Error: Incorrect syntax near ')'."}, AllOrders},
        Typed{"note = 'one",
              {"Error: Unclosed quotation mark after the character string 'one'."},
              AllOrders},
        Typed{"[note = 1",
              {"Error: Unclosed quotation mark after the character string 'note = 1'."},
              AllOrders},
        // Rows that were converted before the failing one are not shown.
        Typed{"1/(id-3) < 5", {"Error: Divide by zero error encountered."}, {}},
        Typed{"note = N'\xD0\xB6' or id = ?", {"Error: Incorrect syntax near '?'."}, AllOrders},
        Typed{"id = 2 -- and the rest is a comment", {}, {"2|two"}},
        Typed{"id = 2 /* and so is this", {"Error: Missing end comment mark '*/'."}, AllOrders},
        // Of the statements behind the first nothing is shown.
        Typed{"id = 2; select 7 as other", {}, {"2|two"}},
        Typed{"id = 2; raiserror('Too much.', 16, 1)", {}, {"2|two"}},
        Typed{"id = 2; select * from nowhere", {}, {"2|two"}},
        Typed{
            "id = 2; this is no statement", {"Error: Incorrect syntax near 'this'."}, AllOrders}));

class DatabaseViewBadCondition : public ServedDatabase {};

TEST_F(DatabaseViewBadCondition, OneOfVeryManyCharactersIsToldOrRun) {
    ServedWindow& window = Show(Tables);
    window.ClickTable("Orders");
    EXPECT_EQ(window.RunCondition("note = '" + QString(100000, u'x') + "' or id = 4"), "");
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    EXPECT_EQ(window.editor.Cells(), QStringList{"4|four"});
    EXPECT_EQ(window.RunCondition(QString(100000, u'x')), "");
    EXPECT_EQ(window.TakeBoxes(),
              QStringList{"Error: The identifier that starts with '" + QString(128, u'x') +
                          "' is too long. Maximum length is 128."});
    EXPECT_EQ(window.RunCondition(QString(100000, u'(')), "");
    EXPECT_EQ(window.TakeBoxes().size(), 1);
    EXPECT_EQ(window.editor.Cells(), QStringList{"4|four"});
    EXPECT_EQ(window.RunCondition("id = 5"), "");
    EXPECT_EQ(window.editor.Cells(), QStringList{"5|five"});
}

TEST_F(DatabaseViewBadCondition, OneThatNeverEndsIsGivenUp) {
    ServedWindow& window = Show(Tables, 1);
    window.ClickTable("Orders");
    QString everything = QStringLiteral("(select count(*) from Orders a0");
    for (int i = 1; i < 20; ++i) everything += QStringLiteral(", Orders a%1").arg(i);
    EXPECT_EQ(window.RunCondition(everything + ") < 0"), "");
    EXPECT_EQ(window.TakeBoxes(), QStringList{"Error: Timeout expired"});
    EXPECT_EQ(window.editor.Cells(), AllOrders);
    EXPECT_EQ(window.RunCondition("id = 5"), "");
    EXPECT_EQ(window.editor.Cells(), QStringList{"5|five"});
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    EXPECT_EQ(proxy.Connections(), 1);
}

// "top 100" counts for the first select alone, and the grid counts its rows in 16 bits.
TEST_F(DatabaseViewBadCondition, OneThatBringsRowsWithoutEndIsGivenUp) {
    ServedWindow& window = Show(Tables);
    window.ClickTable("Orders");
    QString more = QStringLiteral("id < 0 union all select a0.* from Orders a0");
    for (int i = 1; i < 20; ++i) more += QStringLiteral(", Orders a%1").arg(i);
    EXPECT_EQ(window.RunCondition(more), "");
    EXPECT_EQ(window.TakeBoxes(), QStringList{"Error: Overflow: more than 32757 rows"});
    EXPECT_EQ(window.editor.Heading(), "id|note");
    EXPECT_EQ(window.editor.Cells(), QStringList());
    EXPECT_EQ(window.RunCondition("id = 5"), "");
    EXPECT_EQ(window.editor.Cells(), QStringList{"5|five"});
    EXPECT_EQ(proxy.Connections(), 1);
}

}  // namespace
}  // namespace quarv::test
