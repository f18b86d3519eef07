// FakeDatabase: a database in memory as the main window meets it: server version, tables,
// procedures, and all there is to know of the table "Orders" and the procedure "Plain".
#pragma once

#include "platform/ado/MemoryConnection.h"

namespace quarv {

class FakeDatabase {
  public:
    static constexpr const char* ConnStr =
        "Provider=sqloledb;Data Source=srv;Initial Catalog=Sales;Integrated Security=SSPI;";
    static constexpr const char* ColumnsOfOrders =
        "select * from information_schema.columns where table_name='Orders' order by "
        "ordinal_position";

    static constexpr const char* RowsOfOrders = "select top 100 * from [Orders]";

    FakeDatabase() {
        using ado::MemoryResult;
        script->Answer("exec sp_server_info 2",
                       MemoryResult::Rows({"attribute_id", "attribute_name", "attribute_value"},
                                          {{2, u"DBMS_VER", u"Server 9.1"}}));
        SetTables({{u"Orders", u"TABLE"},
                   {u"spt_values", u"system table"},
                   {u"Customers", u"TABLE"},
                   {u"sysobjects", u"SYSTEM TABLE"},
                   {u"AllOrders", u"VIEW"}});
        SetProcedures({{u"usp_Report;1"}, {u"Plain"}, {u"a;b;c"}});
        FillOrders();
        FillPlain();
    }

    // Names and types; all are in the schema "dbo".
    void SetTables(std::vector<ado::MemoryResult::Row> rows) {
        for (ado::MemoryResult::Row& row : rows) row.emplace_back(u"dbo");
        script->AnswerSchema(
            ado::Schema::Tables,
            ado::MemoryResult::Rows({"TABLE_NAME", "TABLE_TYPE", "TABLE_SCHEMA"}, std::move(rows)));
    }
    void SetProcedures(std::vector<ado::MemoryResult::Row> rows) {
        script->AnswerSchema(ado::Schema::Procedures,
                             ado::MemoryResult::Rows({"PROCEDURE_NAME"}, std::move(rows)));
    }
    // A table of the one column "n", its key, with one row.
    void FillSmallTable(const QString& name, const Value& cell) {
        using ado::MemoryResult;
        script->Answer("select * from information_schema.columns where table_name='" + name +
                           "' order by ordinal_position",
                       Columns({{u"n", Value::Null(), u"NO", u"int"}}));
        script->Answer("sp_helpindex '" + name + "'", MemoryResult::Closed());
        script->AnswerSchema(ado::Schema::PrimaryKeys, name,
                             MemoryResult::Rows({"COLUMN_NAME", "PK_NAME"}, {{u"n", u"PK"}}));
        script->AnswerSchema(ado::Schema::Indexes, name,
                             MemoryResult::Rows({"INDEX_NAME", "COLUMN_NAME"}, {{u"PK", u"n"}}));
        script->Answer("select top 100 * from [" + name + "]", MemoryResult::Rows({"n"}, {{cell}}));
    }

    std::shared_ptr<ado::MemoryScript> script = std::make_shared<ado::MemoryScript>();

  private:
    static ado::MemoryResult Columns(std::vector<ado::MemoryResult::Row> rows) {
        return ado::MemoryResult::Rows({"column_name", "column_default", "is_nullable", "data_type",
                                        "character_maximum_length", "domain_name"},
                                       std::move(rows));
    }
    void FillOrders() {
        using ado::MemoryResult;
        script->Answer(ColumnsOfOrders,
                       Columns({{u"id", Value::Null(), u"NO", u"int"},
                                {u"note", Value::Null(), u"YES", u"nvarchar", 80}}));
        script->Answer("sp_helpindex 'Orders'",
                       MemoryResult::Rows({"index_name", "index_description", "index_keys"},
                                          {{u"PK_Orders", u"clustered, primary key", u"id"}}));
        script->AnswerSchema(
            ado::Schema::PrimaryKeys, "Orders",
            MemoryResult::Rows({"COLUMN_NAME", "PK_NAME"}, {{u"id", u"PK_Orders"}}));
        script->AnswerSchema(
            ado::Schema::Indexes, "Orders",
            MemoryResult::Rows({"INDEX_NAME", "COLUMN_NAME"}, {{u"PK_Orders", u"id"}}));
        script->Answer(RowsOfOrders, MemoryResult::Rows({"id", "note"}, {{1, u"a"}, {2, u"b"}}));
    }
    void FillPlain() {
        using ado::MemoryResult;
        constexpr DateTime created{.month = 2, .day = 9, .year = 2024};
        script->Answer(
            "select * from information_schema.routines where routine_name= 'Plain'",
            MemoryResult::Rows({"routine_schema", "routine_name", "created", "routine_definition"},
                               {{u"dbo", u"Plain", created, u" create proc Plain as select 1 "}}));
        script->Answer("sp_help 'Plain'",
                       {MemoryResult::Rows({"Name"}, {{u"Plain"}}),
                        MemoryResult::Rows({"Parameter_name"}, {{u"@a"}, {u"@b"}})});
    }
};

}  // namespace quarv
