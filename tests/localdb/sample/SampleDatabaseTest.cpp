// The sample database as a server makes it: what somebody who opens it is to find.
#include "localdb/catalog/CatalogServer.h"
#include "localdb/sample/SampleScript.h"

namespace quarv::localdb::sample {
namespace {

using catalog::Texts;

class SampleDatabaseTest : public catalog::CatalogServer {
  protected:
    SampleDatabaseTest() {
        for (const QString& batch : SampleBatches()) Prepare({batch.toStdString()});
    }
};

TEST_F(SampleDatabaseTest, ShowsWhatADatabaseCanHold) {
    EXPECT_EQ(Rows("select case when count(*) >= 14 then 1 else 0 end from sys.tables"),
              Texts({"1"}));
    // Every type of a column.
    EXPECT_EQ(Rows("select t.name from sys.types t where t.user_type_id = t.system_type_id "
                   "and not exists (select 1 from sys.columns c "
                   "where c.system_type_id = t.system_type_id) order by t.name"),
              Texts());
    EXPECT_EQ(Rows("select t.name, count(*) from sys.columns c join sys.types t "
                   "on t.user_type_id = c.user_type_id join sys.tables o on o.object_id = "
                   "c.object_id where t.is_user_defined = 1 "
                   "group by t.name order by t.name"),
              Texts({"PhoneNumber|1", "PlaceName|4", "Price|1"}));
    EXPECT_EQ(Rows("select name from sys.tables where charindex(' ', name) > 0 "
                   "or charindex('''', name) > 0 order by name"),
              Texts({"Order Details", "Supplier's Notes"}));
    // Without a primary key, with one of several columns, and with parts that are computed.
    EXPECT_EQ(Rows("select name from sys.tables where objectproperty(object_id, "
                   "'TableHasPrimaryKey') = 0 order by name"),
              Texts({"PriceLog", "Supplier's Notes"}));
    EXPECT_EQ(Rows("select name from sys.columns where is_computed = 1"), Texts({"FullName"}));
}

TEST_F(SampleDatabaseTest, HoldsTheRowsThatItTellsOf) {
    EXPECT_EQ(Rows("select count(*), count(distinct MovedAt) from StockMovements"),
              Texts({"25000|25000"}));
    EXPECT_EQ(Rows("select ProductName from Products where ProductID = 5"),
              Texts({"抹茶 Matcha 🍵"}));
    EXPECT_EQ(Rows("select len(Body) from Documents where Title = N'House blend'"),
              Texts({"6959"}));
    EXPECT_EQ(Rows("select Lines, CustomerName from OrderTotals where OrderID = 1001"),
              Texts({"3|Café Mirabelle"}));
}

TEST_F(SampleDatabaseTest, ItsProceduresAnswer) {
    EXPECT_EQ(Run("exec OpenOrders").sets.at(0).rows.size(), 2u);
    EXPECT_EQ(Run("exec ProductsOfCategory N'Tea'").sets.at(0).rows.size(), 8u);
    EXPECT_EQ(Run("exec OrdersOfCustomer 7, '20240101'").sets.at(0).rows.size(), 2u);
    const catalog::Recording moved =
        Run("declare @moved int exec MovementsOfProduct 1, default, 'NCY', @moved output "
            "select case when @moved > 0 then 1 else 0 end");
    EXPECT_EQ(moved.sets.at(0).rows.size(), 100u);
    EXPECT_EQ(moved.sets.at(1).rows, Texts({"1"}));
}

}  // namespace
}  // namespace quarv::localdb::sample
