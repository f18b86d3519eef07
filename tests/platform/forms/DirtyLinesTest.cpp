#include "platform/forms/DirtyLines.h"

#include <gtest/gtest.h>

namespace quarv::forms {
namespace {

constexpr int NoLine = DirtyLines::NoLine;

void Scan(DirtyLines& dirty, int lines) {
    for (int i = 0; i < lines; ++i) dirty.Scanned(false);
}

class ScannedTo : public testing::Test {
  protected:
    // 100 lines, of which the first 50 were scanned.
    void SetUp() override {
        dirty.SetAll(100);
        Scan(dirty, 50);
    }
    DirtyLines dirty;
};

TEST(DirtyLines, NoneAtFirst) {
    EXPECT_EQ(DirtyLines().First(), NoLine);
}

TEST(DirtyLines, ANewTextIsScannedFromItsStartToItsEnd) {
    DirtyLines dirty;
    dirty.SetAll(2);
    EXPECT_EQ(dirty.First(), 0);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 1);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), NoLine);
}

TEST_F(ScannedTo, AnEditOfALineEndsWithItsStateAsBefore) {
    dirty.Replace(10, 10, 100);
    EXPECT_EQ(dirty.First(), 10);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 50);
}

TEST_F(ScannedTo, AnotherStateGoesOnUntilItIsAsBefore) {
    dirty.Replace(10, 10, 100);
    dirty.Scanned(false);
    EXPECT_EQ(dirty.First(), 11);
    dirty.Scanned(false);
    EXPECT_EQ(dirty.First(), 12);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 50);
}

TEST_F(ScannedTo, EveryEditedLineIsScannedWhateverItsState) {
    dirty.Replace(10, 12, 102);
    dirty.Scanned(true);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 12);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 52);
}

TEST_F(ScannedTo, AStateThatNeverMeetsItsOldOneRunsIntoTheLinesNeverScanned) {
    dirty.Replace(48, 48, 100);
    Scan(dirty, 2);
    EXPECT_EQ(dirty.First(), 50);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 51);
}

TEST_F(ScannedTo, TwoEditsAreOneRun) {
    dirty.Replace(30, 30, 100);
    dirty.Replace(10, 10, 100);
    EXPECT_EQ(dirty.First(), 10);
    for (int line = 10; line < 30; ++line) dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 30);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 50);
}

TEST_F(ScannedTo, ARunMovesWithTheLinesAboveIt) {
    dirty.Replace(30, 31, 100);
    // Two lines more, above.
    dirty.Replace(10, 12, 102);
    for (int line = 10; line < 33; ++line) dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 33);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 52);
}

TEST_F(ScannedTo, LinesTakenAwayAreForgotten) {
    dirty.Replace(30, 39, 100);
    // Lines 20 to 45 became one.
    dirty.Replace(20, 20, 75);
    EXPECT_EQ(dirty.First(), 20);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 25);
}

TEST_F(ScannedTo, AnEditOfLinesNeverScannedChangesNothing) {
    dirty.Replace(60, 70, 109);
    EXPECT_EQ(dirty.First(), 50);
    Scan(dirty, 59);
    EXPECT_EQ(dirty.First(), NoLine);
}

TEST_F(ScannedTo, AnEditIntoTheLinesNeverScannedLeavesItsOwnToThem) {
    dirty.Replace(20, 20, 100);
    dirty.Replace(40, 60, 100);
    EXPECT_EQ(dirty.First(), 20);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 40);
    dirty.Scanned(true);
    EXPECT_EQ(dirty.First(), 41);
}

TEST_F(ScannedTo, ATextReplacedAsAWholeIsANewOne) {
    dirty.Replace(0, 6, 7);
    EXPECT_EQ(dirty.First(), 0);
    Scan(dirty, 6);
    EXPECT_EQ(dirty.First(), 6);
    dirty.Scanned(false);
    EXPECT_EQ(dirty.First(), NoLine);
}

}  // namespace
}  // namespace quarv::forms
