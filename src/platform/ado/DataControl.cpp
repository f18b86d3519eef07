#include "platform/ado/DataControl.h"

#include "platform/ado/BatchErrors.h"

namespace quarv::ado {

namespace {

bool HasColumns(const Recordset& records) {
    return records.State() == adStateOpen && records.Fields().Count() > 0;
}

}  // namespace

void DataControl::Refresh() {
    if (recordSource_.isEmpty()) {
        if (result_.records) CloseConnection();
        result_ = Result();
        return;
    }
    ConnectionPtr connection = MayReuseConnection() ? connection_ : Connect();
    connection->SetCommandTimeout(0);
    Result result = Run(*connection);
    Show(std::move(connection), std::move(result));
}

void DataControl::Close() {
    CloseConnection();
    result_ = Result();
}

void DataControl::ReadTo(qint64 row) {
    while (RowCount() <= row && result_.records && result_.errors.empty()) ReadRow();
    if (RowCount() > row || result_.errors.empty()) return;
    const DataError error = result_.errors.front();
    result_.errors.pop_front();
    throw error;
}

// Another command on a connection with unread rows would first read them all.
bool DataControl::MayReuseConnection() const {
    return connection_ && !result_.records && connection_->State() == adStateOpen &&
           connection_->ConnectionString() == connectionString_;
}

ConnectionPtr DataControl::Connect() const {
    ConnectionPtr connection = factory_();
    connection->SetConnectionString(connectionString_);
    connection->Open();
    return connection;
}

DataControl::Result DataControl::Run(Connection& connection) const {
    RecordsetPtr records;
    Result result;
    try {
        records = connection.Execute(recordSource_);
        while (records && !HasColumns(*records)) records = records->NextRecordset();
        // Many a failure shows only where the first row is made: a division by zero.
        if (records) records->EOF();
    } catch (const DataError& error) {
        if (ClosedAsLost(connection, error)) throw;
        throw WithLater(error, ErrorsOfRest(connection, records));
    }
    if (!records) return result;
    const ado::Fields& fields = records->Fields();
    result.rows = RowStore(fields.Count());
    for (int i = 0; i < fields.Count(); ++i) result.fields.append(fields[i].Name());
    result.records = std::move(records);
    return result;
}

void DataControl::Show(ConnectionPtr connection, Result result) {
    if (connection != connection_) CloseConnection();
    connection_ = std::move(connection);
    result_ = std::move(result);
}

// Closing drops what is unread; a record set that is merely let go could be read to its end.
void DataControl::CloseConnection() {
    if (connection_ && connection_->State() == adStateOpen) connection_->Close();
    connection_.reset();
}

void DataControl::ReadRow() {
    try {
        if (!result_.records->EOF()) {
            AppendRow();
            return;
        }
    } catch (const DataError& error) {
        result_.errors.push_back(error);
        if (ClosedAsLost(*connection_, error)) {
            result_.records.reset();
            return;
        }
    }
    RunRest();
}

// Leaves the record set on the next row whether or not this one could be read.
void DataControl::AppendRow() {
    try {
        result_.records->WriteRow(result_.rows);
    } catch (const DataError& error) {
        result_.rows.DropUnfinishedRow();
        if (IsLost(*connection_, error)) throw;
        result_.errors.push_back(error);
    } catch (...) {
        result_.rows.DropUnfinishedRow();
        throw;
    }
    result_.records->MoveNext();
}

void DataControl::RunRest() {
    const RecordsetPtr records = std::move(result_.records);
    for (const DataError& error : ErrorsOfRest(*connection_, records))
        result_.errors.push_back(error);
}

}  // namespace quarv::ado
