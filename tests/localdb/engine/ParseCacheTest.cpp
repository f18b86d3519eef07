#include "localdb/engine/ParseCache.h"

#include <gtest/gtest.h>

#include "TestServer.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

using Texts = RecentTexts<QString>;

// The text itself, told apart by its address.
std::shared_ptr<const QString> Copy(const QString& text) {
    return std::make_shared<const QString>(text);
}

void Keep(Texts& texts, const QString& text) {
    texts.Find(text, Copy);
    texts.Find(text, Copy);
}

}  // namespace

TEST(RecentTexts, KeepsATextFromItsSecondTimeOn) {
    Texts texts;
    const auto first = texts.Find(QStringLiteral("a"), Copy);
    EXPECT_EQ(texts.Count(), 0U);
    const auto second = texts.Find(QStringLiteral("a"), Copy);
    EXPECT_NE(first, second);
    EXPECT_EQ(texts.Count(), 1U);
    EXPECT_EQ(texts.Find(QStringLiteral("a"), Copy), second);
    EXPECT_EQ(*texts.Find(QStringLiteral("A"), Copy), u"A");
}

TEST(RecentTexts, TheLongestUnusedGoesFirstAndLivesWhileItIsHeld) {
    Texts texts;
    for (size_t i = 0; i < Texts::Most; ++i) Keep(texts, QString::number(i));
    const auto zero = texts.Find(QStringLiteral("0"), Copy);
    const auto one = texts.Find(QStringLiteral("1"), Copy);
    texts.Find(QStringLiteral("0"), Copy);
    for (size_t i = 2; i < Texts::Most; ++i) texts.Find(QString::number(i), Copy);
    texts.Find(QStringLiteral("0"), Copy);
    Keep(texts, QStringLiteral("new"));
    EXPECT_EQ(texts.Count(), Texts::Most);
    EXPECT_EQ(texts.Find(QStringLiteral("0"), Copy), zero);
    EXPECT_NE(texts.Find(QStringLiteral("1"), Copy), one);
    EXPECT_EQ(*one, u"1");
}

TEST(RecentTexts, IsBoundedInText) {
    Texts texts;
    const QString tooLong(Texts::LongestText + 1, u'x');
    Keep(texts, tooLong);
    EXPECT_EQ(texts.Count(), 0U);
    for (int i = 0; i < 10; ++i) Keep(texts, QString(Texts::LongestText, QChar(u'a' + i)));
    EXPECT_EQ(texts.Count(), static_cast<size_t>(Texts::MostUnits / Texts::LongestText));
}

TEST(ParseCache, TellsExpressionsFromConditionsAndBatches) {
    ParseCache cache;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(cache.Value(QStringLiteral("a"))->kind, tsql::ExpressionKind::Column);
        EXPECT_EQ(cache.Condition(QStringLiteral("a = 1"))->kind, tsql::ExpressionKind::Comparison);
        EXPECT_EQ(cache.Batch(QStringLiteral("print 1 print 2"))->size(), 2U);
        EXPECT_THROW(cache.Batch(QStringLiteral("a = 1")), tsql::SyntaxError);
        EXPECT_THROW(cache.Value(QStringLiteral("select")), tsql::SyntaxError);
    }
}

TEST(ParseCache, ATextRunsTheSameEveryTime) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session, QStringLiteral("create table t(a int, b int)"));
    const auto run = [&session](const char16_t* batch) {
        return Lines(*session, QString::fromUtf16(batch)).join(QStringLiteral("; "));
    };
    for (int i = 1; i <= 4; ++i) {
        EXPECT_EQ(run(u"declare @i int = 1 while @i < 3 set @i = @i + 1 select @i i"),
                  u"columns i int; 3; (1 row)");
        EXPECT_EQ(Lines(*session, QStringLiteral("insert t values (1, 2) select count(*) n from t"))
                      .value(2),
                  QString::number(i));
        EXPECT_EQ(run(u"select 1 a;\n\nselect 1 from nosuch"),
                  u"columns a int not null; 1; (1 row); "
                  u"error 208 16 1 line 3: Invalid object name 'nosuch'.; (failed)");
        EXPECT_EQ(run(u"select (\n"),
                  u"error 102 15 1 line 1: Incorrect syntax near '('.; "
                  u"(failed)");
    }
}

TEST(ParseCache, ParametersOfTheSameTextMayChangeTheirTypes) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    const auto run = [&session](const char16_t* batch) {
        return Lines(*session, QString::fromUtf16(batch)).value(0);
    };
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(run(u"exec sp_executesql N'select @a a', N'@a int', 1"), u"columns a int");
        EXPECT_EQ(run(u"exec sp_executesql N'select @a a', N'@a nvarchar(7)', 1"),
                  u"columns a nvarchar(7)");
        EXPECT_EQ(run(u"exec sp_executesql N'select @a a', N'@b bit, @a bigint', 1, 2"),
                  u"columns a bigint");
    }
}

}  // namespace quarv::localdb::engine
