// Frame: one running batch or procedure: its variables, its name, and what its expressions ask the
// session. Lives as long as it runs.
#pragma once

#include "localdb/engine/BindContext.h"
#include "localdb/engine/Environment.h"
#include "localdb/engine/SessionState.h"
#include "localdb/engine/VariableTable.h"

namespace quarv::localdb::engine {

class Frame : public Environment {
  public:
    // `procedure` is empty for a batch; `database` is where its names are looked up.
    Frame(SessionState& session, QString procedure, int64_t procedureId);
    // Its table variables end with it.
    ~Frame() override;
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    SessionState& Session() { return session_; }
    VariableTable& Variables() { return variables_; }
    const QString& Procedure() const { return procedure_; }
    bool InProcedure() const { return !procedure_.isEmpty(); }
    // What EXECUTE gives: RETURN's number, else 0, or 10 less the severity of the worst error.
    int Status() const {
        return returnStatus.value_or(worstSeverity > 10 ? 10 - worstSeverity : 0);
    }
    // Where a procedure of another database runs, else the session's current database.
    const DatabaseEntry& Database() const { return home_ ? *home_ : session_.database; }
    void SetHome(const DatabaseEntry& database) { home_ = database; }

    // A new statement begins: its time is now.
    void BeginStatement();
    BindContext NewContext();
    // The value of an expression that stands alone, converted to `type`.
    OwnedValue Compute(const tsql::Expression& expression, const SqlType& type);
    // The value of an expression that is bound already.
    OwnedValue Compute(const BoundExpression& expression);
    bool Decide(const tsql::Expression& condition);

    SqlValue VariableValue(size_t index) const override;
    void AssignVariable(size_t index, const SqlValue& value) const override;
    SqlValue Ask(SystemValue what) const override;
    double Random(std::optional<int64_t> seed) const override;
    Metadata Catalog() const override;
    SqlValue ObjectId(const QString& name, const QString& type) const override;
    SqlValue ObjectName(int64_t id) const override;
    SqlValue DatabaseIdOf(const QString& name) const override;
    SqlValue DatabaseNameOf(int64_t id) const override;

    std::optional<int> returnStatus;  // where RETURN gave one
    int worstSeverity = 0;            // of the errors that were reported while it ran
    int tries = 0;                    // TRY blocks of this frame that are running
    std::optional<int64_t> scopeIdentity;

  private:
    // The statement's time, as datetime and as datetime2 stores it.
    struct Clock {
        int64_t now = 0;
        int64_t utcNow = 0;
        int64_t fullNow = 0;
        int64_t fullUtcNow = 0;
        int16_t offset = 0;  // minutes that it is ahead of UTC
    };

    // Looked at once a statement, when it is asked for: the time zone's rules cost a look at files.
    const Clock& TimeOfStatement() const;
    SqlValue Keep(const QString& text) const;
    SqlValue AskOfCatch(SystemValue what) const;
    BoundPtr BindAlone(const tsql::Expression& expression);

    SessionState& session_;
    const QString procedure_;
    const int64_t procedureId_;
    std::optional<DatabaseEntry> home_;
    mutable VariableTable variables_;  // expressions of an UPDATE assign
    mutable std::optional<Clock> clock_;
    mutable TextArena texts_;  // what Ask gave out in this statement
};

}  // namespace quarv::localdb::engine
