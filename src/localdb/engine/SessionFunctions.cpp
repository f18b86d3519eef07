// What a session can ask about its connection, about collations and about row versions; and the
// functions that SQL Server has and this server refuses by their names.
#include <algorithm>
#include <array>

#include "localdb/engine/CollationNames.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemVariables.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

QString Lower(const SqlValue& value) {
    return FromUtf8(WithoutTrailingBlanks(value.text)).toLower();
}

SqlValue CollationProperty(const BoundCall&, const SqlValue* a, const Evaluation&) {
    const std::optional<CollationId> id = TryFindCollation(FromUtf8(a[0].text));
    if (!id) return {};
    const QString property = Lower(a[1]);
    if (property == u"codepage") return SqlValue::Integer(1252);
    if (property == u"lcid") return SqlValue::Integer(1033);
    if (property == u"comparisonstyle") return SqlValue::Integer(ComparisonStyleOf(*id));
    if (property == u"version") return SqlValue::Integer(NameOf(*id).contains(u"_100_") ? 2 : 0);
    return {};
}

BoundPtr BindCollationProperty(Arguments arguments) {
    for (BoundPtr& argument : arguments) {
        argument = ExpressionBinder::Convert(std::move(argument), SysnameType());
    }
    return MakeNullableCall(CollationProperty, IntType(), std::move(arguments));
}

SqlValue ConnectionProperty(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const QString property = Lower(a[0]);
    const char* text = nullptr;
    if (property == u"net_transport" || property == u"physical_net_transport") text = "TCP";
    if (property == u"protocol_type") text = "TSQL";
    if (property == u"auth_scheme") text = "SQL";
    return text ? SqlValue::Text(evaluation.arena->Keep(text)) : SqlValue();
}

BoundPtr BindConnectionProperty(Arguments arguments) {
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), SysnameType());
    return MakeNullableCall(ConnectionProperty, MakeType(TypeKind::NVarChar, 40),
                            std::move(arguments));
}

// One writer at a time: nothing before the next version is still open.
SqlValue NextVersion(const BoundCall&, const SqlValue*, const Evaluation& evaluation) {
    std::string bytes(evaluation.environment->Ask(SystemValue::LastRowVersion).text);
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
        *byte = static_cast<char>(static_cast<unsigned char>(*byte) + 1);
        if (*byte != 0) break;
    }
    return SqlValue::Bytes(evaluation.arena->Keep(bytes));
}

BoundPtr BindNextVersion(Arguments arguments) {
    return MakeCall(NextVersion, MakeType(TypeKind::Binary, 8), std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> SessionFunctions() {
    static constexpr std::array<FunctionEntry, 3> Table = {{
        {u"collationproperty", 2, 2, BindCollationProperty},
        {u"connectionproperty", 1, 1, BindConnectionProperty},
        {u"min_active_rowversion", 0, 0, BindNextVersion},
    }};
    return Table;
}

bool IsRefusedFunction(const QString& name) {
    static constexpr std::array<QStringView, 61> Names = {u"applock_mode",
                                                          u"applock_test",
                                                          u"asymkey_id",
                                                          u"cert_id",
                                                          u"certencoded",
                                                          u"columns_updated",
                                                          u"compress",
                                                          u"containstable",
                                                          u"context_info",
                                                          u"current_date",
                                                          u"current_request_id",
                                                          u"current_timezone",
                                                          u"current_timezone_id",
                                                          u"current_transaction_id",
                                                          u"cursor_status",
                                                          u"decompress",
                                                          u"decryptbykey",
                                                          u"decryptbypassphrase",
                                                          u"encryptbykey",
                                                          u"encryptbypassphrase",
                                                          u"eventdata",
                                                          u"file_id",
                                                          u"file_idex",
                                                          u"file_name",
                                                          u"filegroup_id",
                                                          u"filegroup_name",
                                                          u"filegroupproperty",
                                                          u"fileproperty",
                                                          u"fulltextcatalogproperty",
                                                          u"get_bit",
                                                          u"get_filestream_transaction_context",
                                                          u"host_id",
                                                          u"isjson",
                                                          u"json_array",
                                                          u"json_arrayagg",
                                                          u"json_modify",
                                                          u"json_object",
                                                          u"json_objectagg",
                                                          u"json_path_exists",
                                                          u"json_query",
                                                          u"json_value",
                                                          u"loginproperty",
                                                          u"opendatasource",
                                                          u"openjson",
                                                          u"openquery",
                                                          u"openrowset",
                                                          u"openxml",
                                                          u"permissions",
                                                          u"pwdcompare",
                                                          u"pwdencrypt",
                                                          u"session_context",
                                                          u"set_bit",
                                                          u"sql_variant_property",
                                                          u"stats_date",
                                                          u"textptr",
                                                          u"textvalid",
                                                          u"trigger_nestlevel",
                                                          u"typeproperty",
                                                          u"update",
                                                          u"verifysignedbycert",
                                                          u"xml_schema_namespace"};
    return std::find(Names.begin(), Names.end(), name.toLower()) != Names.end();
}

}  // namespace quarv::localdb::engine
