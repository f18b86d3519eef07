#include "LanguageUse.h"

#include <gtest/gtest.h>

#include "LanguageDocument.h"
#include "localdb/engine/Aggregate.h"
#include "localdb/engine/WindowFunction.h"
#include "support/TextPrinter.h"

namespace quarv::localdb::engine {

namespace {

bool Uses(const char* text, UseKind kind, const char* name) {
    return FindUses(QString::fromUtf8(text)).contains({kind, QString::fromLatin1(name)});
}

}  // namespace

TEST(LanguageUse, StatementsAreTheirFirstWords) {
    EXPECT_TRUE(Uses("create table t(a int)", UseKind::Statement, "CREATE TABLE"));
    EXPECT_TRUE(Uses("begin tran commit", UseKind::Statement, "BEGIN TRAN|TRANSACTION"));
    EXPECT_FALSE(Uses("begin tran commit", UseKind::Statement, "CREATE TABLE"));
}

TEST(LanguageUse, StringsCommentsAndQuotedNamesDoNotCount) {
    EXPECT_FALSE(Uses("print 'drop table t'", UseKind::Statement, "DROP TABLE"));
    EXPECT_FALSE(Uses("print 1 -- drop table t", UseKind::Statement, "DROP TABLE"));
    EXPECT_FALSE(Uses("select [union] from t", UseKind::Clause, "UNION"));
    EXPECT_FALSE(Uses("select t.top from t", UseKind::Clause, "TOP"));
}

TEST(LanguageUse, TypesStandBehindNamesAndInConversions) {
    EXPECT_TRUE(Uses("declare @a char(3)", UseKind::Type, "char"));
    EXPECT_TRUE(Uses("select cast(1 as bigint)", UseKind::Type, "bigint"));
    EXPECT_TRUE(Uses("select convert(date, 'x')", UseKind::Type, "date"));
    EXPECT_TRUE(Uses("create table t(a integer)", UseKind::Type, "int"));
    EXPECT_FALSE(Uses("select char(65)", UseKind::Type, "char"));
    EXPECT_TRUE(Uses("select char(65)", UseKind::Function, "CHAR"));
    EXPECT_FALSE(Uses("declare @a char(3)", UseKind::Function, "CHAR"));
}

TEST(LanguageUse, ABrokenTextCountsUpToTheBreak) {
    EXPECT_TRUE(Uses("select 'x", UseKind::Statement, "SELECT"));
}

TEST(LanguageUse, ListedAggregatesAndWindowFunctionsAreTheEngines) {
    for (const QString& name : KnownUses(UseKind::Aggregate)) {
        EXPECT_TRUE(IsAggregateName(name)) << name.toStdString();
    }
    for (const QString& name : KnownUses(UseKind::Window)) {
        EXPECT_TRUE(IsWindowName(name)) << name.toStdString();
    }
}

TEST(LanguageDocument, CountsCasesOnceAndThoseWithAnError) {
    Case good;
    good.batches = {QStringLiteral("print 1 print 2")};
    Case bad;
    bad.batches = {QStringLiteral("print 1"), QStringLiteral("merge t")};
    bad.expected = {
        QStringLiteral("error 40517 16 1 line 1: Keyword or statement option 'MERGE' "
                       "is not supported in this version of SQL Server.")};
    const QString page = LanguageDocument({good, bad});
    EXPECT_TRUE(page.contains(QStringLiteral("2 cases in all, 1 of them with an\nerror.")));
    EXPECT_TRUE(page.contains(QStringLiteral("\n| PRINT | 2 | 1 |\n")));
    EXPECT_TRUE(page.contains(QStringLiteral("\n| BREAK | 0 | 0 |\n")));
    EXPECT_TRUE(page.endsWith(QStringLiteral("\n| MERGE | 1 |\n")));
}

}  // namespace quarv::localdb::engine
