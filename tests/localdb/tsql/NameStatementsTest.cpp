// The trees of the statements that make and move names: schemas and types.
#include <gtest/gtest.h>

#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/SchemaStatement.h"
#include "localdb/tsql/SyntaxError.h"
#include "localdb/tsql/TypeStatement.h"

namespace quarv::localdb::tsql {
namespace {

template <typename Node>
const Node& First(const StatementList& statements) {
    return static_cast<const Node&>(*statements.at(0));
}

TEST(SchemaStatement, IsNamedOrNamedAfterItsOwner) {
    const StatementList named = ParseBatch(QStringLiteral("create schema [a b] authorization dbo"));
    EXPECT_EQ(First<SchemaStatement>(named).name, QStringLiteral("a b"));
    EXPECT_EQ(First<SchemaStatement>(named).owner, QStringLiteral("dbo"));
    const StatementList owned = ParseBatch(QStringLiteral("create schema authorization me"));
    EXPECT_EQ(First<SchemaStatement>(owned).name, QStringLiteral("me"));
    EXPECT_EQ(First<SchemaStatement>(owned).owner, QStringLiteral("me"));
}

TEST(SchemaStatement, DropsOneSchema) {
    const StatementList statements = ParseBatch(QStringLiteral("drop schema if exists s;"));
    const auto& drop = First<SchemaStatement>(statements);
    EXPECT_EQ(drop.verb, SchemaVerb::Drop);
    EXPECT_TRUE(drop.ifExists);
    EXPECT_EQ(drop.name, QStringLiteral("s"));
    EXPECT_THROW(ParseBatch(QStringLiteral("drop schema s, t")), SyntaxError);
    EXPECT_THROW(ParseBatch(QStringLiteral("drop schema")), SyntaxError);
}

TEST(SchemaStatement, TransfersAnObjectOrAType) {
    const StatementList plain = ParseBatch(QStringLiteral("alter schema s transfer a.b"));
    EXPECT_EQ(First<SchemaStatement>(plain).verb, SchemaVerb::Transfer);
    EXPECT_EQ(First<SchemaStatement>(plain).object.schema, QStringLiteral("a"));
    EXPECT_FALSE(First<SchemaStatement>(plain).transfersType);
    const StatementList type = ParseBatch(QStringLiteral("alter schema s transfer type :: T"));
    EXPECT_TRUE(First<SchemaStatement>(type).transfersType);
    EXPECT_THROW(ParseBatch(QStringLiteral("alter schema s transfer row::T")), SyntaxError);
    EXPECT_THROW(ParseBatch(QStringLiteral("alter schema s")), SyntaxError);
}

TEST(TypeStatement, HasABaseAndItsNulls) {
    const StatementList statements =
        ParseBatch(QStringLiteral("create type s.T from decimal(9, 2) not null"));
    const auto& create = First<TypeStatement>(statements);
    EXPECT_FALSE(create.drops);
    EXPECT_EQ(create.name.schema, QStringLiteral("s"));
    EXPECT_EQ(create.name.name, QStringLiteral("T"));
    EXPECT_EQ(create.base.name, QStringLiteral("decimal"));
    EXPECT_EQ(create.base.arguments, (std::vector<int>{9, 2}));
    EXPECT_FALSE(create.nullable);
    const StatementList unsaid = ParseBatch(QStringLiteral("create type T from int"));
    EXPECT_TRUE(First<TypeStatement>(unsaid).nullable);
    EXPECT_THROW(ParseBatch(QStringLiteral("create type T int")), SyntaxError);
    EXPECT_THROW(ParseBatch(QStringLiteral("create type T from int not")), SyntaxError);
}

TEST(TypeStatement, DropsOneType) {
    const StatementList statements = ParseBatch(QStringLiteral("drop type if exists dbo.T"));
    const auto& drop = First<TypeStatement>(statements);
    EXPECT_TRUE(drop.drops);
    EXPECT_TRUE(drop.ifExists);
    EXPECT_EQ(drop.name.schema, QStringLiteral("dbo"));
}

}  // namespace
}  // namespace quarv::localdb::tsql
