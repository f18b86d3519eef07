// ProcedureCaller: finds the procedure that a name means, gives its parameters their values and
// runs it: one of the database's own, one of the system's, or a text by sp_executesql.
#pragma once

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/tsql/CreateProcedure.h"

namespace quarv::localdb::engine {

struct CallArgument {
    QString name;  // with its "@", or empty: by position
    SqlType type;
    OwnedValue value;
    bool isDefault = false;  // the parameter's own default is asked for
    bool output = false;
    bool changed = false;  // `value` is what came back
};

class ProcedureCaller {
  public:
    static constexpr int MaxNesting = 32;

    ProcedureCaller(Frame& caller, ResultSink& sink) : caller_(caller), sink_(sink) {}

    // Gives the return status, which was sent. Output arguments hold what came back. Raises
    // SqlError 2812, 201, 217, 8144 and their like.
    int Call(const tsql::ObjectName& name, std::vector<CallArgument>& arguments);
    // Runs a text as a batch inside the running one.
    void RunText(const QString& text);

  private:
    struct Parameter {
        QString name;
        SqlType type;
        bool output = false;
        bool required = true;
        OwnedValue defaultValue;
    };
    class Nested;
    class Called;

    int CallStored(const ObjectInfo& object, const DatabaseEntry& database,
                   std::vector<CallArgument>& arguments);
    int CallSystem(const SystemProcedure& procedure, const DatabaseEntry& database,
                   std::vector<CallArgument>& arguments);
    // The procedures that run a text of the client's: sp_executesql, sp_prepare and their like.
    using TextProcedure = int (ProcedureCaller::*)(std::vector<CallArgument>&);
    static TextProcedure FindTextProcedure(const QString& name);
    int ExecuteSql(std::vector<CallArgument>& arguments);
    int Prepare(std::vector<CallArgument>& arguments);
    int PrepareAndExecute(std::vector<CallArgument>& arguments);
    int ExecutePrepared(std::vector<CallArgument>& arguments);
    int Unprepare(std::vector<CallArgument>& arguments);
    // The procedures that change the catalogue, in MaintenanceProcedures.cpp.
    int Rename(std::vector<CallArgument>& arguments);
    int RefreshView(std::vector<CallArgument>& arguments);
    int Recompile(std::vector<CallArgument>& arguments);
    int AddType(std::vector<CallArgument>& arguments);
    int DropType(std::vector<CallArgument>& arguments);
    int RunTypeText(const QString& text, const QString& procedure);
    std::vector<QString> TextArguments(const std::vector<Parameter>& parameters,
                                       const std::vector<CallArgument>& arguments,
                                       const QString& procedure);
    void Tell(int number, const QStringList& inserts);
    // An object of the database that the metadata are of, by a name in one text.
    static std::optional<ObjectInfo> FindHere(Metadata& metadata, const QString& text);
    int64_t KeepPrepared(std::vector<CallArgument>& arguments);
    // The statement whose handle is the first argument. Raises SqlError 8114 and 8179.
    // The handle that the first argument names. Raises SqlError 8179.
    int64_t FindPrepared(const std::vector<CallArgument>& arguments, const QString& procedure);
    void Describe(const PreparedText& prepared, const tsql::StatementList& body);
    std::vector<Parameter> ReadDeclarations(const QString& text);
    // Runs the text with the arguments from `first` on.
    int RunPrepared(const PreparedText& prepared, std::vector<CallArgument>& arguments,
                    size_t first, const QString& procedure);
    std::vector<Parameter> LoadParameters(const ObjectInfo& object, const DatabaseEntry& database);
    // By parameter: the index of its argument; nothing where it was left out.
    std::vector<std::optional<size_t>> Match(const std::vector<Parameter>& parameters,
                                             const std::vector<CallArgument>& arguments,
                                             const QString& procedure);
    OwnedValue ValueFor(const Parameter& parameter, const CallArgument* argument,
                        const QString& procedure);
    void RunBody(Frame& frame, const tsql::StatementList& body,
                 const std::vector<Parameter>& parameters, std::vector<CallArgument>& arguments,
                 const QString& procedure);

    Frame& caller_;
    ResultSink& sink_;
};

// One level of calls. What a procedure sets of the options ends with it.
class ProcedureCaller::Nested {
  public:
    explicit Nested(SessionState& session) : session_(session), options_(session.options) {
        if (session.nestLevel >= MaxNesting) throw SqlError(217, {QString::number(MaxNesting)});
        ++session.nestLevel;
    }
    ~Nested() {
        session_.temporaries.EndLevel(session_.nestLevel);
        --session_.nestLevel;
        session_.RestoreOptions(options_);
    }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

  private:
    SessionState& session_;
    SessionOptions options_;
};

// A procedure that the sink was told of: it returns, or an error leaves it.
class ProcedureCaller::Called {
  public:
    explicit Called(ResultSink& sink) : sink_(sink) { sink_.ProcedureBegins(); }
    ~Called() {
        if (!returned_) sink_.ProcedureAborted();
    }
    int Return(int status) {
        returned_ = true;
        sink_.ReturnStatus(status);
        return status;
    }
    Called(const Called&) = delete;
    Called& operator=(const Called&) = delete;

  private:
    ResultSink& sink_;
    bool returned_ = false;
};

}  // namespace quarv::localdb::engine
