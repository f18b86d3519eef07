// CREATE SCHEMA, DROP SCHEMA and ALTER SCHEMA ... TRANSFER.
#include <array>

#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/tsql/SchemaStatement.h"

namespace quarv::localdb::engine {

namespace {

const QString Dbo = QStringLiteral("dbo");

// The other principals of a database, who cannot own a schema here: all belongs to dbo.
constexpr std::array<QStringView, 12> Principals = {
    u"guest",         u"INFORMATION_SCHEMA", u"sys",
    u"public",        u"db_owner",           u"db_accessadmin",
    u"db_ddladmin",   u"db_securityadmin",   u"db_backupoperator",
    u"db_datareader", u"db_datawriter",      u"db_denydatareader"};

void CheckOwner(const tsql::SchemaStatement& node) {
    if (node.owner.isEmpty() || SameName(node.owner, Dbo)) return;
    for (const QStringView principal : Principals) {
        if (!SameName(node.owner, principal.toString())) continue;
        throw SqlError(40517, {QStringLiteral("AUTHORIZATION ") + node.owner}, node.line);
    }
    throw SqlError(15151, {QStringLiteral("find"), QStringLiteral("user"), node.owner}, node.line);
}

void Create(const tsql::SchemaStatement& node, Metadata& metadata) {
    try {
        CheckOwner(node);
        metadata.AddSchema(node.name);
    } catch (const SqlError& cause) {
        if (cause.Number() == 40517) throw;
        throw ErrorSummary(SqlError(2759)).After(cause);
    }
}

void Drop(const tsql::SchemaStatement& node, Metadata& metadata) {
    const QString drop = QStringLiteral("drop"), schema = QStringLiteral("schema");
    const std::optional<int> id = metadata.FindSchema(node.name);
    if (!id) {
        if (node.ifExists) return;
        throw SqlError(15151, {drop, schema, node.name});
    }
    if (*id < Metadata::FirstUserSchema) throw SqlError(15150, {drop, schema, node.name});
    const QString member = metadata.FirstInSchema(*id);
    if (!member.isNull()) throw SqlError(3729, {QStringLiteral("drop schema"), node.name, member});
    metadata.RemoveSchema(*id);
}

void TransferType(const tsql::SchemaStatement& node, int schema, Metadata& metadata) {
    const std::optional<AliasType> type = metadata.FindType(node.object.schema, node.object.name);
    if (!type) {
        throw SqlError(15151,
                       {QStringLiteral("find"), QStringLiteral("type"), node.object.ToText()});
    }
    if (type->schemaId == schema) return;
    if (metadata.FindType(node.name, type->name)) throw SqlError(15530, {type->name});
    metadata.MoveType(type->userType, schema);
}

// Constraints go with their table. A name that is taken stays where it is.
void TransferObject(const tsql::SchemaStatement& node, int schema, Metadata& metadata) {
    const std::optional<ObjectInfo> object = metadata.Find(node.object.schema, node.object.name);
    if (!object) {
        throw SqlError(15151,
                       {QStringLiteral("find"), QStringLiteral("object"), node.object.ToText()});
    }
    if (metadata.IsChild(object->id)) throw SqlError(15347);
    if (object->schemaBound) throw SqlError(15348);
    if (object->schemaId == schema) return;
    const QString taken = metadata.NameTakenBy(object->id, schema);
    if (!taken.isNull()) throw SqlError(15530, {taken});
    metadata.MoveObject(object->id, schema);
}

void Transfer(const tsql::SchemaStatement& node, Metadata& metadata) {
    const std::optional<int> schema = metadata.FindSchema(node.name);
    if (!schema || Metadata::IsSystemSchema(*schema)) {
        throw SqlError(15151, {QStringLiteral("alter"), QStringLiteral("schema"), node.name});
    }
    if (node.transfersType) {
        TransferType(node, *schema, metadata);
    } else {
        TransferObject(node, *schema, metadata);
    }
}

}  // namespace

void RunSchemaStatement(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::SchemaStatement&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    // Objects move within the database that they are in.
    if (!node.object.database.isEmpty() && !SameName(node.object.database, frame.Database().name)) {
        throw SqlError(40515, {node.object.ToText()}, node.object.line);
    }
    Metadata metadata = context.CurrentMetadata();
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    switch (node.verb) {
        case tsql::SchemaVerb::Create:
            Create(node, metadata);
            break;
        case tsql::SchemaVerb::Drop:
            Drop(node, metadata);
            break;
        case tsql::SchemaVerb::Transfer:
            Transfer(node, metadata);
            break;
    }
    writing.Commit();
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
