#include "localdb/engine/StatementRunner.h"

#include <algorithm>
#include <array>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/TableBuilder.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/ControlFlow.h"
#include "localdb/tsql/CreateTable.h"
#include "localdb/tsql/Declare.h"
#include "localdb/tsql/Print.h"
#include "localdb/tsql/SyntaxError.h"
#include "localdb/tsql/Transaction.h"
#include "localdb/tsql/Use.h"

namespace quarv::localdb::engine {

namespace {

using tsql::StatementType;

using Runner = void (*)(const tsql::Statement&, Frame&, ResultSink&);

Runner FindRunner(StatementType type) {
    struct Entry {
        StatementType type;
        Runner run;
    };
    static constexpr std::array<Entry, 16> Table = {{
        {StatementType::AlterDatabase, RunAlterDatabase},
        {StatementType::AlterIndex, RunAlterIndex},
        {StatementType::AlterTable, RunAlterTable},
        {StatementType::CreateDatabase, RunCreateDatabase},
        {StatementType::CreateIndex, RunCreateIndex},
        {StatementType::CreateProcedure, RunCreateProcedure},
        {StatementType::CreateTable, RunCreateTable},
        {StatementType::CreateView, RunCreateView},
        {StatementType::Delete, RunDelete},
        {StatementType::DropObject, RunDrop},
        {StatementType::Execute, RunExecute},
        {StatementType::Insert, RunInsert},
        {StatementType::Select, RunSelect},
        {StatementType::SetOption, RunSetOption},
        {StatementType::Truncate, RunTruncate},
        {StatementType::Update, RunUpdate},
    }};
    for (const Entry& entry : Table) {
        if (entry.type == type) return entry.run;
    }
    return nullptr;
}

// Errors after which nothing more of the batch runs. The first group also undoes the transaction.
constexpr std::array<int, 7> Undoing = {241, 242, 245, 248, 1205, 8114, 235};
constexpr std::array<int, 12> Aborting = {102, 137, 156, 207,  208,  209,
                                          217, 911, 945, 4104, 8120, 40517};

// A constraint could not be made: a second message says so.
bool IsConstraintFailure(int number) {
    constexpr std::array<int, 18> Numbers = {1711, 1752, 1753, 1761, 1762, 1763, 1764, 1765, 1767,
                                             1768, 1769, 1770, 1773, 1774, 1776, 1778, 1781, 1785};
    return number == 1779 || std::find(Numbers.begin(), Numbers.end(), number) != Numbers.end();
}

template <size_t N>
bool Contains(const std::array<int, N>& numbers, int number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

StatementKind KindOf(const tsql::Statement& statement) {
    switch (statement.type) {
        case StatementType::Select:
            return StatementKind::Select;
        case StatementType::Insert:
            return StatementKind::Insert;
        case StatementType::Update:
            return StatementKind::Update;
        case StatementType::Delete:
            return StatementKind::Delete;
        default:
            return StatementKind::Other;
    }
}

// Statements whose failure message 3621 follows.
bool ChangesRows(const tsql::Statement& statement) {
    return statement.type == StatementType::Insert || statement.type == StatementType::Update ||
           statement.type == StatementType::Delete;
}

}  // namespace

SqlError FromSyntaxError(const tsql::SyntaxError& error) {
    return SqlError(error.Number(), error.Inserts(), error.Line());
}

tsql::StatementList ParseBatchText(const QString& text) {
    try {
        return tsql::ParseBatch(text);
    } catch (const tsql::SyntaxError& error) {
        throw FromSyntaxError(error);
    }
}

void StatementRunner::Done(int64_t rows) {
    sink_.StatementDone(StatementKind::Other, rows, false);
}

void StatementRunner::Report(SqlError error, int line) {
    Message message = error.What();
    if (message.line == 0) message.line = line;
    message.procedure = frame_.Procedure();
    frame_.Session().error = message.number;
    sink_.Say(message);
}

Flow StatementRunner::RunAll(const tsql::StatementList& statements) {
    for (const tsql::StatementPtr& statement : statements) {
        const Flow flow = RunOne(*statement);
        if (flow != Flow::Next) return flow;
    }
    return Flow::Next;
}

// Runs a statement; what it raises becomes a message, and the next statement follows unless the
// error is of the kind that ends the batch.
Flow StatementRunner::RunOne(const tsql::Statement& statement) {
    SessionState& session = frame_.Session();
    frame_.BeginStatement();
    if (sink_.Cancelled()) throw Cancelled();
    try {
        const Flow flow = Dispatch(statement);
        const bool keeps =
            statement.type == StatementType::If || statement.type == StatementType::While ||
            statement.type == StatementType::Block || statement.type == StatementType::Execute;
        if (!keeps) session.error = 0;
        return flow;
    } catch (const SqlError& error) {
        for (const Message& cause : ErrorSummary::CausesOf(error)) {
            Report(SqlError(cause), statement.line);
        }
        Report(error, statement.line);
        if (IsConstraintFailure(error.Number())) Report(SqlError(1750), statement.line);
        session.transactions.CheckLost(sink_);
        if (ChangesRows(statement) || ErrorSummary::EndsStatement(error)) {
            Report(SqlError(3621), statement.line);
            session.error = error.Number();
        }
        session.rowCount = 0;
        sink_.StatementDone(KindOf(statement), -1, true);
        const bool undo = Contains(Undoing, error.Number()) || session.options.xactAbort;
        if (undo && session.transactions.Count() > 0) session.transactions.Rollback({}, sink_);
        if (undo || Contains(Aborting, error.Number())) throw BatchAborted();
        return Flow::Next;
    }
}

Flow StatementRunner::Dispatch(const tsql::Statement& statement) {
    switch (statement.type) {
        case StatementType::Block:
            return RunAll(static_cast<const tsql::Block&>(statement).statements);
        case StatementType::If:
            return RunIf(statement);
        case StatementType::While:
            return RunWhile(statement);
        case StatementType::LoopJump:
            return static_cast<const tsql::LoopJump&>(statement).leaves ? Flow::Break
                                                                        : Flow::Continue;
        case StatementType::Return:
            return RunReturn(statement);
        case StatementType::Declare:
            RunDeclare(statement);
            return Flow::Next;
        case StatementType::SetVariable:
            RunSetVariable(statement);
            return Flow::Next;
        case StatementType::Print:
            RunPrint(statement);
            return Flow::Next;
        case StatementType::Transaction:
            RunTransaction(statement);
            return Flow::Next;
        case StatementType::Use:
            RunUse(statement);
            return Flow::Next;
        default:
            FindRunner(statement.type)(statement, frame_, sink_);
            return Flow::Next;
    }
}

Flow StatementRunner::RunIf(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::If&>(statement);
    if (frame_.Decide(*node.condition)) return RunOne(*node.then);
    return node.otherwise ? RunOne(*node.otherwise) : Flow::Next;
}

Flow StatementRunner::RunWhile(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::While&>(statement);
    while (frame_.Decide(*node.condition)) {
        const Flow flow = RunOne(*node.body);
        if (flow == Flow::Break) break;
        if (flow == Flow::Return) return flow;
        if (sink_.Cancelled()) throw Cancelled();
    }
    return Flow::Next;
}

Flow StatementRunner::RunReturn(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::Return&>(statement);
    if (node.status) {
        if (!frame_.InProcedure()) throw SqlError(178);
        const OwnedValue status = frame_.Compute(*node.status, IntType());
        frame_.returnStatus = static_cast<int>(status.View().integer);
    }
    return Flow::Return;
}

void StatementRunner::RunDeclare(const tsql::Statement& statement) {
    VariableTable& variables = frame_.Variables();
    int ordinal = 0;
    for (const tsql::Declare::Item& item : static_cast<const tsql::Declare&>(statement).items) {
        ++ordinal;
        if (item.table) {
            DeclareTable(*item.table);
            continue;
        }
        const SqlType type = BindType(item.type, ordinal);
        if (IsOldLong(type.kind)) throw SqlError(2739);
        // A loop comes by again and again; a variable is declared once and set anew.
        std::optional<size_t> index = variables.Find(item.name);
        if (!index) index = variables.Declare(item.name, type);
        if (item.value) variables.Set(*index, frame_.Compute(*item.value, type).View());
    }
}

void StatementRunner::DeclareTable(const tsql::CreateTable& definition) {
    VariableTable& variables = frame_.Variables();
    const QString& name = definition.name.name;
    if (variables.FindTable(name)) return;
    TemporaryTables& temporaries = frame_.Session().temporaries;
    Metadata metadata(frame_.Session().store, frame_.Database());
    ObjectInfo object;
    object.schema = QStringLiteral("dbo");
    object.type = QStringLiteral("U");
    const int64_t id = temporaries.NextVariableId();
    // Its constraints are named after a number.
    object.name = u'#' + QString::number(id, 16).toUpper();
    auto table =
        std::make_shared<TableInfo>(TableBuilder(definition, frame_, metadata).Build(id, object));
    table->object.name = name;
    for (IndexInfo& index : table->indexes) index.constraintId = id;
    variables.DeclareTable(name, table);
    temporaries.MakeVariable(table);
}

void StatementRunner::RunSetVariable(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::SetVariable&>(statement);
    VariableTable& variables = frame_.Variables();
    const std::optional<size_t> index = variables.Find(node.name);
    if (!index) throw SqlError(137, {node.name});
    variables.Set(*index, frame_.Compute(*node.value, variables.At(*index).type).View());
    frame_.Session().rowCount = 1;
}

void StatementRunner::RunPrint(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::Print&>(statement);
    const SqlType type = MakeType(TypeKind::NVarChar, 4000);
    const OwnedValue text = frame_.Compute(*node.text, type);
    Message message;
    message.text = text.View().IsNull() ? QStringLiteral(" ") : FromUtf8(text.View().text);
    message.line = statement.line;
    message.procedure = frame_.Procedure();
    message.state = 1;
    sink_.Say(message);
    Done();
}

void StatementRunner::RunTransaction(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::Transaction&>(statement);
    Transactions& transactions = frame_.Session().transactions;
    switch (node.verb) {
        case tsql::TransactionVerb::Begin:
            transactions.Begin(node.name, sink_);
            break;
        case tsql::TransactionVerb::Commit:
            transactions.Commit(sink_);
            break;
        case tsql::TransactionVerb::Rollback:
            transactions.Rollback(node.name, sink_);
            break;
        case tsql::TransactionVerb::Save:
            transactions.Save(node.name);
            break;
    }
    Done();
}

void StatementRunner::RunUse(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::Use&>(statement);
    SessionState& session = frame_.Session();
    const QString before = session.database.name;
    session.ChangeDatabase(node.database);
    // The sink says so to the client (message 5701).
    sink_.DatabaseChanged(session.database.name, before);
    Done();
}

}  // namespace quarv::localdb::engine
