// The trees of ALTER TABLE, ALTER INDEX and ALTER DATABASE, and how a module's source is kept.
#include <gtest/gtest.h>

#include "localdb/tsql/AlterDatabase.h"
#include "localdb/tsql/AlterIndex.h"
#include "localdb/tsql/AlterTable.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/CreateProcedure.h"
#include "localdb/tsql/CreateView.h"
#include "localdb/tsql/SyntaxError.h"
#include "support/Raised.h"

namespace quarv::localdb::tsql {

namespace {

using Clause = AlterTable::Clause;
using RowCheck = AlterTable::RowCheck;

// The batch's only statement, which has to be of that kind.
template <typename Tree>
std::unique_ptr<Tree> Parse(const char16_t* text) {
    StatementList statements = ParseBatch(QString::fromUtf16(text));
    EXPECT_EQ(statements.size(), 1U);
    return std::unique_ptr<Tree>(static_cast<Tree*>(statements.front().release()));
}

int ErrorOf(const char16_t* text) {
    return Raised([&] { ParseBatch(QString::fromUtf16(text)); });
}

}  // namespace

TEST(Alter, AddTakesColumnsAndConstraintsInOneList) {
    const auto tree = Parse<AlterTable>(
        u"ALTER TABLE s.t WITH NOCHECK ADD a int NOT NULL CONSTRAINT d DEFAULT 1 WITH VALUES, "
        u"CONSTRAINT k PRIMARY KEY (a), b AS a + 1, CHECK (a > 0), DEFAULT 5 FOR c");
    EXPECT_EQ(tree->clause, Clause::Add);
    EXPECT_EQ(tree->rowCheck, RowCheck::NoCheck);
    EXPECT_EQ(tree->name.ToText(), u"s.t");
    ASSERT_EQ(tree->added.columns.size(), 2U);
    EXPECT_EQ(tree->added.columns[0].defaultName, u"d");
    EXPECT_TRUE(tree->added.columns[0].withValues);
    EXPECT_EQ(tree->added.columns[1].computedSource, u"a + 1");
    EXPECT_EQ(tree->added.keys.size(), 1U);
    EXPECT_EQ(tree->added.checks.size(), 1U);
    ASSERT_EQ(tree->added.defaults.size(), 1U);
    EXPECT_EQ(tree->added.defaults[0].column, u"c");
}

TEST(Alter, DropKeepsTheKindUntilAnotherIsSaid) {
    const auto tree = Parse<AlterTable>(
        u"alter table t drop x, constraint if exists y, z, column a, column if exists b");
    EXPECT_EQ(tree->clause, Clause::Drop);
    ASSERT_EQ(tree->dropped.size(), 5U);
    const bool columns[] = {false, false, false, true, true};
    const bool ifExists[] = {false, true, true, false, true};
    const char16_t* const names[] = {u"x", u"y", u"z", u"a", u"b"};
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(tree->dropped[i].column, columns[i]) << i;
        EXPECT_EQ(tree->dropped[i].ifExists, ifExists[i]) << i;
        EXPECT_EQ(tree->dropped[i].name, QString::fromUtf16(names[i])) << i;
    }
}

TEST(Alter, ColumnHasTypeAndNullability) {
    const auto tree = Parse<AlterTable>(u"alter table t alter column a nvarchar(20) not null");
    EXPECT_EQ(tree->clause, Clause::AlterColumn);
    EXPECT_EQ(tree->column.name, u"a");
    EXPECT_EQ(tree->column.type.name, u"nvarchar");
    EXPECT_EQ(tree->column.nullability, Nullability::NotNull);
}

TEST(Alter, ConstraintsAreSwitchedByNameOrAll) {
    const auto named = Parse<AlterTable>(u"alter table t nocheck constraint a, b");
    EXPECT_EQ(named->clause, Clause::Disable);
    EXPECT_EQ(named->constraints, (std::vector<QString>{QStringLiteral("a"), QStringLiteral("b")}));
    const auto all = Parse<AlterTable>(u"alter table t with check check constraint all");
    EXPECT_EQ(all->clause, Clause::Enable);
    EXPECT_EQ(all->rowCheck, RowCheck::Check);
    EXPECT_TRUE(all->constraints.empty());
}

TEST(Alter, IndexAndDatabaseAreNamedOrNot) {
    EXPECT_EQ(Parse<AlterIndex>(u"alter index i on dbo.t reorganize")->index, u"i");
    EXPECT_TRUE(
        Parse<AlterIndex>(u"alter index all on t rebuild partition = all")->index.isEmpty());
    EXPECT_EQ(Parse<AlterDatabase>(u"alter database d set recovery simple")->name, u"d");
    EXPECT_TRUE(Parse<AlterDatabase>(u"alter database current set auto_close off")->name.isEmpty());
}

TEST(Alter, AModuleIsKeptAsACreateStatement) {
    EXPECT_EQ(Parse<CreateView>(u"/* a */ alter view v as select 1 x")->source,
              u"/* a */ CREATE view v as select 1 x");
    EXPECT_EQ(Parse<CreateProcedure>(u"create or alter proc p as select 1")->source,
              u"create   proc p as select 1");
    EXPECT_EQ(Parse<CreateView>(u"create view v as select 1 x")->source,
              u"create view v as select 1 x");
}

TEST(Alter, WhatIsIncompleteOrUnknownIsTold) {
    EXPECT_EQ(ErrorOf(u"alter table t with check drop constraint c"), 156);
    EXPECT_EQ(ErrorOf(u"alter table t add"), 102);
    EXPECT_EQ(ErrorOf(u"alter table t drop constraint"), 102);
    EXPECT_EQ(ErrorOf(u"alter table t alter column a"), 102);
    EXPECT_EQ(ErrorOf(u"alter table t check a"), 102);
    EXPECT_EQ(ErrorOf(u"alter index i on t"), 102);
    EXPECT_EQ(ErrorOf(u"alter index i on t disable"), 40517);
    EXPECT_EQ(ErrorOf(u"alter database d set recovery full"), 40517);
    EXPECT_EQ(ErrorOf(u"alter database d set compatibility_level = 100"), 40517);
    EXPECT_EQ(ErrorOf(u"alter database d set"), 102);
    EXPECT_EQ(ErrorOf(u"alter database d collate x"), 40517);
    EXPECT_EQ(ErrorOf(u"select 1 create or alter view v as select 1 x"), 111);
}

}  // namespace quarv::localdb::tsql
