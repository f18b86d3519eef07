#include "platform/ado/odbc/OdbcCommand.h"

#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/ado/odbc/Diagnostics.h"
#include "platform/ado/odbc/LiveResult.h"
#include "platform/ado/odbc/OdbcSession.h"
#include "platform/ado/odbc/SchemaResult.h"
#include "platform/ado/odbc/StoredResult.h"

namespace quarv::ado::odbc {

namespace {

// A name as the catalogue calls take it. They count in 16 bits; what is cut was no table's name.
class NameArgument {
  public:
    explicit NameArgument(QString name)
        : name_(std::move(name)),
          length_(static_cast<SQLSMALLINT>(
              std::min<qsizetype>(name_.size(), std::numeric_limits<SQLSMALLINT>::max()))) {}

    // Null, which asks for everything, where there is no name.
    SQLWCHAR* Text() const {
        if (length_ == 0) return nullptr;
        return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(name_.utf16()));
    }
    SQLSMALLINT Length() const { return length_; }

  private:
    QString name_;
    SQLSMALLINT length_;
};

// A pattern that fits the name. Drivers and servers differ in how a wildcard is made to stand for
// itself; any one character fits it everywhere.
NameArgument PatternFor(QString name) {
    for (QChar& each : name)
        if (QStringView(u"%[]\\").contains(each)) each = u'_';
    return NameArgument(std::move(name));
}

}  // namespace

OdbcCommand::OdbcCommand(std::shared_ptr<OdbcSession> session, int timeout)
    : session_(std::move(session)), statement_(session_->Handle()) {
    SQLSetStmtAttr(statement_.get(), SQL_ATTR_QUERY_TIMEOUT,
                   reinterpret_cast<SQLPOINTER>(static_cast<quintptr>(timeout)), SQL_IS_UINTEGER);
}

OdbcCommand::~OdbcCommand() {
    Abandon();
}

std::shared_ptr<OdbcCommand> OdbcCommand::Run(std::shared_ptr<OdbcSession> session,
                                              const QString& sql, int timeout) {
    session->Free();
    std::shared_ptr<OdbcCommand> command(new OdbcCommand(session, timeout));
    // The driver manager takes the text without changing it.
    auto* text = reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(sql.utf16()));
    command->Begin(
        SQLExecDirectW(command->statement_.get(), text, static_cast<SQLINTEGER>(sql.size())));
    session->SetBusy(command);
    return command;
}

std::shared_ptr<OdbcCommand> OdbcCommand::RunSchema(std::shared_ptr<OdbcSession> session,
                                                    Schema schema, const TableName& table,
                                                    int timeout) {
    session->Free();
    std::shared_ptr<OdbcCommand> command(new OdbcCommand(session, timeout));
    command->schema_ = schema;
    command->Begin(command->AskFor(schema, table));
    session->SetBusy(command);
    return command;
}

SQLRETURN OdbcCommand::AskFor(Schema schema, const TableName& table) {
    const SQLHSTMT statement = statement_.get();
    const NameArgument owner(table.schema);
    const NameArgument name(table.name);
    const NameArgument like = PatternFor(table.name);
    SQLWCHAR all[] = {'%', 0};
    SQLWCHAR none[] = {0};
    switch (schema) {
        case Schema::Catalogs:
            return SQLTablesW(statement, all, SQL_NTS, none, SQL_NTS, none, SQL_NTS, none, SQL_NTS);
        case Schema::Tables:
            return SQLTablesW(statement, nullptr, 0, nullptr, 0, like.Text(), like.Length(),
                              nullptr, 0);
        case Schema::Procedures:
            return SQLProceduresW(statement, nullptr, 0, nullptr, 0, nullptr, 0);
        case Schema::Indexes:
            return SQLStatisticsW(statement, nullptr, 0, owner.Text(), owner.Length(), name.Text(),
                                  name.Length(), SQL_INDEX_ALL, SQL_QUICK);
        case Schema::PrimaryKeys:
            return SQLPrimaryKeysW(statement, nullptr, 0, owner.Text(), owner.Length(), name.Text(),
                                   name.Length());
    }
    return SQL_ERROR;
}

void OdbcCommand::Begin(SQLRETURN executed) {
    // A statement that says nothing about rows, as most definitions do, answers SQL_NO_DATA.
    if (!SQL_SUCCEEDED(executed) && executed != SQL_NO_DATA) {
        const DataError error = session_->StatementError(statement_.get());
        RunToEnd();
        throw error;
    }
    current_ = LiveRows();
}

std::unique_ptr<Result> OdbcCommand::LiveRows() {
    SQLSMALLINT columns = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(statement_.get(), &columns)))
        throw session_->StatementError(statement_.get());
    onRow_ = false;
    rowsLeft_ = columns > 0;
    if (!rowsLeft_) return nullptr;
    auto rows = std::make_unique<LiveResult>(*session_, statement_.get(), columns);
    if (!schema_) return rows;
    return std::make_unique<SchemaResult>(*schema_, std::move(rows));
}

// The server runs a batch on behind a failed statement, but ending the statement early would cancel
// the rest of it there.
void OdbcCommand::RunToEnd() {
    for (;;) {
        const SQLRETURN rc = SQLMoreResults(statement_.get());
        if (SQL_SUCCEEDED(rc)) continue;
        if (rc != SQL_ERROR || session_->IsDead()) break;
        if (Diagnostics(SQL_HANDLE_STMT, statement_.get()).HasState("HYT00")) break;
    }
    statement_.Reset();
}

bool OdbcCommand::IsClosed() const {
    return session_->IsClosed();
}

bool OdbcCommand::Fetch() {
    onRow_ = false;
    try {
        onRow_ = current_->Fetch();
    } catch (const DataError&) {
        rowsLeft_ = false;
        if (session_->IsDead()) EndLive();
        throw;
    }
    rowsLeft_ = rowsLeft_ && onRow_;
    return onRow_;
}

bool OdbcCommand::Advance() {
    if (statement_) return AdvanceLive();
    current_.reset();
    if (stored_.empty()) return false;
    Stored next = std::move(stored_.front());
    stored_.pop_front();
    if (next.error) throw DataError(*next.error);
    current_ = std::move(next.rows);
    onRow_ = false;
    return true;
}

// The driver shows a result whose rows were not all read a second time, as one without rows.
void OdbcCommand::SkipRows() {
    current_.reset();
    if (!std::exchange(rowsLeft_, false)) return;
    SQLRETURN rc = SQL_SUCCESS;
    while (SQL_SUCCEEDED(rc)) rc = SQLFetch(statement_.get());
    if (rc != SQL_NO_DATA) Raise();
}

bool OdbcCommand::AdvanceLive() {
    SkipRows();
    const SQLRETURN rc = SQLMoreResults(statement_.get());
    // The loss that a server announced is no error of its own.
    if (rc == SQL_NO_DATA || session_->IsDeadAsSaid()) {
        EndLive();
        return false;
    }
    if (SQL_SUCCEEDED(rc)) {
        current_ = LiveRows();
        return true;
    }
    Raise();
}

void OdbcCommand::Raise() {
    const DataError error = session_->StatementError(statement_.get());
    // On a dead connection the driver would report the same error for ever.
    if (session_->IsDead()) EndLive();
    throw error;
}

void OdbcCommand::EndLive() {
    current_.reset();
    statement_.Reset();
}

void OdbcCommand::Abandon() {
    stored_.clear();
    EndLive();
}

void OdbcCommand::ReadAhead() {
    if (!statement_) return;
    std::unique_ptr<Result> first;
    const bool onRow = onRow_;
    if (current_) first = std::make_unique<StoredResult>(*current_, onRow);
    rowsLeft_ = false;
    for (bool more = true; more;) {
        Stored next;
        try {
            more = AdvanceLive();
            if (current_) next.rows = std::make_unique<StoredResult>(*current_, false);
            rowsLeft_ = false;
        } catch (const DataError& error) {
            next.error = error;
            more = static_cast<bool>(statement_);
        }
        if (more || next.error) stored_.push_back(std::move(next));
    }
    EndLive();
    current_ = std::move(first);
    onRow_ = onRow;
}

}  // namespace quarv::ado::odbc
