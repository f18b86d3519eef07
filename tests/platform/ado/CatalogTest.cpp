#include "platform/ado/Catalog.h"

#include "platform/ado/ErrorOf.h"
#include "platform/ado/MemoryConnection.h"

namespace quarv::test {

namespace {

using ado::Index;
using ado::MemoryResult;
using ado::Schema;

MemoryResult Tables(std::vector<MemoryResult::Row> rows) {
    return MemoryResult::Rows({"TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"}, std::move(rows));
}

MemoryResult Key(std::vector<MemoryResult::Row> rows) {
    return MemoryResult::Rows({"COLUMN_NAME", "ORDINAL", "PK_NAME"}, std::move(rows));
}

MemoryResult Indexes(std::vector<MemoryResult::Row> rows) {
    return MemoryResult::Rows({"INDEX_NAME", "COLUMN_NAME"}, std::move(rows));
}

class CatalogTest : public testing::Test {
  protected:
    CatalogTest() {
        connection_->Open();
        catalog_.SetActiveConnection(connection_);
        Script()
            .AnswerSchema(Schema::Tables, Tables({{u"dbo", u"t", u"TABLE"}}))
            .AnswerSchema(Schema::PrimaryKeys, Key({}))
            .AnswerSchema(Schema::Indexes, Indexes({}));
    }

    ado::MemoryScript& Script() { return connection_->Script(); }

    // "name: columns" with a "*" in front of the primary key.
    QStringList IndexesOf(const QString& table) {
        ado::Table found = catalog_.Tables(table);
        QStringList texts;
        for (const Index& index : found.Indexes())
            texts.append((index.PrimaryKey ? "*" : "") + index.Name + ": " +
                         index.Columns.join(", "));
        return texts;
    }

    std::shared_ptr<ado::MemoryConnection> connection_ = std::make_shared<ado::MemoryConnection>();
    ado::Catalog catalog_;
};

}  // namespace

TEST_F(CatalogTest, IndexesStandInTheServersOrderAndOneIsThePrimaryKey) {
    Script()
        .AnswerSchema(Schema::PrimaryKeys, Key({{u"sub", 1, u"PK_t"}, {u"id", 2, u"PK_t"}}))
        .AnswerSchema(Schema::Indexes, Indexes({{},
                                                {u"IX_a", u"name"},
                                                {u"PK_t", u"sub"},
                                                {u"PK_t", u"id"},
                                                {u"IX_b", u"id"},
                                                {u"IX_b", u"name"}}));
    EXPECT_EQ(IndexesOf("t"), (QStringList{"IX_a: name", "*PK_t: sub, id", "IX_b: id, name"}));
}

TEST_F(CatalogTest, ATableWithoutIndexesHasNone) {
    EXPECT_EQ(IndexesOf("t"), QStringList());
}

TEST_F(CatalogTest, ATableWithoutAPrimaryKeyHasItsOtherIndexes) {
    Script().AnswerSchema(Schema::Indexes, Indexes({{u"IX_a", u"name"}}));
    EXPECT_EQ(IndexesOf("t"), QStringList{"IX_a: name"});
}

TEST_F(CatalogTest, AKeyThatNoIndexNamesStandsFirst) {
    Script()
        .AnswerSchema(Schema::PrimaryKeys, Key({{u"id", 1, Value::Null()}}))
        .AnswerSchema(Schema::Indexes, Indexes({{u"IX_a", u"name"}}));
    EXPECT_EQ(IndexesOf("t"), (QStringList{"*: id", "IX_a: name"}));
}

TEST_F(CatalogTest, NothingIsAskedBeforeItIsRead) {
    EXPECT_EQ(Script().Schemas(), QStringList());
    ado::Table table = catalog_.Tables("t");
    EXPECT_EQ(Script().Schemas(), QStringList{"20 .t"});
    table.Indexes();
    EXPECT_EQ(Script().Schemas(), (QStringList{"20 .t", "28 dbo.t", "12 dbo.t"}));
    table.Indexes();
    EXPECT_EQ(Script().Schemas().size(), 3);
}

TEST_F(CatalogTest, ATableIsFoundInAnyLetterCase) {
    EXPECT_EQ(catalog_.Tables("T").Name(), "t");
}

TEST_F(CatalogTest, NamesThatAreOnlyLikeItAreNotTaken) {
    Script().AnswerSchema(Schema::Tables, Tables({{u"dbo", u"axb"}, {u"dbo", u"a_b"}}));
    EXPECT_EQ(catalog_.Tables("a_b").Name(), "a_b");
}

TEST_F(CatalogTest, OfSeveralOfANameTheOneOfDboIsTaken) {
    Script().AnswerSchema(Schema::Tables,
                          Tables({{u"archive", u"t"}, {u"dbo", u"t"}, {u"old", u"t"}}));
    catalog_.Tables("t").Indexes();
    EXPECT_EQ(Script().Schemas().last(), "12 dbo.t");
}

TEST_F(CatalogTest, OfSeveralOutsideDboTheFirstIsTaken) {
    Script().AnswerSchema(Schema::Tables, Tables({{u"archive", u"t"}, {u"old", u"t"}}));
    catalog_.Tables("t").Indexes();
    EXPECT_EQ(Script().Schemas().last(), "12 archive.t");
}

TEST_F(CatalogTest, TheSameLettersCountForMoreThanTheSchema) {
    Script().AnswerSchema(Schema::Tables, Tables({{u"dbo", u"T"}, {u"old", u"t"}}));
    catalog_.Tables("t").Indexes();
    EXPECT_EQ(Script().Schemas().last(), "12 old.t");
}

TEST_F(CatalogTest, AServerWithoutSchemasIsAskedByNameAlone) {
    Script().AnswerSchema(Schema::Tables, Tables({{Value::Null(), u"t"}}));
    catalog_.Tables("t").Indexes();
    EXPECT_EQ(Script().Schemas().last(), "12 .t");
}

TEST_F(CatalogTest, AnUnknownTableIsRefused) {
    EXPECT_EQ(ErrorOf([&] { catalog_.Tables("nowhere"); }).Number(), -2146825023);
    EXPECT_EQ(ErrorOf([&] { catalog_.Tables(""); }).Number(), -2146825023);
}

TEST_F(CatalogTest, WithoutAConnectionNothingCanBeAsked) {
    EXPECT_EQ(catalog_.ActiveConnection(), connection_);
    connection_->Close();
    EXPECT_EQ(ErrorOf([&] { catalog_.Tables("t"); }).Number(), -2146824584);
    catalog_.SetActiveConnection(nullptr);
    EXPECT_EQ(ErrorOf([&] { catalog_.Tables("t"); }).Number(), -2146824579);
}

TEST_F(CatalogTest, AFailureIsRaisedAndTheNextReadingAsksAgain) {
    ado::Table table = catalog_.Tables("t");
    Script().AnswerSchema(Schema::Indexes, MemoryResult::Fails("no", -2147217900));
    EXPECT_EQ(ErrorOf([&] { table.Indexes(); }).Description(), "no");
    Script().AnswerSchema(Schema::Indexes, Indexes({{u"IX_a", u"name"}}));
    ASSERT_EQ(table.Indexes().size(), 1U);
}

TEST_F(CatalogTest, EachTableHasAnAnswerOfItsOwn) {
    Script()
        .AnswerSchema(Schema::Tables, Tables({{u"dbo", u"t"}, {u"dbo", u"v"}}))
        .AnswerSchema(Schema::PrimaryKeys, "v", Key({{u"id", 1, u"PK_v"}}));
    EXPECT_EQ(IndexesOf("t"), QStringList());
    EXPECT_EQ(IndexesOf("v"), QStringList{"*PK_v: id"});
}

}  // namespace quarv::test
