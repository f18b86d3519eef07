// PreparedCalls: the wire's procedures for prepared statements (sp_prepare, sp_execute,
// sp_prepexec, sp_unprepare). It keeps their texts by handle, for one session, and has them run by
// sp_executesql.
#pragma once

#include <QHash>
#include <optional>
#include <vector>

#include "localdb/engine/Session.h"
#include "localdb/server/ReplySink.h"

namespace quarv::localdb::server {

class PreparedCalls {
  public:
    using Arguments = std::vector<engine::Argument>;

    explicit PreparedCalls(QString serverName) : serverName_(std::move(serverName)) {}

    // Runs the call where it is one of the four. False, with nothing done, for any other name.
    bool Run(const QString& procedure, const Arguments& arguments, engine::Session& session,
             ReplySink& sink);
    // Forgets every statement.
    void Clear() { statements_.clear(); }

    // Statements that a session may hold at once.
    static constexpr qsizetype Most = 10'000;

  private:
    // What sp_executesql takes before the values: the text and, where there are any, declarations.
    using Statement = Arguments;
    using Handler = void (PreparedCalls::*)(const Arguments&, engine::Session&, ReplySink&);
    struct Entry {
        const char* name;
        Handler handler;
    };

    static const Entry* Find(const QString& procedure);
    std::optional<int32_t> Keep(const Arguments& arguments, const char* procedure, ReplySink& sink);
    void Prepare(const Arguments& arguments, engine::Session& session, ReplySink& sink);
    void Execute(const Arguments& arguments, engine::Session& session, ReplySink& sink);
    void PrepareAndExecute(const Arguments& arguments, engine::Session& session, ReplySink& sink);
    void Unprepare(const Arguments& arguments, engine::Session& session, ReplySink& sink);
    void RunStatement(const Statement& statement, const Arguments& arguments, size_t firstValue,
                      engine::Session& session, ReplySink& sink);
    std::optional<int32_t> HandleOf(const Arguments& arguments, ReplySink& sink);
    void Refuse(int number, const QStringList& inserts, ReplySink& sink);

    QString serverName_;
    QHash<int32_t, Statement> statements_;
    int32_t lastHandle_ = 0;
};

}  // namespace quarv::localdb::server
