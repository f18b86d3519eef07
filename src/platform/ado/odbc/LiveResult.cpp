#include "platform/ado/odbc/LiveResult.h"

#include <sqlext.h>

#include <algorithm>

#include "platform/ado/odbc/OdbcSession.h"

namespace quarv::ado::odbc {

namespace {

constexpr qsizetype FirstPiece = 16 * 1024;
// Memory kept from one value to the next.
constexpr qsizetype KeptPieces = 1024 * 1024;

// The bytes that end a text in a buffer; they are no part of the value.
qsizetype EndMark(SQLSMALLINT cType) {
    if (cType == SQL_C_WCHAR) return 2;
    return cType == SQL_C_CHAR ? 1 : 0;
}

}  // namespace

LiveResult::LiveResult(OdbcSession& session, SQLHSTMT statement, int columnCount)
    : session_(session),
      statement_(statement),
      columns_(static_cast<std::size_t>(columnCount)),
      sources_(columns_.size()),
      anyOrder_(session.ReadsInAnyOrder()) {
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (!Column::Describe(statement_, static_cast<SQLUSMALLINT>(i + 1), columns_[i])) Raise();
}

LiveResult::~LiveResult() {
    SQLFreeStmt(statement_, SQL_UNBIND);
}

bool LiveResult::Fetch() {
    if (atEnd_) return false;
    const SQLRETURN rc = SQLFetch(statement_);
    ++row_;
    readUpTo_ = 0;
    if (SQL_SUCCEEDED(rc)) return true;
    atEnd_ = true;
    if (rc != SQL_NO_DATA) Raise();
    return false;
}

Cell LiveResult::Read(std::size_t column) {
    Source& source = sources_[column];
    if (source.readRow != row_) {
        if (row_ >= source.boundFrom && !Truncated(source, column)) {
            source.whole = true;
            source.readRow = row_;
        } else {
            ReadNow(column);
        }
    }
    if (source.indicator == SQL_NULL_DATA) return {};
    if (!source.whole) return {source.pieces.constData(), source.pieces.size()};
    return {source.buffer.get(), static_cast<qint64>(source.indicator)};
}

void LiveResult::ReadNow(std::size_t column) {
    // A driver that reads only forward gives up what lies before the column, so that is kept too.
    const std::size_t first = anyOrder_ ? column : std::min(readUpTo_, column);
    for (std::size_t i = first; i <= column; ++i) {
        Source& source = sources_[i];
        source.pieces.resize(0);  // keeps its memory for the next value
        if (source.pieces.capacity() > KeptPieces) source.pieces = QByteArray();
        if (columns_[i].bindable && source.boundFrom == NeverBound)
            ReadInto(source, i);
        else
            ReadPieces(source, i);
        source.readRow = row_;
    }
    readUpTo_ = std::max(readUpTo_, column + 1);
}

void LiveResult::ReadInto(Source& source, std::size_t column) {
    const Column& shape = columns_[column];
    if (!source.buffer) source.buffer = std::make_unique<char[]>(shape.width);
    const SQLRETURN rc = SQLGetData(statement_, static_cast<SQLUSMALLINT>(column + 1), shape.cType,
                                    source.buffer.get(), shape.width, &source.indicator);
    if (!SQL_SUCCEEDED(rc)) Raise();
    source.whole = true;
    if (Truncated(source, column)) {
        // Wider than the server described it: what came is the value's beginning.
        source.pieces.append(source.buffer.get(), shape.width - EndMark(shape.cType));
        ReadPieces(source, column);
    } else if (anyOrder_) {
        Bind(source, column);
    }
}

// Appends what the driver still has of the value to `pieces`.
void LiveResult::ReadPieces(Source& source, std::size_t column) {
    const SQLSMALLINT cType = columns_[column].cType;
    const qsizetype mark = EndMark(cType);
    QByteArray& pieces = source.pieces;
    source.whole = false;
    for (bool more = true; more;) {
        const qsizetype had = pieces.size();
        const qsizetype room = std::max(FirstPiece, had);
        pieces.resize(had + room);
        SQLLEN length = 0;
        const SQLRETURN rc = SQLGetData(statement_, static_cast<SQLUSMALLINT>(column + 1), cType,
                                        pieces.data() + had, room, &length);
        if (rc != SQL_NO_DATA && !SQL_SUCCEEDED(rc)) Raise();
        if (rc == SQL_NO_DATA) length = 0;
        if (length == SQL_NULL_DATA) {
            source.indicator = SQL_NULL_DATA;
            return;
        }
        // What is left of the value, where the driver knows it, else SQL_NO_TOTAL.
        more = length < 0 || length > room - mark;
        pieces.resize(had + (more ? room - mark : static_cast<qsizetype>(length)));
        if (more && length > 0) pieces.reserve(had + static_cast<qsizetype>(length) + mark);
    }
    source.indicator = pieces.size();
}

void LiveResult::Bind(Source& source, std::size_t column) {
    const Column& shape = columns_[column];
    const SQLRETURN rc = SQLBindCol(statement_, static_cast<SQLUSMALLINT>(column + 1), shape.cType,
                                    source.buffer.get(), shape.width, &source.indicator);
    if (SQL_SUCCEEDED(rc)) source.boundFrom = row_ + 1;
}

bool LiveResult::Truncated(const Source& source, std::size_t column) const {
    const Column& shape = columns_[column];
    return source.indicator == SQL_NO_TOTAL ||
           source.indicator > static_cast<SQLLEN>(shape.width - EndMark(shape.cType));
}

void LiveResult::Raise() const {
    throw session_.StatementError(statement_);
}

}  // namespace quarv::ado::odbc
