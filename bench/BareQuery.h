// BareQuery: a query that is read with nothing but ODBC, value by value with SQLGetData, as a C
// program that knows no column beforehand does it. Its connection outlives it.
#pragma once

#include <QByteArray>
#include <vector>

#include "BareConnection.h"

namespace quarv::bench {

class BareQuery {
  public:
    // Runs `query`. All members raise std::runtime_error.
    BareQuery(BareConnection& connection, const QByteArray& query);
    ~BareQuery();
    BareQuery(const BareQuery&) = delete;
    BareQuery& operator=(const BareQuery&) = delete;

    // Reads every value of at most `most` more rows into one buffer; how many rows there were.
    int Read(int most);

  private:
    bool ReadRow();

    SQLHSTMT statement_ = nullptr;
    std::vector<SQLSMALLINT> types_;  // the C type of each column
    std::vector<char> buffer_;
};

}  // namespace quarv::bench
