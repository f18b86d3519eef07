#include "localdb/engine/Utf8.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv::localdb::engine {

TEST(Utf8, KeepsEveryUnitBothWays) {
    for (const QString& text :
         {QString(), QStringLiteral("aж€😀"), QString(QChar(0xD83D)), QString(QChar(0xDE00)) + u'x',
          QString(QChar(0xDE00)) + QChar(0xD83D), QStringLiteral("a") + QChar(0) + u'b',
          QString(QChar(0xFFFF))}) {
        EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
    }
    EXPECT_EQ(ToUtf8(QString(QChar(0xD83D))), "\xED\xA0\xBD");
}

TEST(Utf8, CountsUnitsAndCharacters) {
    EXPECT_EQ(Utf16Length("aж€😀"), 5u);
    EXPECT_EQ(CharacterCount("aж€😀"), 4u);
}

TEST(Utf8, CutsBetweenCharacters) {
    EXPECT_EQ(TakeUtf16("a😀b", 2), "a");
    EXPECT_EQ(TakeUtf16("a😀b", 3), "a😀");
    EXPECT_EQ(TakeBytes("aж", 2), "a");
    EXPECT_EQ(TakeBytes("aж", 3), "aж");
    EXPECT_EQ(BytesOfCharacters("😀a", 1), 4u);
    EXPECT_EQ(WithoutTrailingBlanks(" a  "), " a");
}

TEST(Utf8, BytesOutOfPlaceCountAsThemselves) {
    size_t at = 0;
    EXPECT_EQ(NextCodePoint("\xFFz", at), 0xFFu);
    EXPECT_EQ(at, 1u);
    at = 0;
    EXPECT_EQ(NextCodePoint("\xE2\x82", at), 0xE2u);
    EXPECT_EQ(at, 1u);
    EXPECT_EQ(FromUtf8("\xF7\xBF\xBF\xBF"), QString(QChar(0xFFFD)));
}

}  // namespace quarv::localdb::engine
