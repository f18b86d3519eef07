#include "edit/TableEditGridRow.h"

#include <gtest/gtest.h>

#include "base/StringList.h"
#include "platform/ado/MemoryConnection.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using ado::MemoryResult;

constexpr int Overflow = 6;
constexpr int SubscriptOutOfRange = 9;
constexpr int ItemNotFound = -2146825023;  // 3265 as an HRESULT

class TableEditGridRowTest : public testing::Test {
  protected:
    TableEditGridRowTest() { connection_->Open(); }

    ado::RecordsetPtr Open(QStringList columns, MemoryResult::Row row) {
        connection_->Script().Answer("q", MemoryResult::Rows(std::move(columns), {std::move(row)}));
        return connection_->Execute("q");
    }
    // A row of the columns id, sub and note, keyed on the first two.
    TableEditGridRow Row(MemoryResult::Row values) {
        StringList key;
        key.Add("id");
        key.Add("sub");
        return Row(std::move(values), key);
    }
    TableEditGridRow Row(MemoryResult::Row values, const StringList& key) {
        TableEditGridRow row;
        row.Init(*Open({"id", "sub", "note"}, std::move(values)), key);
        return row;
    }

    std::shared_ptr<ado::MemoryConnection> connection_ = std::make_shared<ado::MemoryConnection>();
};

StringList Key(const QStringList& names) {
    StringList key;
    for (const QString& name : names) key.Add(name);
    return key;
}

TEST_F(TableEditGridRowTest, HoldsEveryFieldTwice) {
    const TableEditGridRow row = Row({7, u"O'Hara", 1.5});
    EXPECT_EQ(row.ColumnValue(1).ToInteger(), 7);
    EXPECT_EQ(row.ColumnValue(2).Text(), "O'Hara");
    EXPECT_EQ(row.ColumnValue(3).kind(), Value::Kind::Floating);
    EXPECT_EQ(row.OriginalValue(1).ToInteger(), 7);
    EXPECT_EQ(row.OriginalValue(2).Text(), "O'Hara");
    EXPECT_EQ(row.OriginalValue(3).ToDouble(), 1.5);
}

TEST_F(TableEditGridRowTest, ANullReadsAsTheWordAndStaysNullUnderneath) {
    TableEditGridRow row = Row({7, u"s", Value::Null()});
    EXPECT_EQ(row.ColumnValue(3).Text(), "NULL");
    EXPECT_TRUE(row.OriginalValue(3).IsNull());
    row.CopyNewToOriginal(3);
    EXPECT_TRUE(row.OriginalValue(3).IsNull());
    row.SetColumnValue(1, Value::Null());
    EXPECT_EQ(row.ColumnValue(1).Text(), "NULL");
}

TEST_F(TableEditGridRowTest, AnEmptyValueIsNoNull) {
    const TableEditGridRow row = Row({7, Value(), Value()});
    EXPECT_TRUE(row.ColumnValue(3).IsEmpty());
}

TEST_F(TableEditGridRowTest, AWrittenValueLeavesTheOriginalUntilItIsCopied) {
    TableEditGridRow row = Row({7, u"s", u"n"});
    row.SetColumnValue(1, u"x");
    EXPECT_EQ(row.ColumnValue(1).Text(), "x");
    EXPECT_EQ(row.OriginalValue(1).ToInteger(), 7);
    row.CopyNewToOriginal(1);
    EXPECT_EQ(row.OriginalValue(1).Text(), "x");
    EXPECT_EQ(row.OriginalValue(2).Text(), "s");
}

TEST_F(TableEditGridRowTest, ValuesAreWrittenWithoutCheckOrConversion) {
    TableEditGridRow row = Row({7, u"s", u"n"});
    row.SetColumnValue(1, QByteArray("\x01"));
    EXPECT_EQ(row.ColumnValue(1).kind(), Value::Kind::Bytes);
    row.SetColumnValue(1, true);
    EXPECT_EQ(row.ColumnValue(1).kind(), Value::Kind::Boolean);
}

TEST_F(TableEditGridRowTest, TheKeyKeepsWhatWasRead) {
    TableEditGridRow row = Row({7, u"O'Hara", u"n"});
    row.SetColumnValue(1, 8);
    row.CopyNewToOriginal(1);
    EXPECT_EQ(row.PKValue(1).ToInteger(), 7);
    EXPECT_EQ(row.PrimaryKeyClause(Key({"id", "sub"})), "[id]='7' and [sub]='O''Hara'");
}

TEST_F(TableEditGridRowTest, KeyColumnsStandInTheKeysOrderInAnyLetterCase) {
    const StringList key = Key({"SUB", "Id"});
    const TableEditGridRow row = Row({7, u"s", u"n"}, key);
    EXPECT_EQ(row.PKValue(1).Text(), "s");
    EXPECT_EQ(row.PrimaryKeyClause(key), "[SUB]='s' and [Id]='7'");
}

TEST_F(TableEditGridRowTest, AnEmptyKeyGivesAnEmptyClause) {
    const TableEditGridRow row = Row({7, u"s", u"n"}, StringList());
    EXPECT_EQ(row.PrimaryKeyClause(StringList()), "");
}

TEST_F(TableEditGridRowTest, ANullKeyIsComparedByAnEqualsSign) {
    const TableEditGridRow row = Row({Value::Null(), u"s", u"n"});
    EXPECT_EQ(row.PrimaryKeyClause(Key({"id"})), "[id]=NULL");
}

TEST_F(TableEditGridRowTest, ALongKeyIsMarkedAndALongTextCut) {
    const TableEditGridRow row = Row({QByteArray("ab"), QString(1200, u'k'), u"n"});
    EXPECT_EQ(row.PrimaryKeyClause(Key({"id", "sub"})),
              "[id]='<Long>' and [sub]='" + QString(999, u'k') + "'");
}

TEST_F(TableEditGridRowTest, AKeyThatIsNoFieldRaises) {
    EXPECT_EQ(Raised([this] { Row({7, u"s", u"n"}, Key({"nokey"})); }), ItemNotFound);
}

TEST_F(TableEditGridRowTest, PositionsOutsideTheFieldsRaise) {
    TableEditGridRow row = Row({7, u"s", u"n"});
    for (const qint16 position : {qint16{0}, qint16{-1}, qint16{4}, qint16{32767}}) {
        EXPECT_EQ(Raised([&] { row.ColumnValue(position); }), SubscriptOutOfRange) << position;
        EXPECT_EQ(Raised([&] { row.SetColumnValue(position, 1); }), SubscriptOutOfRange);
        EXPECT_EQ(Raised([&] { row.OriginalValue(position); }), SubscriptOutOfRange);
        EXPECT_EQ(Raised([&] { row.CopyNewToOriginal(position); }), SubscriptOutOfRange);
    }
    EXPECT_EQ(Raised([&] { row.ColumnValue(-32768); }), Overflow);
    EXPECT_EQ(Raised([&] { row.OriginalValue(-32768); }), Overflow);
}

TEST_F(TableEditGridRowTest, PositionsOutsideTheKeyRaise) {
    const TableEditGridRow row = Row({7, u"s", u"n"});
    for (const qint16 position : {qint16{0}, qint16{-1}, qint16{3}, qint16{-32768}})
        EXPECT_EQ(Raised([&] { row.PKValue(position); }), SubscriptOutOfRange) << position;
    EXPECT_EQ(Raised([&] {
                  row.PrimaryKeyClause(Key({"id", "sub", "note"}));
              }),
              SubscriptOutOfRange);
}

TEST_F(TableEditGridRowTest, InitDiscardsWhatWasHeld) {
    TableEditGridRow row = Row({7, u"s", u"n"});
    row.Init(*Open({"only"}, {u"v"}), Key({"only"}));
    EXPECT_EQ(row.ColumnValue(1).Text(), "v");
    EXPECT_EQ(Raised([&] { row.ColumnValue(2); }), SubscriptOutOfRange);
    EXPECT_EQ(row.PrimaryKeyClause(Key({"only"})), "[only]='v'");
    EXPECT_EQ(Raised([&] { row.PKValue(2); }), SubscriptOutOfRange);
}

TEST_F(TableEditGridRowTest, IsNeverDeletedNorEmpty) {
    TableEditGridRow row = Row({Value::Null(), Value::Null(), Value::Null()});
    EXPECT_EQ(row.PersistStatus(), 2);
    row.SetPersistStatus(1);
    EXPECT_EQ(row.PersistStatus(), 2);
    EXPECT_FALSE(row.IsDeleted());
    EXPECT_FALSE(row.IsEmpty());
}

TEST_F(TableEditGridRowTest, KeepsTheVisibleIndexOfItsList) {
    TableEditGridRow row = Row({7, u"s", u"n"});
    row.SetVisibleIndex(12);
    EXPECT_EQ(row.VisibleIndex(), 12);
}

TEST_F(TableEditGridRowTest, HasNoColumnsOfItsOwn) {
    TableEditGridRow row = Row({7, u"s", u"n"});
    Value canvas;
    EXPECT_EQ(row.CreateColumnList(canvas), nullptr);
}

}  // namespace
}  // namespace quarv
