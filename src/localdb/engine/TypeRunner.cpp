// CREATE TYPE ... FROM and DROP TYPE.
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/tsql/TypeStatement.h"

namespace quarv::localdb::engine {

namespace {

// An alias type, xml and rowversion are no types to name anew ("CREATE TYPE (Transact-SQL)").
SqlType BaseOf(const tsql::TypeName& name) {
    const bool known = FindTypeKind(name.name).has_value() || IsRefusedType(name.name);
    const bool sys = name.schema.isEmpty() || SameName(name.schema, QStringLiteral("sys"));
    if (!known || !sys) throw SqlError(222, {name.name}, name.line);
    const SqlType type = BindType(name, 1);
    if (type.kind == TypeKind::Xml || type.kind == TypeKind::RowVersion) {
        throw SqlError(222, {name.name}, name.line);
    }
    return type;
}

void Create(const tsql::TypeStatement& node, Metadata& metadata) {
    const tsql::ObjectName& name = node.name;
    const std::optional<int> schema = metadata.FindSchema(name.schema);
    if (!schema || Metadata::IsSystemSchema(*schema))
        throw SqlError(2760, {name.schema}, name.line);
    AliasType type;
    type.schemaId = *schema;
    type.name = name.name;
    type.type = BaseOf(node.base);
    type.nullable = node.nullable;
    type.isSysname = SameName(node.base.name, QStringLiteral("sysname"));
    // A system type's name would hide the new one.
    const bool taken = FindTypeKind(name.name) || IsRefusedType(name.name) ||
                       metadata.FindType(name.schema, name.name);
    if (taken) throw SqlError(219, {name.ToText()}, name.line);
    metadata.AddType(type);
}

void Drop(const tsql::TypeStatement& node, Metadata& metadata) {
    const tsql::ObjectName& name = node.name;
    const std::optional<AliasType> type = metadata.FindType(name.schema, name.name);
    if (!type) {
        if (node.ifExists) return;
        throw SqlError(218, {name.ToText()}, name.line);
    }
    const QString user = metadata.FirstWithType(type->userType);
    if (!user.isNull()) throw SqlError(3732, {name.ToText(), user}, name.line);
    metadata.RemoveType(type->userType);
}

}  // namespace

void RunTypeStatement(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::TypeStatement&>(statement);
    if (!node.name.database.isEmpty()) {
        throw SqlError(40515, {node.name.ToText()}, node.name.line);
    }
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    Metadata metadata = context.CurrentMetadata();
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    if (node.drops) {
        Drop(node, metadata);
    } else {
        Create(node, metadata);
    }
    writing.Commit();
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
