#include "grid/EditedText.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv {
namespace {

// 65,536 units are shown.
const QString Head(65536, u'h');
const QString Mark = QString::fromUtf8("… [4 more]");

TEST(EditedText, AShortTextIsShownWhole) {
    for (const QString& text : {QString(), QStringLiteral("abc"), Head}) {
        const EditedText edited(text);
        EXPECT_TRUE(edited.Shown() == text);
        EXPECT_TRUE(edited.Whole(text) == text);
        EXPECT_EQ(edited.Whole(QStringLiteral("new")), "new");
    }
}

TEST(EditedText, OfALongTextTheBeginningIsShownWithAMark) {
    const EditedText edited(Head + QStringLiteral("rest"));
    EXPECT_TRUE(edited.Shown() == Head + Mark);
    EXPECT_TRUE(edited.Whole(Head + Mark) == Head + QStringLiteral("rest"));
}

TEST(EditedText, WhatIsTypedAroundTheMarkKeepsTheRest) {
    const EditedText edited(Head + QStringLiteral("rest"));
    EXPECT_EQ(edited.Whole(QStringLiteral("new") + Mark), "newrest");
    EXPECT_EQ(edited.Whole(Mark), "rest");
    EXPECT_EQ(edited.Whole(QStringLiteral("new") + Mark + QStringLiteral(" end")), "newrest end");
    EXPECT_EQ(edited.Whole(Mark + Mark), Mark + QStringLiteral("rest"));
}

TEST(EditedText, TheMarkTakesTheRestWithIt) {
    const EditedText edited(Head + QStringLiteral("rest"));
    EXPECT_EQ(edited.Whole(QStringLiteral("new")), "new");
    EXPECT_EQ(edited.Whole(QString()), "");
    EXPECT_TRUE(edited.Whole(Head) == Head);
    EXPECT_EQ(edited.Whole(QString::fromUtf8("… [4 mor]")), QString::fromUtf8("… [4 mor]"));
}

TEST(EditedText, AMarkInAShortTextIsText) {
    const EditedText edited(QStringLiteral("a") + Mark);
    EXPECT_TRUE(edited.Whole(QStringLiteral("a") + Mark) == QStringLiteral("a") + Mark);
}

TEST(EditedText, APairIsNotCut) {
    const QString text = QString(65535, u'h') + QStringLiteral("\U0001F375") + u'x';
    const EditedText edited(text);
    EXPECT_TRUE(edited.Shown() == QString(65535, u'h') + QString::fromUtf8("… [3 more]"));
    EXPECT_TRUE(edited.Whole(edited.Shown()) == text);
}

}  // namespace
}  // namespace quarv
