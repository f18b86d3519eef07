#include "platform/forms/Mnemonics.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(Mnemonics, NoLetterIsUsedTwiceAndWordStartsComeFirst) {
    EXPECT_EQ(ChooseMnemonics({u"Create"_qs, u"Cancel"_qs, u"Create copy"_qs, u"C"_qs, u"!?"_qs}),
              (std::vector<int>{0, 1, 1, -1, -1}));
}

TEST(Mnemonics, ASecondWordGoesBeforeAnInnerLetter) {
    EXPECT_EQ(ChooseMnemonics({u"Test"_qs, u"The name"_qs}), (std::vector<int>{0, 4}));
}

TEST(Mnemonics, LetterCaseDoesNotCount) {
    EXPECT_EQ(ChooseMnemonics({u"a"_qs, u"Ab"_qs}), (std::vector<int>{0, 1}));
}

TEST(Mnemonics, PairsOfUnitsAreNeverCut) {
    EXPECT_EQ(ChooseMnemonics({u"\U00010400"_qs}), (std::vector<int>{-1}));
}

struct Shown {
    const char16_t* caption;
    int position;
    const char16_t* shown;
};

class MnemonicTexts : public testing::TestWithParam<Shown> {};

INSTANTIATE_TEST_SUITE_P(, MnemonicTexts,
                         testing::Values(Shown{u"Okay", 0, u"&Okay"}, Shown{u"Okay", -1, u"Okay"},
                                         Shown{u"A&B", -1, u"A&&B"}, Shown{u"A&B", 2, u"A&&&B"},
                                         Shown{u"", -1, u""}));

TEST_P(MnemonicTexts, AmpersandsStayLiteral) {
    EXPECT_EQ(WithMnemonic(QString::fromUtf16(GetParam().caption), GetParam().position),
              QString::fromUtf16(GetParam().shown));
}

}  // namespace
}  // namespace quarv::forms
