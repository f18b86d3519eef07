#include "AutoFillFixture.h"
#include "base/RuntimeError.h"

namespace quarv {
namespace {

class AutoFillLoadTest : public AutoFillFixture {};

TEST_F(AutoFillLoadTest, GapsAreClosedUp) {
    Store("Where-1", "x");
    Store("Where-3", "y");
    Init();
    EXPECT_EQ(List(), (QStringList{"x", "y"}));
    EXPECT_EQ(fill_.Item(1), "x");
    EXPECT_EQ(fill_.Item(2), "y");
}

TEST_F(AutoFillLoadTest, PositionsCountAsNumbersWhateverTheOrderOfTheValues) {
    Store("Where-10", "tenth");
    Store("Where-2", "second");
    Store("Where-1", "first");
    Init();
    EXPECT_EQ(List(), (QStringList{"first", "second", "tenth"}));
}

TEST_F(AutoFillLoadTest, NothingStoredGivesAnEmptyList) {
    Init();
    EXPECT_EQ(List(), QStringList());
}

TEST_F(AutoFillLoadTest, TheKeyMatchesInAnyLetterCase) {
    Store("WHERE-1", "upper");
    Store("where-2", "lower");
    fill_.Init(box_, Section, "wHERE");
    EXPECT_EQ(List(), (QStringList{"upper", "lower"}));
}

TEST_F(AutoFillLoadTest, AnEmptyTextIsAnEntry) {
    Store("Where-1", "");
    Store("Where-2", "y");
    Init();
    EXPECT_EQ(List(), (QStringList{"", "y"}));
}

TEST_F(AutoFillLoadTest, ALaterValueOfTheSamePositionReplacesAnEarlierOne) {
    Store("Where-1", "earlier");
    Store("Where-2", "kept");
    Store("Where-01", "later");
    Init();
    EXPECT_EQ(List(), (QStringList{"later", "kept"}));
}

TEST_F(AutoFillLoadTest, OtherSectionsAndKeysAreLeftAlone) {
    Store("Where-1", "mine");
    Store("Order-2", "another key");
    registry_.SaveSectionString("elsewhere", "Where-3", "another section");
    Init();
    EXPECT_EQ(List(), QStringList{"mine"});
}

TEST_F(AutoFillLoadTest, AValueThatIsNoTextIsLeftOut) {
    registry_.SetKeyValue(Section, "Where-1", 7, registry::REG_DWORD);
    Store("Where-2", "text");
    Init();
    EXPECT_EQ(List(), QStringList{"text"});
}

// What is longer than the registry reads back, 510 bytes, is gone the next time.
TEST_F(AutoFillLoadTest, ATooLongTextIsLeftOut) {
    Store("Where-1", QString(511, u'a'));
    Store("Where-2", QString(510, u'b'));
    Store("Where-3", "c");
    Init();
    EXPECT_EQ(List(), (QStringList{QString(510, u'b'), "c"}));
}

TEST_F(AutoFillLoadTest, WhatIsAboveTheMaximumIsCut) {
    for (const char* name : {"Where-1", "Where-2", "Where-3", "Where-4", "Where-5"})
        Store(name, name);
    Init(3);
    EXPECT_EQ(List(), (QStringList{"Where-1", "Where-2", "Where-3"}));
    EXPECT_EQ(Stored("Where-4"), "Where-4");
}

TEST_F(AutoFillLoadTest, TheMaximumIsTenByItself) {
    for (int i = 1; i <= 12; ++i) Store(qPrintable(QString("Where-%1").arg(i)), QString::number(i));
    Init();
    EXPECT_EQ(List(), (QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}));
}

TEST_F(AutoFillLoadTest, TheLargestMaximumLoadsFiftyEntries) {
    for (int i = 1; i <= 52; ++i) Store(qPrintable(QString("Where-%1").arg(i)), QString::number(i));
    Init(32767);
    ASSERT_EQ(List().size(), 50);
    EXPECT_EQ(List().first(), "1");
    EXPECT_EQ(List().last(), "50");
}

TEST_F(AutoFillLoadTest, AMaximumBelowOneKeepsNothing) {
    Store("Where-1", "x");
    for (const qint16 maximum : {0, -1, -32768}) {
        Init(maximum);
        EXPECT_EQ(List(), QStringList());
        fill_.Add("y");
        EXPECT_EQ(List(), QStringList());
    }
}

TEST_F(AutoFillLoadTest, TheBoxsTextStays) {
    Store("Where-1", "x");
    box_.SetText("being typed");
    Init();
    EXPECT_EQ(box_.Text(), "being typed");
}

TEST_F(AutoFillLoadTest, TheBoxsOldListGoes) {
    box_.AddItem("old");
    Init();
    EXPECT_EQ(List(), QStringList());
}

TEST_F(AutoFillLoadTest, InitOnceMoreLoadsTheListAnew) {
    Store("Where-1", "x");
    Init();
    fill_.Add("never saved");
    registry_.SaveSectionString("b", "Order-1", "y");
    fill_.Init(box_, "b", "Order");
    EXPECT_EQ(List(), QStringList{"y"});
}

TEST_F(AutoFillLoadTest, WithoutARootTheListIsEmptyAndWritesAreLost) {
    Store("Where-1", "stored");
    registry_.SetCurrentRoot(registry::NoKey);
    Init();
    fill_.Add("typed", true);
    EXPECT_EQ(List(), QStringList{"typed"});
    registry_.SetCurrentRoot(registry::HKEY_CURRENT_USER);
    EXPECT_EQ(AllStored(), QStringList{"Where-1=stored"});
}

struct NamedPosition {
    const char* name;
    bool isEntry;
};

class AutoFillValueName : public AutoFillFixture,
                          public testing::WithParamInterface<NamedPosition> {};

TEST_P(AutoFillValueName, IsAnEntryOrNot) {
    Store(GetParam().name, "text");
    Store("Where-3", "other");
    fill_.Init(box_, Section, Key, 50);
    EXPECT_EQ(List().contains("text"), GetParam().isEntry) << GetParam().name;
    EXPECT_TRUE(List().contains("other"));
}

INSTANTIATE_TEST_SUITE_P(Names, AutoFillValueName,
                         testing::Values(NamedPosition{"Where-1", true},         //
                                         NamedPosition{"Where-50", true},        //
                                         NamedPosition{"Where-007", true},       //
                                         NamedPosition{"Where- 8 ", true},       //
                                         NamedPosition{"Where-0", false},        //
                                         NamedPosition{"Where-51", false},       //
                                         NamedPosition{"Where--1", false},       //
                                         NamedPosition{"Where-abc", false},      //
                                         NamedPosition{"Where-1x", false},       //
                                         NamedPosition{"Where-", false},         //
                                         NamedPosition{"Where", false},          //
                                         NamedPosition{"Where1", false},         //
                                         NamedPosition{"Whereabouts", false},    //
                                         NamedPosition{"Whereabouts-1", false},  //
                                         NamedPosition{"WhereDefault", false},   //
                                         NamedPosition{"Where-Default", false},  //
                                         NamedPosition{"NoWhere-1", false},      //
                                         NamedPosition{"-1", false},             //
                                         NamedPosition{"Where-99999999999999999999", false},
                                         NamedPosition{"Where-1e999", false}));

}  // namespace
}  // namespace quarv
