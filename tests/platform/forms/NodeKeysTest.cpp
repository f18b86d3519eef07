#include <gtest/gtest.h>

#include "platform/forms/NodeModel.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

struct KeyPair {
    const char16_t* first;
    const char16_t* second;
    bool same;
};

class NodeKeysTest : public testing::TestWithParam<KeyPair> {};

TEST_P(NodeKeysTest, LetterCaseAloneMakesNoOtherKey) {
    const KeyPair& pair = GetParam();
    NodeModel model(nullptr);
    model.Add({}, QString::fromUtf16(pair.first), QStringLiteral("text"), 0);
    const QString second = QString::fromUtf16(pair.second);
    EXPECT_EQ(model.Find(second) != nullptr, pair.same);
    EXPECT_EQ(Raised([&] { model.Add({}, second, QStringLiteral("text"), 0); }),
              pair.same ? 35602 : 0);
    EXPECT_EQ(model.Count(), pair.same ? 1 : 2);
}

INSTANTIATE_TEST_SUITE_P(Keys, NodeKeysTest,
                         testing::Values(KeyPair{u"_tbl_Orders", u"_TBL_oRDERS", true},
                                         KeyPair{u"_tbl_Größe", u"_tbl_GRÖßE", true},
                                         KeyPair{u"\u212A", u"k", true},  // the sign for kelvin
                                         KeyPair{u"\u017F", u"S", true},  // the long s
                                         KeyPair{u"\U00010400", u"\U00010428", true},
                                         KeyPair{u"a@", u"a`", false},  // one bit apart
                                         KeyPair{u"[x", u"{x", false}, KeyPair{u"ab", u"a", false},
                                         KeyPair{u"straße", u"strasse", false}));

TEST(NodeKeysManyTest, EachOfThousandsIsFoundAgain) {
    NodeModel model(nullptr);
    for (int i = 0; i < 5000; ++i)
        model.Add({}, QStringLiteral("key%1").arg(i), QString::number(i), 0);
    for (int i = 0; i < 5000; ++i) {
        const Node* found = model.Find(QStringLiteral("KEY%1").arg(i));
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->Index(), i + 1);
    }
    EXPECT_EQ(model.Find(QStringLiteral("key5000")), nullptr);
}

TEST(NodeKeysManyTest, AKeyIsTheSameWhereverItIsSplit) {
    NodeModel model(nullptr);
    model.AddAll({}, QStringLiteral("_tbl_"), {u"Größe"_qs, u"x"_qs}, 0);
    EXPECT_NE(model.Find(QStringLiteral("_TBL_GRÖßE")), nullptr);
    EXPECT_EQ(Raised([&] { model.AddAll({}, u"_tbl_G"_qs, {u"new"_qs, u"RÖßE"_qs}, 0); }), 35602);
    EXPECT_NE(model.Find(QStringLiteral("_tbl_Gnew")), nullptr);
    EXPECT_EQ(model.Count(), 3);
}

TEST(NodeKeysManyTest, KeyStaysWhenTheTextChanges) {
    NodeModel model(nullptr);
    model.AddAll({}, QStringLiteral("_tbl_"), {QStringLiteral("Orders")}, 0);
    Node& node = model.At(0);
    node.SetText(QStringLiteral("Customers"));
    EXPECT_EQ(node.Key(), "_tbl_Orders");
    EXPECT_EQ(model.Find(QStringLiteral("_tbl_Orders")), &node);
    EXPECT_EQ(model.Find(QStringLiteral("_tbl_Customers")), nullptr);
}

TEST(NodeKeysManyTest, RefusedKeyLeavesThePlaceToTheNext) {
    NodeModel model(nullptr);
    model.Add({}, QStringLiteral("a"), QStringLiteral("first"), 0);
    EXPECT_EQ(Raised([&] { model.Add({}, QStringLiteral("A"), QStringLiteral("second"), 0); }),
              35602);
    const Node& next = model.Add({}, QStringLiteral("b"), QStringLiteral("third"), 0);
    EXPECT_EQ(next.Index(), 2);
    EXPECT_EQ(next.Text(), "third");
    EXPECT_EQ(model.rowCount(), 0);  // until events are handled again
    model.Flush();
    EXPECT_EQ(model.rowCount(), 2);
}

}  // namespace
}  // namespace quarv::forms
