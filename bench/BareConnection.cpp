#include "BareConnection.h"

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace quarv::bench {

namespace {

void CheckHandle(SQLRETURN code, SQLSMALLINT kind, SQLHANDLE handle, const char* what) {
    if (SQL_SUCCEEDED(code)) return;
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 512> message{};
    SQLGetDiagRec(kind, handle, 1, state.data(), nullptr, message.data(), message.size(), nullptr);
    throw std::runtime_error(std::string(what) + ": " +
                             reinterpret_cast<const char*>(message.data()));
}

BareConnection::Binding BindingOfType(SQLSMALLINT sqlType, SQLULEN size) {
    switch (sqlType) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
            return {SQL_C_SBIGINT, 8};
        case SQL_REAL:
        case SQL_FLOAT:
        case SQL_DOUBLE:
            return {SQL_C_DOUBLE, 8};
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            return {SQL_C_CHAR, 64};
        case SQL_GUID:
            return {SQL_C_GUID, sizeof(SQLGUID)};
        case SQL_TYPE_DATE:
            return {SQL_C_TYPE_DATE, sizeof(SQL_DATE_STRUCT)};
        case SQL_TYPE_TIMESTAMP:
            return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
        default:
            return {SQL_C_WCHAR, static_cast<SQLLEN>(size + 1) * 2};
    }
}

struct Cell {
    std::vector<char> bytes;
    SQLLEN length = 0;
};

using Cells = std::vector<Cell>;  // as many as columns: bound, so it must not grow

int ColumnsOf(SQLHSTMT statement) {
    SQLSMALLINT count = 0;
    BareConnection::Check(SQLNumResultCols(statement, &count), statement, "SQLNumResultCols");
    return count;
}

void Bind(SQLHSTMT statement, SQLUSMALLINT column, BareConnection::Binding binding, Cell& cell) {
    cell.bytes.resize(static_cast<std::size_t>(binding.width));
    BareConnection::Check(
        SQLBindCol(statement, column, binding.type, cell.bytes.data(), binding.width, &cell.length),
        statement, "SQLBindCol");
}

void RunToEnd(SQLHSTMT statement, SQLRETURN code) {
    while (SQL_SUCCEEDED(code)) code = SQLMoreResults(statement);
    // "No data" is a statement that touched no row.
    if (code != SQL_NO_DATA) BareConnection::Check(code, statement, "SQLExecDirect");
}

int FetchAll(SQLHSTMT statement) {
    int rows = 0;
    SQLRETURN code = SQL_SUCCESS;
    while (SQL_SUCCEEDED(code = SQLFetch(statement))) ++rows;
    if (code != SQL_NO_DATA) BareConnection::Check(code, statement, "SQLFetch");
    return rows;
}

}  // namespace

void BareConnection::Check(SQLRETURN code, SQLHSTMT statement, const char* what) {
    CheckHandle(code, SQL_HANDLE_STMT, statement, what);
}

BareConnection::Binding BareConnection::BindingOf(SQLHSTMT statement, SQLUSMALLINT column) {
    std::array<SQLCHAR, 256> name{};
    SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    Check(SQLDescribeCol(statement, column, name.data(), name.size(), &length, &type, &size,
                         &digits, &nullable),
          statement, "SQLDescribeCol");
    return BindingOfType(type, size);
}

BareConnection::BareConnection(const QByteArray& connectionString) {
    CheckHandle(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_), SQL_HANDLE_ENV,
                nullptr, "SQLAllocHandle");
    CheckHandle(SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION,
                              reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0),
                SQL_HANDLE_ENV, environment_, "SQLSetEnvAttr");
    CheckHandle(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_), SQL_HANDLE_ENV,
                environment_, "SQLAllocHandle");
    QByteArray text = connectionString;
    CheckHandle(SQLDriverConnect(connection_, nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                                 SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
                SQL_HANDLE_DBC, connection_, "SQLDriverConnect");
}

BareConnection::~BareConnection() {
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

void BareConnection::Execute(const QByteArray& sql) {
    QByteArray text = sql;
    WithStatement([&text](SQLHSTMT statement) {
        RunToEnd(statement,
                 SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS));
    });
}

void BareConnection::ExecuteUtf16(const QString& sql) {
    WithStatement([&sql](SQLHSTMT statement) {
        auto* text = reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(sql.utf16()));
        RunToEnd(statement, SQLExecDirectW(statement, text, static_cast<SQLINTEGER>(sql.size())));
    });
}

int BareConnection::Loop(const QByteArray& query) {
    QByteArray text = query;
    int rows = 0;
    WithStatement([&](SQLHSTMT statement) {
        Check(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), statement,
              "SQLExecDirect");
        Cells cells(static_cast<std::size_t>(ColumnsOf(statement)));
        SQLUSMALLINT column = 0;
        for (Cell& cell : cells) {
            ++column;
            Bind(statement, column, BindingOf(statement, column), cell);
        }
        rows = FetchAll(statement);
    });
    return rows;
}

int BareConnection::Count(const std::function<SQLRETURN(SQLHSTMT)>& catalogueCall) {
    int rows = 0;
    WithStatement([&](SQLHSTMT statement) {
        Check(catalogueCall(statement), statement, "the catalogue call");
        Cells cells(static_cast<std::size_t>(ColumnsOf(statement)));
        SQLUSMALLINT column = 0;
        for (Cell& cell : cells) Bind(statement, ++column, {SQL_C_WCHAR, 512}, cell);
        rows = FetchAll(statement);
    });
    return rows;
}

SQLHSTMT BareConnection::MakeStatement() {
    SQLHSTMT statement = nullptr;
    CheckHandle(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement), SQL_HANDLE_DBC,
                connection_, "SQLAllocHandle");
    return statement;
}

void BareConnection::WithStatement(const std::function<void(SQLHSTMT)>& use) {
    SQLHSTMT statement = MakeStatement();
    try {
        use(statement);
    } catch (...) {
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        throw;
    }
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
}

QByteArray BareString(int port, const char* database) {
    return "Driver={FreeTDS};Server=127.0.0.1;Port=" + QByteArray::number(port) +
           ";UID=bench;PWD=bench;Database=" + database + ";TDS_Version=7.4;ClientCharset=UTF-8;";
}

}  // namespace quarv::bench
