// Views and procedures: CREATE, ALTER and CREATE OR ALTER.
#include "localdb/engine/AliasTypes.h"
#include "localdb/engine/NewObject.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/ViewColumns.h"
#include "localdb/tsql/CreateProcedure.h"
#include "localdb/tsql/CreateView.h"
#include "localdb/tsql/ExpressionText.h"

namespace quarv::localdb::engine {

namespace {

[[noreturn]] void RaiseNothingToAlter(const tsql::ObjectName& name) {
    constexpr int StateOfAlter = 6;
    Message message = SqlError(208, {name.ToText()}, name.line).What();
    message.state = StateOfAlter;
    throw SqlError(message);
}

// The object that the statement changes; nothing where it makes one. Raises SqlError 208, 2010.
std::optional<ObjectInfo> FindModule(Metadata& metadata, const tsql::ObjectName& name,
                                     tsql::ModuleVerb verb, const QString& type) {
    if (verb == tsql::ModuleVerb::Create) return std::nullopt;
    std::optional<ObjectInfo> old = metadata.Find(name.schema, name.name);
    if (!old && verb == tsql::ModuleVerb::Alter) RaiseNothingToAlter(name);
    if (old && old->type != type) throw SqlError(2010, {name.ToText()}, name.line);
    return old;
}

// Gives the object's number; one that is changed keeps it and the date when it was made.
int64_t StoreModule(Metadata& metadata, const std::optional<ObjectInfo>& old,
                    const tsql::ObjectName& name, const QString& type, const QString& source) {
    if (old) {
        metadata.Redefine(old->id, source, false);
        return old->id;
    }
    ObjectInfo object = NewObject(metadata, name, type);
    object.definition = source;
    return metadata.AddObject(object);
}

void StoreParameters(Metadata& metadata, int64_t id, const tsql::CreateProcedure& node) {
    int number = 0;
    VariableTable names;
    for (const tsql::ParameterDefinition& definition : node.parameters) {
        ParameterInfo parameter;
        parameter.name = definition.name;
        const DeclaredType declared = BindDeclaredType(metadata, definition.type, ++number);
        parameter.type = declared.type;
        parameter.userType = declared.userType;
        names.Declare(parameter.name, parameter.type);
        parameter.output = definition.output;
        if (definition.defaultValue) {
            parameter.defaultText = tsql::DefaultText(*definition.defaultValue);
        }
        metadata.AddParameter(id, number, parameter);
    }
}

}  // namespace

void RunCreateView(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::CreateView&>(statement);
    SessionState& session = frame.Session();
    if (!node.name.database.isEmpty()) throw SqlError(166, {QStringLiteral("CREATE/ALTER VIEW")});
    BindContext context = frame.NewContext();
    Metadata metadata = context.CurrentMetadata();
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const QString type = QStringLiteral("V");
    const std::optional<ObjectInfo> old = FindModule(metadata, node.name, node.verb, type);
    const std::vector<ColumnInfo> columns = ViewColumns(context, node);
    const int64_t id = StoreModule(metadata, old, node.name, type, node.source);
    for (const ColumnInfo& column : columns) metadata.AddColumn(id, column);
    writing.Commit();
    sink.StatementDone(StatementKind::Other, -1, false);
}

void RunCreateProcedure(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::CreateProcedure&>(statement);
    SessionState& session = frame.Session();
    if (!node.name.database.isEmpty()) {
        throw SqlError(166, {QStringLiteral("CREATE/ALTER PROCEDURE")});
    }
    Metadata metadata(session.store, frame.Database());
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const QString type = QStringLiteral("P");
    const std::optional<ObjectInfo> old = FindModule(metadata, node.name, node.verb, type);
    const int64_t id = StoreModule(metadata, old, node.name, type, node.source);
    StoreParameters(metadata, id, node);
    writing.Commit();
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
