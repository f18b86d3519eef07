// SchemaResult: a catalogue call's rows under the column names of the OLE DB schema rowsets, with
// the server's own objects marked or left out. Rows stream through; nothing is copied.
#pragma once

#include <memory>

#include "platform/ado/Schema.h"
#include "platform/ado/odbc/Result.h"

namespace quarv::ado::odbc {

class SchemaResult : public Result {
  public:
    // `source` is what the catalogue call that goes with `schema` gave. Columns that the driver did
    // not deliver are null.
    SchemaResult(Schema schema, std::unique_ptr<Result> source);

    const std::vector<Column>& Columns() const override { return columns_; }
    bool Fetch() override;
    Cell Read(std::size_t column) override;

  private:
    // Which of the source's columns (0-based, by the order that ODBC lays down) holds the object's
    // schema; NoColumn where the rowset has none.
    static constexpr int NoColumn = -1;

    bool IsSystemRow() const;
    Cell TableType();
    Cell ProcedureType();

    Schema schema_;
    std::unique_ptr<Result> source_;
    std::vector<Column> columns_;
    std::vector<int> from_;  // for each column, the source's, or NoColumn
    int schemaColumn_ = NoColumn;
    qint64 number_ = 0;  // holds the bytes of a converted number
};

}  // namespace quarv::ado::odbc
