#include "localdb/engine/ColumnChanger.h"
#include "localdb/engine/ConstraintSwitch.h"
#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableAdder.h"
#include "localdb/engine/TableDropper.h"
#include "localdb/tsql/AlterDatabase.h"
#include "localdb/tsql/AlterIndex.h"

namespace quarv::localdb::engine {

namespace {

// What asks for nothing but the table: how it lies in the storage is the storage's business.
class TableFinder : public TableAlter {
  public:
    using TableAlter::TableAlter;

  protected:
    void Change() override {}
};

void Rename(SessionState& session, const QString& name, const QString& newName) {
    const DatabaseEntry entry = session.databases.Rename(name, newName, session.database.id);
    if (entry.id == session.database.id) session.database = entry;
}

}  // namespace

void RunAlterTable(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::AlterTable&>(statement);
    using Clause = tsql::AlterTable::Clause;
    switch (node.clause) {
        case Clause::Add:
            TableAdder(node, frame).Run();
            break;
        case Clause::Drop:
            TableDropper(node, frame).Run();
            break;
        case Clause::AlterColumn:
            ColumnChanger(node, frame).Run();
            break;
        case Clause::Enable:
        case Clause::Disable:
            ConstraintSwitch(node, frame).Run();
            break;
        case Clause::Rebuild:
            TableFinder(node, frame).Run();
            break;
    }
    sink.StatementDone(StatementKind::Other, -1, false);
}

// An index lies in the storage as it should; what is asked for has to be there all the same.
void RunAlterIndex(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::AlterIndex&>(statement);
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(node.table);
    const Transactions::Reading reading(frame.Session().transactions);
    const std::optional<ObjectInfo> object = metadata.Find(node.table.schema, node.table.name);
    if (!object || object->type != u"U") {
        throw SqlError(1088, {node.table.ToText()}, node.table.line);
    }
    const TableInfo table = metadata.LoadTable(*object);
    const bool known = node.index.isEmpty() || table.FindIndex(node.index);
    if (!known) throw SqlError(2727, {node.index});
    sink.StatementDone(StatementKind::Other, -1, false);
}

// The options of SET are those that the database has, so that only the database has to be there.
void RunAlterDatabase(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::AlterDatabase&>(statement);
    SessionState& session = frame.Session();
    if (session.transactions.Count() > 0) throw SqlError(226, {QStringLiteral("ALTER DATABASE")});
    const QString name = node.name.isEmpty() ? session.database.name : node.name;
    try {
        if (!session.databases.Find(name)) throw SqlError(5011, {name});
        if (!node.newName.isEmpty()) Rename(session, name, node.newName);
    } catch (const SqlError& error) {
        if (error.Number() != 5011 && error.Number() != 5030) throw;
        throw ErrorSummary(SqlError(5069)).After(error);
    }
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
