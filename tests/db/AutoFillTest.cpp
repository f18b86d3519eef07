#include "db/AutoFill.h"

#include "AutoFillFixture.h"
#include "base/RuntimeError.h"
#include "platform/forms/TextBox.h"

namespace quarv {
namespace {

class AutoFillTest : public AutoFillFixture {};

TEST_F(AutoFillTest, TheNewestStandsInFront) {
    Init();
    fill_.Add("A");
    fill_.Add("B");
    EXPECT_EQ(List(), (QStringList{"B", "A"}));
    EXPECT_EQ(fill_.Item(1), "B");
}

TEST_F(AutoFillTest, WhatIsAddedAgainMovesToTheFront) {
    Init();
    fill_.Add("A", true);
    fill_.Add("B", true);
    fill_.Add("A", true);
    EXPECT_EQ(List(), (QStringList{"A", "B"}));
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=A", "Where-2=B"}));
}

TEST_F(AutoFillTest, WhatStandsInFrontIsNeitherSavedNorShownAgain) {
    Init();
    fill_.Add("id > 5", true);
    EXPECT_EQ(List(), QStringList{"id > 5"});
    registry_.DeleteSectionValue(Section, "Where-1");
    box_.Clear();
    fill_.Add("id > 5", true);
    EXPECT_EQ(AllStored(), QStringList());
    EXPECT_EQ(List(), QStringList());
    EXPECT_EQ(fill_.Item(1), "id > 5");
    EXPECT_EQ(fill_.Item(2), "");
}

TEST_F(AutoFillTest, InOtherLettersInFrontTheOldSpellingStays) {
    Init();
    fill_.Add("id > 5", true);
    fill_.Add("ID > 5", true);
    EXPECT_EQ(List(), QStringList{"id > 5"});
    EXPECT_EQ(Stored("Where-1"), "id > 5");
}

TEST_F(AutoFillTest, InOtherLettersFurtherDownTheNewSpellingMovesToTheFront) {
    Init();
    fill_.Add("Größe > 5");
    fill_.Add("B");
    fill_.Add("GRÖßE > 5");
    EXPECT_EQ(List(), (QStringList{"GRÖßE > 5", "B"}));
}

TEST_F(AutoFillTest, AnEndlessEntryIsKeptButNotSaved) {
    Init();
    fill_.Add("A", true);
    fill_.Add(QString(100'001, u'x'), true);
    fill_.Add("B", true);
    EXPECT_EQ(List().size(), 3);
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=B", "Where-3=A"}));
}

TEST_F(AutoFillTest, TheEmptyTextIsIgnored) {
    Init();
    fill_.Add("", true);
    EXPECT_EQ(List(), QStringList());
    EXPECT_EQ(AllStored(), QStringList());
}

TEST_F(AutoFillTest, BlanksAreATextLikeOthers) {
    Init();
    fill_.Add("  ", true);
    EXPECT_EQ(Stored("Where-1"), "  ");
}

TEST_F(AutoFillTest, NothingIsStoredUnlessAsked) {
    Init();
    fill_.Add("A");
    EXPECT_EQ(AllStored(), QStringList());
    fill_.Add("B", true);
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=B", "Where-2=A"}));
}

TEST_F(AutoFillTest, TheBoxsTextStays) {
    Init();
    box_.SetText("being typed");
    fill_.Add("A");
    EXPECT_EQ(box_.Text(), "being typed");
}

TEST_F(AutoFillTest, AnyTextComesBackAsItWas) {
    const QString text = QString::fromUtf8("name = 'O''Hara' -- \"<b>\" \\\r\n\t\u00fc\U0001F600");
    Init();
    fill_.Add(text, true);
    forms::ComboBox box(&form_, QStringLiteral("Other"));
    AutoFill other(registry_);
    other.Init(box, Section, Key);
    EXPECT_EQ(ListOf(box), QStringList{text});
    EXPECT_EQ(other.Item(1), text);
}

// Saving comes before cutting, so what is cut was stored once, until the next saving deletes it.
TEST_F(AutoFillTest, AnEleventhEntryIsStoredOnceAndDeletedByTheNextSaving) {
    Init();
    for (const char* text : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}) fill_.Add(text);
    fill_.Add("11", true);
    EXPECT_EQ(List(), (QStringList{"11", "10", "9", "8", "7", "6", "5", "4", "3", "2"}));
    EXPECT_EQ(Stored("Where-1"), "11");
    EXPECT_EQ(Stored("Where-11"), "1");
    fill_.SaveMRU();
    EXPECT_EQ(Stored("Where-10"), "2");
    EXPECT_EQ(Stored("Where-11"), "(none)");
}

TEST_F(AutoFillTest, SavingDeletesStaleEntriesUpToPositionTwentyOnly) {
    Init();
    for (const char* name : {"Where-1", "Where-2", "Where-3", "Where-19", "Where-20", "Where-21",
                             "Where-50", "Where-abc", "Whereabouts", "WhereDefault"})
        Store(name, "stale");
    fill_.Add("A");
    fill_.Add("B", true);
    EXPECT_EQ(AllStored(),
              (QStringList{"Where-1=B", "Where-2=A", "Where-21=stale", "Where-50=stale",
                           "Where-abc=stale", "Whereabouts=stale", "WhereDefault=stale"}));
}

TEST_F(AutoFillTest, AListOfMoreThanTwentyIsStoredWhole) {
    Init(30);
    for (int i = 1; i <= 22; ++i) fill_.Add(QString::number(i));
    fill_.SaveMRU();
    EXPECT_EQ(Stored("Where-1"), "22");
    EXPECT_EQ(Stored("Where-22"), "1");
    EXPECT_EQ(AllStored().size(), 22);
}

TEST_F(AutoFillTest, SavingAnEmptyListEmptiesTheStoredOne) {
    Init();
    Store("Where-1", "x");
    Store("Where-2", "y");
    fill_.SaveMRU();
    EXPECT_EQ(AllStored(), QStringList());
}

TEST_F(AutoFillTest, TwoKeysShareASection) {
    Init();
    fill_.Add("A", true);
    forms::ComboBox box(&form_, QStringLiteral("Other"));
    AutoFill other(registry_);
    other.Init(box, Section, "Order");
    other.Add("B", true);
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=A", "Order-1=B"}));
}

TEST_F(AutoFillTest, OfTwoProgramsTheLastToSaveWins) {
    Init();
    OtherProgram other(Paths());
    fill_.Add("A");
    fill_.Add("B");
    fill_.Add("C", true);
    other.fill.Add("X");
    other.fill.Add("Y", true);
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=Y", "Where-2=X"}));
    fill_.SaveMRU();
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=C", "Where-2=B", "Where-3=A"}));
    EXPECT_EQ(ListOf(other.box), (QStringList{"Y", "X"}));
}

TEST_F(AutoFillTest, TheStoredDefaultIsShown) {
    Store("WhereDefault", "id = 1");
    Init();
    EXPECT_EQ(box_.Text(), "");
    fill_.ShowAnyDefault();
    EXPECT_EQ(box_.Text(), "id = 1");
    EXPECT_EQ(List(), QStringList());
}

TEST_F(AutoFillTest, NoDefaultEmptiesTheText) {
    Init();
    box_.SetText("typed");
    fill_.ShowAnyDefault();
    EXPECT_EQ(box_.Text(), "");
}

TEST_F(AutoFillTest, DoneEditsAreAddedAndSaved) {
    Init();
    box_.SetText("id > 5");
    fill_.EditsComplete();
    EXPECT_EQ(List(), QStringList{"id > 5"});
    EXPECT_EQ(box_.Text(), "id > 5");
    EXPECT_EQ(AllStored(), QStringList{"Where-1=id > 5"});
}

TEST_F(AutoFillTest, DoneEditsBecomeTheDefaultWhereWanted) {
    Init();
    box_.SetText("id > 5");
    fill_.EditsComplete(true);
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=id > 5", "WhereDefault=id > 5"}));
    box_.SetText("ID > 5");
    fill_.EditsComplete(true);
    EXPECT_EQ(AllStored(), (QStringList{"Where-1=id > 5", "WhereDefault=ID > 5"}));
}

TEST_F(AutoFillTest, AnEmptyTextBecomesTheDefaultButNoEntry) {
    Store("WhereDefault", "id = 1");
    Init();
    fill_.EditsComplete(true);
    EXPECT_EQ(AllStored(), QStringList{"WhereDefault="});
    EXPECT_EQ(List(), QStringList());
}

TEST_F(AutoFillTest, AnItemOutsideTheStorageIsRefused) {
    Init();
    EXPECT_EQ(fill_.Item(1), "");
    EXPECT_EQ(Raised([&] { fill_.Item(-1); }), RuntimeError::SubscriptOutOfRange);
    EXPECT_EQ(Raised([&] { fill_.Item(32767); }), RuntimeError::SubscriptOutOfRange);
}

TEST_F(AutoFillTest, WithoutABoxThereIsNothingToWorkOn) {
    registry_.SaveSectionString("", "-1", "not ours");
    EXPECT_EQ(Raised([&] { fill_.ShowAnyDefault(); }), RuntimeError::ObjectNotSet);
    EXPECT_EQ(Raised([&] { fill_.Add("A", true); }), RuntimeError::ObjectNotSet);
    EXPECT_EQ(Raised([&] { fill_.EditsComplete(true); }), RuntimeError::ObjectNotSet);
    EXPECT_EQ(Raised([&] { fill_.SaveMRU(); }), RuntimeError::ObjectNotSet);
    EXPECT_EQ(registry_.GetSectionString("", "-1", "(none)"), "not ours");
}

TEST_F(AutoFillTest, ABoxThatIsGoneIsNotUsed) {
    {
        forms::ComboBox box(&form_, QStringLiteral("Other"));
        fill_.Init(box, Section, Key);
    }
    EXPECT_EQ(Raised([&] { fill_.Add("A"); }), RuntimeError::ObjectNotSet);
}

TEST_F(AutoFillTest, AControlWithoutAListIsRefused) {
    forms::TextBox box(&form_, QStringLiteral("T"));
    EXPECT_EQ(Raised([&] { fill_.Init(box, Section, Key); }), RuntimeError::NoSuchMember);
}

}  // namespace
}  // namespace quarv
