#include "query/SqlKeywords.h"

#include <gtest/gtest.h>

#include <QString>

namespace quarv {
namespace {

TEST(SqlKeywords, AreTheReservedWordsAndTheTypes) {
    for (const char16_t* word :
         {u"add", u"select", u"from", u"where", u"writetext", u"exec", u"tran", u"top", u"is",
          u"semanticsimilaritydetailstable", u"current_timestamp", u"within", u"bigint",
          u"nvarchar", u"uniqueidentifier", u"datetime2", u"xml", u"sql_variant", u"sysname"})
        EXPECT_TRUE(IsSqlKeyword(word)) << QString::fromUtf16(word).toStdString();
}

TEST(SqlKeywords, HaveAnyLetterCase) {
    EXPECT_TRUE(IsSqlKeyword(u"SELECT"));
    EXPECT_TRUE(IsSqlKeyword(u"SeLeCt"));
    EXPECT_TRUE(IsSqlKeyword(u"Identity_Insert"));
}

TEST(SqlKeywords, AreNoOtherWords) {
    for (const char16_t* word :
         {u"", u"s", u"selec", u"selects", u"go", u"customers", u"zzz", u"aaa", u"sel\u0435ct",
          u"\u212aill", u"semanticsimilaritydetailstable1",
          u"begintransactionofanythingwhatsoever"})
        EXPECT_FALSE(IsSqlKeyword(word)) << QString::fromUtf16(word).toStdString();
}

}  // namespace
}  // namespace quarv
