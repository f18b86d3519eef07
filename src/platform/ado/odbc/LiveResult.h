// LiveResult: the rows of a statement as the driver delivers them. A column that nobody reads is
// never converted: the first read of one asks the driver for that value, and from the next row on
// the driver delivers it into a buffer of ours. Owned by the command, which owns the statement.
#pragma once

#include <sql.h>

#include <QByteArray>
#include <memory>

#include "platform/ado/odbc/Result.h"

namespace quarv::ado::odbc {

class OdbcSession;

class LiveResult : public Result {
  public:
    // The statement's current result, of `columnCount` columns. Raises DataError.
    LiveResult(OdbcSession& session, SQLHSTMT statement, int columnCount);
    // Takes its buffers out of the statement.
    ~LiveResult() override;

    const std::vector<Column>& Columns() const override { return columns_; }
    bool Fetch() override;
    Cell Read(std::size_t column) override;

  private:
    // How far one column was read.
    struct Source {
        std::unique_ptr<char[]> buffer;  // of the column's width
        SQLLEN indicator = SQL_NULL_DATA;
        qint64 boundFrom = NeverBound;  // the first row that the driver delivers into `buffer`
        qint64 readRow = 0;             // the row whose value was last made available
        bool whole = true;              // that value lies in `buffer`, else in `pieces`
        QByteArray pieces;
    };
    static constexpr qint64 NeverBound = 0x7FFFFFFFFFFFFFFF;

    void ReadNow(std::size_t column);
    void ReadInto(Source& source, std::size_t column);
    void ReadPieces(Source& source, std::size_t column);
    void Bind(Source& source, std::size_t column);
    bool Truncated(const Source& source, std::size_t column) const;
    [[noreturn]] void Raise() const;

    OdbcSession& session_;
    SQLHSTMT statement_;
    std::vector<Column> columns_;
    std::vector<Source> sources_;
    qint64 row_ = 0;  // 1-based number of the current row
    bool atEnd_ = false;
    bool anyOrder_;             // the driver reads columns in any order
    std::size_t readUpTo_ = 0;  // without anyOrder_: columns of this row already read
};

}  // namespace quarv::ado::odbc
