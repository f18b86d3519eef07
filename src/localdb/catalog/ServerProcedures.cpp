#include <QFileInfo>
#include <array>

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/Server.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

using engine::SystemCall;
using engine::SystemProcedure;

namespace {

struct Attribute {
    int id;
    const char16_t* name;
    const char16_t* value;  // nothing: ValueOf knows
};

// "sp_server_info (Transact-SQL)".
constexpr std::array<Attribute, 29> Attributes = {{
    {1, u"DBMS_NAME", u"Microsoft SQL Server"},
    {2, u"DBMS_VER", nullptr},
    {10, u"OWNER_TERM", u"owner"},
    {11, u"TABLE_TERM", u"table"},
    {12, u"MAX_OWNER_NAME_LENGTH", u"128"},
    {13, u"TABLE_LENGTH", u"128"},
    {14, u"MAX_QUAL_LENGTH", u"128"},
    {15, u"COLUMN_LENGTH", u"128"},
    {16, u"IDENTIFIER_CASE", u"MIXED"},
    {17, u"TX_ISOLATION", u"2"},
    {18, u"COLLATION_SEQ", u"charset=iso_1 sort_order=nocase_iso charset_num=1 sort_order_num=52"},
    {19, u"SAVEPOINT_SUPPORT", u"Y"},
    {20, u"MULTI_RESULT_SETS", u"Y"},
    {22, u"ACCESSIBLE_TABLES", u"Y"},
    {100, u"USERID_LENGTH", u"128"},
    {101, u"QUALIFIER_TERM", u"database"},
    {102, u"NAMED_TRANSACTIONS", u"Y"},
    {103, u"SPROC_AS_LANGUAGE", u"Y"},
    {104, u"ACCESSIBLE_SPROC", u"Y"},
    {105, u"MAX_INDEX_COLS", u"32"},
    {106, u"RENAME_TABLE", u"N"},
    {107, u"RENAME_COLUMN", u"N"},
    {108, u"DROP_COLUMN", u"N"},
    {109, u"INCREASE_COLUMN_LENGTH", u"N"},
    {110, u"DDL_IN_TRANSACTION", u"Y"},
    {111, u"DESCENDING_INDEXES", u"Y"},
    {112, u"SP_RENAME", u"N"},
    {113, u"REMOTE_SPROC", u"N"},
    {500, u"SYS_SPROC_VERSION", nullptr},
}};

QString ValueOf(const Attribute& attribute) {
    if (attribute.value) return QString::fromUtf16(attribute.value);
    // Shorter than @@VERSION, as clients show it beside the server's name.
    const QString product = attribute.id == 2 ? QStringLiteral("SQL Server 2022 - ") : QString();
    return product + engine::Server::ProductVersion();
}

int ServerInfo(SystemCall& call) {
    call.Begin({Int("ATTRIBUTE_ID", false), VarChar("ATTRIBUTE_NAME", 60, false),
                VarChar("ATTRIBUTE_VALUE", 255)});
    for (const Attribute& attribute : Attributes) {
        if (!call.IsNull(0) && call.Integer(0) != attribute.id) continue;
        call.Row({Value(int64_t{attribute.id}), Value(QString::fromUtf16(attribute.name)),
                  Value(ValueOf(attribute))});
    }
    call.End();
    return 0;
}

int Databases(SystemCall& call) {
    call.Begin({Sysname("DATABASE_NAME"), Int("DATABASE_SIZE"), VarChar("REMARKS", 254)});
    for (const engine::DatabaseEntry& entry : call.Databases().All()) {
        const qint64 kilobytes = (QFileInfo(entry.path).size() + 1023) / 1024;
        call.Row({Value(entry.name), Value(int64_t{kilobytes}), Null()});
    }
    call.End();
    return 0;
}

}  // namespace

std::vector<SystemProcedure> ServerProcedures() {
    return {
        {QStringLiteral("sp_server_info"),
         {{QStringLiteral("@attribute_id"), engine::IntType()}},
         ServerInfo},
        {QStringLiteral("sp_databases"), {}, Databases},
    };
}

}  // namespace quarv::localdb::catalog
