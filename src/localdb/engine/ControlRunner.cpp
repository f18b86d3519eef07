// StatementRunner's part that chooses what runs next: IF, WHILE, RETURN, TRY and jumps.
#include <algorithm>

#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/tsql/ControlFlow.h"
#include "localdb/tsql/Jumps.h"
#include "localdb/tsql/Select.h"
#include "localdb/tsql/Transaction.h"
#include "localdb/tsql/TryCatch.h"

namespace quarv::localdb::engine {

namespace {

// A TRY block of a frame runs for as long as this lives.
class Trying {
  public:
    explicit Trying(Frame& frame) : frame_(frame) {
        ++frame_.tries;
        ++frame_.Session().tries;
    }
    ~Trying() {
        --frame_.tries;
        --frame_.Session().tries;
    }
    Trying(const Trying&) = delete;
    Trying& operator=(const Trying&) = delete;

  private:
    Frame& frame_;
};

// A CATCH block runs: its functions tell of this message.
class Catching {
  public:
    Catching(SessionState& session, const Message& message)
        : session_(session), before_(session.caught) {
        session_.caught = &message;
        session_.error = message.number;
    }
    ~Catching() { session_.caught = before_; }
    Catching(const Catching&) = delete;
    Catching& operator=(const Catching&) = delete;

  private:
    SessionState& session_;
    const Message* before_;
};

// "SET IMPLICIT_TRANSACTIONS": what begins a transaction where none is open.
bool BeginsTransaction(const tsql::Statement& statement) {
    using tsql::StatementType;
    switch (statement.type) {
        case StatementType::AlterTable:
        case StatementType::CreateIndex:
        case StatementType::CreateProcedure:
        case StatementType::CreateTable:
        case StatementType::CreateView:
        case StatementType::Delete:
        case StatementType::DropObject:
        case StatementType::Insert:
        case StatementType::Schema:
        case StatementType::Truncate:
        case StatementType::Type:
        case StatementType::Update:
            return true;
        case StatementType::Select: {
            const tsql::Query& query = *static_cast<const tsql::Select&>(statement).query;
            return query.into || !query.from.empty() || !query.arms.empty();
        }
        case StatementType::Transaction:
            return static_cast<const tsql::Transaction&>(statement).verb ==
                   tsql::TransactionVerb::Begin;
        default:
            return false;
    }
}

}  // namespace

void StatementRunner::BeginImplicitly(const tsql::Statement& statement) {
    Transactions& transactions = frame_.Session().transactions;
    if (transactions.Count() == 0 && BeginsTransaction(statement)) transactions.Begin({}, sink_);
}

bool StatementRunner::LeadsTo(const tsql::Statement& statement) const {
    return jump_ &&
           std::find(jump_->path.begin(), jump_->path.end(), &statement) != jump_->path.end();
}

// The statement's place that the jump goes to or into; behind the last one where it is elsewhere.
size_t StatementRunner::PlaceOfJump(const tsql::StatementList& statements) const {
    const auto place =
        std::find_if(statements.begin(), statements.end(),
                     [this](const tsql::StatementPtr& statement) { return LeadsTo(*statement); });
    return static_cast<size_t>(place - statements.begin());
}

void StatementRunner::Pass(const tsql::Statement& statement) {
    switch (statement.type) {
        case tsql::StatementType::Declare:
            return DeclareOnly(statement, frame_);
        case tsql::StatementType::Block:
            for (const auto& part : static_cast<const tsql::Block&>(statement).statements) {
                Pass(*part);
            }
            return;
        case tsql::StatementType::If: {
            const auto& node = static_cast<const tsql::If&>(statement);
            Pass(*node.then);
            if (node.otherwise) Pass(*node.otherwise);
            return;
        }
        case tsql::StatementType::Try:
            Pass(static_cast<const tsql::TryCatch&>(statement).body);
            return Pass(static_cast<const tsql::TryCatch&>(statement).handler);
        case tsql::StatementType::While:
            return Pass(*static_cast<const tsql::While&>(statement).body);
        default:
            return;
    }
}

// PlaceOfJump; what the jump leaves out from `from` on is passed.
size_t StatementRunner::PassToJump(const tsql::StatementList& statements, size_t from) {
    const size_t place = PlaceOfJump(statements);
    if (place == statements.size()) return place;
    for (size_t i = from; i < place; ++i) Pass(*statements[i]);
    return place;
}

// The condition is a statement of its own to @@ERROR and @@ROWCOUNT.
bool StatementRunner::Decide(const tsql::Expression& condition) {
    const bool holds = frame_.Decide(condition);
    frame_.Session().error = 0;
    frame_.Session().rowCount = 0;
    return holds;
}

Flow StatementRunner::RunIf(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::If&>(statement);
    const bool first = jump_ ? LeadsTo(*node.then) : Decide(*node.condition);
    if (first) {
        const Flow flow = RunOne(*node.then);
        if (node.otherwise) Pass(*node.otherwise);
        return flow;
    }
    Pass(*node.then);
    return node.otherwise ? RunOne(*node.otherwise) : Flow::Next;
}

Flow StatementRunner::RunWhile(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::While&>(statement);
    while (LeadsTo(*node.body) || Decide(*node.condition)) {
        const Flow flow = RunOne(*node.body);
        if (flow == Flow::Break) break;
        if (flow == Flow::Return) return flow;
        // Inside the body the loop finds the way by itself.
        if (flow == Flow::Jump && !LeadsTo(*node.body)) return flow;
        if (sink_.Cancelled()) throw Cancelled();
    }
    Pass(*node.body);
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

Flow StatementRunner::RunTry(const tsql::Statement& statement) {
    const auto& node = static_cast<const tsql::TryCatch&>(statement);
    Message message;
    try {
        const Trying trying(frame_);
        const Flow flow = RunAll(node.body.statements);
        Pass(node.handler);
        return flow;
    } catch (const CaughtError& error) {
        if (error.unseenBy == &frame_) throw;
        message = error.message;
    }
    Pass(node.body);
    const Catching catching(frame_.Session(), message);
    return RunAll(node.handler.statements);
}

}  // namespace quarv::localdb::engine
