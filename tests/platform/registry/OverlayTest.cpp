#include "platform/registry/Overlay.h"

#include <gtest/gtest.h>

#include "platform/registry/RegTypes.h"

namespace quarv::registry {
namespace {

using Kind = Change::Kind;

Change SetChange(const QStringList& path, const char* name, const char* text) {
    return {
        .kind = Kind::SetValue,
        .path = path,
        .value = {.name = QString::fromUtf8(name), .type = REG_SZ, .data = text, .deleted = false}};
}

Change KeyChange(Kind kind, const QStringList& path) {
    return {.kind = kind, .path = path, .value = {}};
}

Change DeleteChange(const QStringList& path, const char* name) {
    Change change = KeyChange(Kind::DeleteValue, path);
    change.value.name = QString::fromUtf8(name);
    return change;
}

class OverlayTest : public testing::Test {
  protected:
    OverlayTest() {
        Apply(SetChange({"A"}, "one", "base 1"), base_);
        Apply(SetChange({"A"}, "two", "base 2"), base_);
        Apply(SetChange({"A", "B"}, "deep", "base 3"), base_);
    }

    // The text seen through the overlay; "-" for no value, "--" for no key.
    QByteArray Seen(const QStringList& path, const char* name) const {
        const HiveKey merged = Merge(base_, overlay_);
        const HiveKey* key = merged.Find(path);
        if (key == nullptr) return "--";
        const HiveValue* value = key->values.Find(QString::fromUtf8(name));
        return value == nullptr ? QByteArray("-") : value->data;
    }

    bool Over(const Change& change) { return ApplyToOverlay(change, base_, overlay_); }

    HiveKey base_;
    HiveKey overlay_;
};

TEST_F(OverlayTest, AnEmptyOverlayShowsTheBase) {
    EXPECT_EQ("base 1", Seen({"a"}, "ONE"));
    EXPECT_EQ("base 3", Seen({"A", "B"}, "deep"));
}

TEST_F(OverlayTest, ItsValueIsSeenFirstAndTheOthersShowThrough) {
    EXPECT_TRUE(Over(SetChange({"a"}, "ONE", "mine")));
    EXPECT_EQ("mine", Seen({"A"}, "one"));
    EXPECT_EQ("base 2", Seen({"A"}, "two"));
    EXPECT_EQ("base 3", Seen({"A", "B"}, "deep"));
}

TEST_F(OverlayTest, NamesKeepTheLetterCaseOfTheBase) {
    Over(SetChange({"a"}, "ONE", "mine"));
    const HiveKey merged = Merge(base_, overlay_);
    EXPECT_EQ(QStringLiteral("A"), merged.Find({"a"})->name);
    EXPECT_EQ(QStringLiteral("one"), merged.Find({"a"})->values.At(0).name);
}

TEST_F(OverlayTest, TheSameValueAgainChangesNothing) {
    EXPECT_TRUE(Over(SetChange({"A"}, "one", "mine")));
    EXPECT_FALSE(Over(SetChange({"A"}, "one", "mine")));
}

TEST_F(OverlayTest, ADeletedValueIsNotSeenUntilItIsSetAgain) {
    EXPECT_TRUE(Over(DeleteChange({"A"}, "one")));
    EXPECT_EQ("-", Seen({"A"}, "one"));
    EXPECT_EQ("base 2", Seen({"A"}, "two"));
    EXPECT_TRUE(Over(SetChange({"A"}, "one", "")));
    EXPECT_EQ("", Seen({"A"}, "one"));
}

TEST_F(OverlayTest, TheSameDeletionAgainChangesNothing) {
    EXPECT_TRUE(Over(DeleteChange({"A"}, "one")));
    EXPECT_FALSE(Over(DeleteChange({"a"}, "ONE")));
    EXPECT_EQ("-", Seen({"A"}, "one"));
}

TEST_F(OverlayTest, ADeletedValueOfItsOwnLeavesNoMark) {
    Over(SetChange({"A"}, "new", "mine"));
    Over(DeleteChange({"A"}, "new"));
    EXPECT_EQ("-", Seen({"A"}, "new"));
    EXPECT_EQ(0, overlay_.Find({"A"})->values.Count());
}

TEST_F(OverlayTest, ADeletedKeyHidesAllBelowIt) {
    Over(SetChange({"A", "B"}, "deep", "mine"));
    EXPECT_TRUE(Over(KeyChange(Kind::DeleteKey, {"A"})));
    EXPECT_EQ("--", Seen({"A"}, "one"));
    EXPECT_EQ("--", Seen({"A", "B"}, "deep"));
}

TEST_F(OverlayTest, AKeyMadeAgainComesBackEmpty) {
    Over(KeyChange(Kind::DeleteKey, {"A"}));
    EXPECT_TRUE(Over(KeyChange(Kind::CreateKey, {"A", "B"})));
    EXPECT_EQ("-", Seen({"A"}, "one"));
    EXPECT_EQ("-", Seen({"A", "B"}, "deep"));
    EXPECT_FALSE(Over(KeyChange(Kind::CreateKey, {"A", "B"})));
}

TEST_F(OverlayTest, AChangeInTheBaseIsNotHiddenByAnOlderOne) {
    Over(SetChange({"A"}, "one", "mine"));
    Over(DeleteChange({"A"}, "two"));
    const Change one = SetChange({"A"}, "one", "base again");
    const Change two = SetChange({"A"}, "two", "base again");
    Apply(one, base_);
    Apply(two, base_);
    EXPECT_TRUE(Reveal(one, base_, overlay_));
    EXPECT_TRUE(Reveal(two, base_, overlay_));
    EXPECT_EQ("base again", Seen({"A"}, "one"));
    EXPECT_EQ("base again", Seen({"A"}, "two"));
    EXPECT_FALSE(Reveal(two, base_, overlay_));
}

TEST_F(OverlayTest, AChangeBelowADeletedKeyIsSeenAndTheRestStaysHidden) {
    Over(KeyChange(Kind::DeleteKey, {"A"}));
    const Change one = SetChange({"A"}, "one", "base again");
    Apply(one, base_);
    EXPECT_TRUE(Reveal(one, base_, overlay_));
    EXPECT_EQ("base again", Seen({"A"}, "one"));
    EXPECT_EQ("-", Seen({"A"}, "two"));
    EXPECT_EQ("--", Seen({"A", "B"}, "deep"));
}

TEST_F(OverlayTest, ADeletionInTheBaseTakesTheOverlaysOwnAlong) {
    Over(SetChange({"A"}, "one", "mine"));
    Over(SetChange({"A", "B"}, "deep", "mine"));
    for (const Change& change :
         {DeleteChange({"A"}, "one"), KeyChange(Kind::DeleteKey, {"A", "B"})}) {
        Apply(change, base_);
        EXPECT_TRUE(Reveal(change, base_, overlay_));
    }
    EXPECT_EQ("-", Seen({"A"}, "one"));
    EXPECT_EQ("--", Seen({"A", "B"}, "deep"));
}

}  // namespace
}  // namespace quarv::registry
