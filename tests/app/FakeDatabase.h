// FakeDatabase: a database in memory as the main window meets it: server version, tables,
// procedures, and the columns of the table "Orders".
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
        script->Answer(ColumnsOfOrders,
                       MemoryResult::Rows({"column_name", "column_default", "is_nullable",
                                           "data_type", "character_maximum_length", "domain_name"},
                                          {{u"id", Value::Null(), u"NO", u"int"},
                                           {u"note", Value::Null(), u"YES", u"nvarchar", 80}}));
    }

    void SetTables(std::vector<ado::MemoryResult::Row> rows) {
        script->AnswerSchema(
            ado::Schema::Tables,
            ado::MemoryResult::Rows({"TABLE_NAME", "TABLE_TYPE"}, std::move(rows)));
    }
    void SetProcedures(std::vector<ado::MemoryResult::Row> rows) {
        script->AnswerSchema(ado::Schema::Procedures,
                             ado::MemoryResult::Rows({"PROCEDURE_NAME"}, std::move(rows)));
    }

    std::shared_ptr<ado::MemoryScript> script = std::make_shared<ado::MemoryScript>();
};

}  // namespace quarv
