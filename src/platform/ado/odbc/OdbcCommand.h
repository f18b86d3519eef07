// OdbcCommand: one executed statement text and its results, walked one after another; shared by the
// record sets that show them. Its results are live until the connection is needed for another
// command; then what is left of them is read into memory.
#pragma once

#include <QString>
#include <deque>
#include <memory>
#include <optional>

#include "base/DataError.h"
#include "platform/ado/Schema.h"
#include "platform/ado/odbc/Handle.h"
#include "platform/ado/odbc/Result.h"

namespace quarv::ado::odbc {

class OdbcSession;

class OdbcCommand : public std::enable_shared_from_this<OdbcCommand> {
  public:
    // Runs `sql` with a time limit in seconds (0: none); stands at the first result. Raises
    // DataError, after the rest of the batch has run to its end.
    static std::shared_ptr<OdbcCommand> Run(std::shared_ptr<OdbcSession> session,
                                            const QString& sql, int timeout);
    static std::shared_ptr<OdbcCommand> RunSchema(std::shared_ptr<OdbcSession> session,
                                                  Schema schema, const TableName& table,
                                                  int timeout);
    ~OdbcCommand();

    // The connection was closed.
    bool IsClosed() const;
    // The current result; null where it has no rows, or none is left.
    Result* Current() const { return current_.get(); }
    // Steps to the current result's next row; false past the last.
    bool Fetch();
    // Steps to the next result: false when none is left. Raises each later statement's error once;
    // another call goes on behind it.
    bool Advance();
    // Gives up everything that is left.
    void Abandon();
    // Reads everything that is left into memory and frees the connection.
    void ReadAhead();

  private:
    // A result that was read ahead: rows, none, or an error in its place.
    struct Stored {
        std::unique_ptr<Result> rows;
        std::optional<DataError> error;
    };

    OdbcCommand(std::shared_ptr<OdbcSession> session, int timeout);
    SQLRETURN AskFor(Schema schema, const TableName& table);
    void Begin(SQLRETURN executed);
    std::unique_ptr<Result> LiveRows();
    void RunToEnd();
    void SkipRows();
    bool AdvanceLive();
    void EndLive();
    [[noreturn]] void Raise();

    std::shared_ptr<OdbcSession> session_;
    StatementHandle statement_;  // empty once nothing live is left
    std::optional<Schema> schema_;
    std::unique_ptr<Result> current_;
    bool onRow_ = false;
    bool rowsLeft_ = false;  // the live result was not read to its end
    std::deque<Stored> stored_;
};

}  // namespace quarv::ado::odbc
