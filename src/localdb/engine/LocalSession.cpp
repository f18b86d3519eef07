#include "localdb/engine/LocalSession.h"

#include <array>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/ProcedureCaller.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

// [MS-TDS], "Transaction Manager Request", TM_BEGIN_XACT, from 1 on.
constexpr std::array<const char*, 5> IsolationLevels = {
    "read uncommitted", "read committed", "repeatable read", "serializable", "snapshot"};

// For a statement of the server's own: what it says about itself goes nowhere.
class QuietSink final : public ResultSink {
  public:
    void BeginRows(std::span<const Column>) override {}
    void Row(std::span<const Datum>) override {}
    void StatementDone(StatementKind, int64_t, bool) override {}
    void Say(const Message&) override {}
    void DatabaseChanged(const QString&, const QString&) override {}
    void ReturnStatus(int) override {}
    bool Cancelled() override { return false; }
};

// The old long types are those of (max) as far as a value goes.
SqlType TypeFromWire(const SqlType& type) {
    if (type.kind == TypeKind::NText) return MakeType(TypeKind::NVarChar, SqlType::Max);
    if (type.kind == TypeKind::Text) return MakeType(TypeKind::VarChar, SqlType::Max);
    if (type.kind == TypeKind::Image) return MakeType(TypeKind::VarBinary, SqlType::Max);
    if (type.kind == TypeKind::Xml) return MakeType(type.kind, SqlType::Max);
    return type;
}

// A parameter's literal as a value of its own type.
CallArgument FromWire(const Argument& argument) {
    CallArgument result;
    result.name = argument.name;
    result.type = TypeFromWire(argument.type);
    result.isDefault = argument.isDefault;
    result.output = argument.output;
    if (argument.null || argument.isDefault) return result;
    const std::string text = ToUtf8(argument.text);
    TextArena arena;
    const SqlType from = MakeType(TypeKind::NVarChar, SqlType::Max);
    // The whole text stays, however short the type says it is.
    const bool isText = ClassOf(result.type) == TypeClass::Text;
    const SqlValue value = SqlValue::Text(text);
    // Bytes come as "0x" and digits.
    const int style = ClassOf(result.type) == TypeClass::Binary ? 1 : Conversion::NoStyle;
    result.value = isText ? value : Conversion::Convert(value, from, result.type, style, arena);
    return result;
}

void SendOutputs(const std::vector<CallArgument>& arguments, ResultSink& sink) {
    for (const CallArgument& argument : arguments) {
        if (!argument.changed) continue;
        sink.ReturnValue(argument.name, argument.type, ToDatum(argument.value.View()));
    }
}

}  // namespace

LocalSession::LocalSession(DatabaseList& databases, const SystemObjects& objects,
                           const QString& login, int id)
    : state_(databases, objects, login, id) {
    state_.ChangeDatabase(QStringLiteral("master"));
}

LocalSession::~LocalSession() {
    state_.transactions.Abandon();
    if (state_.database.id != 0) state_.databases.Release(state_.database.id);
}

QString LocalSession::Database() const {
    return state_.database.name;
}

int LocalSession::Id() const {
    return state_.id;
}

void LocalSession::UseDatabase(const QString& name) {
    state_.ChangeDatabase(name);
}

template <class Body>
void LocalSession::Guarded(ResultSink& sink, Body body) {
    state_.store.SetCancel([&sink] { return sink.Cancelled(); });
    state_.nestLevel = 0;
    state_.capturing = false;
    Frame frame(state_, QString(), 0);
    StatementRunner runner(frame, sink);
    try {
        body(frame, runner);
    } catch (const BatchAborted&) {
    } catch (const ScopeAborted&) {
    } catch (const Cancelled&) {
        state_.transactions.CheckLost(sink);
    } catch (const tsql::SyntaxError& error) {
        runner.Report(FromSyntaxError(error), 1);
        sink.StatementDone(StatementKind::Other, -1, true);
    } catch (const SqlError& error) {
        runner.Report(error, 1);
        sink.StatementDone(StatementKind::Other, -1, true);
    }
    state_.store.SetCancel({});
    if (!state_.transactions.Doomed()) return;
    runner.Report(SqlError(3998), 1);
    sink.StatementDone(StatementKind::Other, -1, true);
    state_.transactions.Rollback({}, sink);
}

void LocalSession::RunBatch(const QString& sql, ResultSink& sink) {
    Guarded(sink, [&sql](Frame& frame, StatementRunner& runner) {
        const RepeatedSelects::Batch batch(*frame.Session().parsed, sql);
        runner.RunScope(batch.Statements());
    });
}

void LocalSession::RunProcedure(const QString& name, const std::vector<Argument>& arguments,
                                ResultSink& sink) {
    Guarded(sink, [&](Frame& frame, StatementRunner&) {
        std::vector<CallArgument> values;
        for (const Argument& argument : arguments) values.push_back(FromWire(argument));
        ProcedureCaller caller(frame, sink);
        caller.Call(tsql::ParseProcedureName(name), values);
        SendOutputs(values, sink);
    });
}

void LocalSession::SetClient(const QString& hostName, const QString& appName) {
    state_.hostName = hostName;
    state_.appName = appName;
}

void LocalSession::SetIsolation(int level, Frame& frame) {
    if (level == 0) return;
    if (level < 0 || static_cast<size_t>(level) > IsolationLevels.size()) {
        throw SqlError(40517, {QStringLiteral("isolation level %1").arg(level)});
    }
    const QString text = QStringLiteral("set transaction isolation level ") +
                         QLatin1String(IsolationLevels[static_cast<size_t>(level) - 1]);
    QuietSink quiet;
    RunSetOption(*tsql::ParseBatch(text).front(), frame, quiet);
}

void LocalSession::BeginTransaction(ResultSink& sink, const QString& name, int isolation) {
    Guarded(sink, [&](Frame& frame, StatementRunner&) {
        SetIsolation(isolation, frame);
        state_.transactions.Begin(name, sink);
    });
}

void LocalSession::CommitTransaction(ResultSink& sink) {
    Guarded(sink, [&](Frame&, StatementRunner&) { state_.transactions.Commit(sink); });
}

void LocalSession::RollbackTransaction(ResultSink& sink, const QString& name) {
    Guarded(sink, [&](Frame&, StatementRunner&) { state_.transactions.Rollback(name, sink); });
}

void LocalSession::SaveTransaction(ResultSink& sink, const QString& name) {
    Guarded(sink, [&](Frame&, StatementRunner&) { state_.transactions.Save(name); });
}

void LocalSession::Reset(const QString& database) {
    state_.transactions.Abandon();
    state_.temporaries.Clear();
    state_.RestoreOptions(SessionOptions());
    state_.contextInfo.clear();
    state_.rowCount = 0;
    state_.error = 0;
    state_.identity.reset();
    state_.prepared.Clear();
    state_.ChangeDatabase(database);
}

}  // namespace quarv::localdb::engine
