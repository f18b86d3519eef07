// DECLARE and SET of a variable.
#include "localdb/engine/AliasTypes.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableBuilder.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/tsql/CreateTable.h"
#include "localdb/tsql/Declare.h"

namespace quarv::localdb::engine {

namespace {

void DeclareTable(const tsql::CreateTable& definition, Frame& frame) {
    VariableTable& variables = frame.Variables();
    const QString& name = definition.name.name;
    if (variables.FindTable(name)) return;
    TemporaryTables& temporaries = frame.Session().temporaries;
    Metadata metadata(frame.Session().store, frame.Database());
    ObjectInfo object;
    object.schema = QStringLiteral("dbo");
    object.type = QStringLiteral("U");
    const int64_t id = temporaries.NextVariableId();
    // Its constraints are named after a number.
    object.name = u'#' + QString::number(id, 16).toUpper();
    auto table =
        std::make_shared<TableInfo>(TableBuilder(definition, frame, metadata).Build(id, object));
    table->object.name = name;
    for (IndexInfo& index : table->indexes) index.constraintId = id;
    variables.DeclareTable(name, table);
    temporaries.MakeVariable(table);
}

void Declare(const tsql::Statement& statement, Frame& frame, bool setValues) {
    VariableTable& variables = frame.Variables();
    int ordinal = 0;
    for (const tsql::Declare::Item& item : static_cast<const tsql::Declare&>(statement).items) {
        ++ordinal;
        if (item.table) {
            DeclareTable(*item.table, frame);
            continue;
        }
        const SqlType type = BindVariableType(frame, item.type, ordinal);
        if (IsOldLong(type.kind)) throw SqlError(2739);
        // A loop comes by again and again; a variable is declared once and set anew.
        std::optional<size_t> index = variables.Find(item.name);
        if (!index) index = variables.Declare(item.name, type);
        if (item.value && setValues) variables.Set(*index, frame.Compute(*item.value, type).View());
    }
}

}  // namespace

void RunDeclare(const tsql::Statement& statement, Frame& frame, ResultSink&) {
    Declare(statement, frame, true);
}

void DeclareOnly(const tsql::Statement& statement, Frame& frame) {
    Declare(statement, frame, false);
}

void RunSetVariable(const tsql::Statement& statement, Frame& frame, ResultSink&) {
    const auto& node = static_cast<const tsql::SetVariable&>(statement);
    VariableTable& variables = frame.Variables();
    const std::optional<size_t> index = variables.Find(node.name);
    if (!index) throw SqlError(137, {node.name});
    variables.Set(*index, frame.Compute(*node.value, variables.At(*index).type).View());
    frame.Session().rowCount = 1;
}

}  // namespace quarv::localdb::engine
