#include "BareQuery.h"

namespace quarv::bench {

BareQuery::BareQuery(BareConnection& connection, const QByteArray& query)
    : statement_(connection.MakeStatement()), buffer_(65536) {
    QByteArray text = query;
    try {
        BareConnection::Check(
            SQLExecDirect(statement_, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), statement_,
            "SQLExecDirect");
        SQLSMALLINT count = 0;
        BareConnection::Check(SQLNumResultCols(statement_, &count), statement_, "SQLNumResultCols");
        for (SQLUSMALLINT column = 1; column <= count; ++column)
            types_.push_back(BareConnection::BindingOf(statement_, column).type);
    } catch (...) {
        SQLFreeHandle(SQL_HANDLE_STMT, statement_);
        throw;
    }
}

BareQuery::~BareQuery() {
    SQLFreeHandle(SQL_HANDLE_STMT, statement_);
}

int BareQuery::Read(int most) {
    int rows = 0;
    while (rows < most && ReadRow()) ++rows;
    return rows;
}

bool BareQuery::ReadRow() {
    const SQLRETURN fetched = SQLFetch(statement_);
    if (fetched == SQL_NO_DATA) return false;
    BareConnection::Check(fetched, statement_, "SQLFetch");
    SQLUSMALLINT column = 0;
    for (const SQLSMALLINT type : types_) {
        SQLLEN length = 0;
        const SQLRETURN read = SQLGetData(statement_, ++column, type, buffer_.data(),
                                          static_cast<SQLLEN>(buffer_.size()), &length);
        if (!SQL_SUCCEEDED(read)) BareConnection::Check(read, statement_, "SQLGetData");
    }
    return true;
}

}  // namespace quarv::bench
