#include "localdb/tsql/ObjectName.h"

#include <gtest/gtest.h>

#include "support/Raised.h"

namespace quarv::localdb::tsql {

namespace {

struct Row {
    const char16_t* text;
    const char16_t *database, *schema, *name;
};

void ExpectParts(const ObjectName& name, const Row& row) {
    EXPECT_EQ(name.database, QString::fromUtf16(row.database));
    EXPECT_EQ(name.schema, QString::fromUtf16(row.schema));
    EXPECT_EQ(name.name, QString::fromUtf16(row.name));
}

}  // namespace

class ProcedureName : public testing::TestWithParam<Row> {};

TEST_P(ProcedureName, HasItsParts) {
    ExpectParts(ParseProcedureName(QString::fromUtf16(GetParam().text)), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Names, ProcedureName,
                         testing::Values(Row{u"sp_tables", u"", u"", u"sp_tables"},
                                         Row{u"..sp_stored_procedures", u"", u"",
                                             u"sp_stored_procedures"},
                                         Row{u"[my db]..sp_tables", u"my db", u"", u"sp_tables"},
                                         Row{u"db.dbo.p;1", u"db", u"dbo", u"p"},
                                         Row{u"dbo.[a.b]", u"", u"dbo", u"a.b"}));

TEST(ProcedureName, RefusesWhatIsNoName) {
    for (const char16_t* text : {u"", u"a b", u"a;b", u"a.", u"a.b.c.d.e", u"1"}) {
        EXPECT_NE(Raised([&] { ParseProcedureName(QString::fromUtf16(text)); }), 0)
            << QString::fromUtf16(text).toStdString();
    }
}

class LooseName : public testing::TestWithParam<Row> {};

TEST_P(LooseName, HasItsParts) {
    const auto name = ParseLooseName(QString::fromUtf16(GetParam().text));
    ASSERT_TRUE(name);
    ExpectParts(*name, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Names, LooseName,
                         testing::Values(Row{u"Order Details", u"", u"", u"Order Details"},
                                         Row{u"[Order Details]", u"", u"", u"Order Details"},
                                         Row{u"dbo.O'Brien", u"", u"dbo", u"O'Brien"},
                                         Row{u"db..[a]]b]", u"db", u"", u"a]b"},
                                         Row{u"\"a.b\"", u"", u"", u"a.b"},
                                         Row{u"", u"", u"", u""}));

TEST(LooseName, HasFourPartsAtMostAndClosedQuotes) {
    EXPECT_TRUE(ParseLooseName(QStringLiteral("s.d.o.n")));
    EXPECT_FALSE(ParseLooseName(QStringLiteral("x.s.d.o.n")));
    EXPECT_FALSE(ParseLooseName(QStringLiteral("[abc")));
    EXPECT_FALSE(ParseLooseName(QStringLiteral("[abc]d")));
}

TEST(ObjectName, IsWrittenAsItWasRead) {
    EXPECT_EQ(ParseProcedureName(QStringLiteral("db..p")).ToText(), u"db..p");
    EXPECT_EQ(ParseProcedureName(QStringLiteral("s.p")).ToText(), u"s.p");
}

}  // namespace quarv::localdb::tsql
