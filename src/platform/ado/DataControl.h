// DataControl: runs a record source on a connection of its own and keeps the rows that were read.
// Owned by the window that shows them; it knows no widget and no driver.
#pragma once

#include <deque>

#include "base/DataError.h"
#include "base/RowSource.h"
#include "platform/ado/Connection.h"
#include "platform/ado/RowStore.h"

namespace quarv::ado {

class DataControl : public RowSource {
  public:
    explicit DataControl(ConnectionFactory factory) : factory_(std::move(factory)) {}

    // Both count from the next Refresh on.
    const QString& ConnectionString() const { return connectionString_; }
    void SetConnectionString(const QString& text) { connectionString_ = text; }
    const QString& RecordSource() const { return recordSource_; }
    void SetRecordSource(const QString& sql) { recordSource_ = sql; }

    // Runs the record source. Its result is the first one of the batch that has columns, empty
    // where there is none; an empty text gives that too and sends nothing. Raises DataError where
    // the connection, a statement before the result or its first row fails: the earlier result then
    // stays as it was, the rest of the batch is run, and its errors are described too; behind a
    // failure of the very first statement the driver tells of none. A lost connection is not
    // noticed before it is used: one Refresh raises it, the next one connects.
    void Refresh();
    // Gives the result and the connection up, whatever transaction is open there.
    void Close();

    const QStringList& Fields() const override { return result_.fields; }
    int ColumnCount() const { return result_.rows.ColumnCount(); }
    qint64 RowCount() const override { return result_.rows.RowCount(); }
    bool AtEnd() const override { return !result_.records && result_.errors.empty(); }
    // At the end the rest of the batch is run. Raises DataError where a row or the rest fails. A
    // row of which a value cannot be read is left out; the next call goes on behind it.
    void ReadTo(qint64 row) override;
    Value ValueAt(qint64 row, int column) const override {
        return result_.rows.ValueAt(row, column);
    }
    CellStart StartOf(qint64 row, int column, qint64 most) const override {
        return result_.rows.StartOf(row, column, most);
    }

  private:
    struct Result {
        QStringList fields;
        RowStore rows;
        RecordsetPtr records;          // empty once its batch was run to the end
        std::deque<DataError> errors;  // met and not yet raised
    };

    bool MayReuseConnection() const;
    ConnectionPtr Connect() const;
    // Raises DataError, with the batch run to its end.
    Result Run(Connection& connection) const;
    // Puts a result that succeeded in the place of the earlier one.
    void Show(ConnectionPtr connection, Result result);
    void CloseConnection();
    void ReadRow();
    void AppendRow();
    void RunRest();

    ConnectionFactory factory_;
    QString connectionString_;
    QString recordSource_;
    ConnectionPtr connection_;  // that of the result, or idle; closed where it was lost
    Result result_;
};

}  // namespace quarv::ado
