#include "platform/ado/MemoryConnection.h"

#include "platform/ado/DataErrors.h"
#include "platform/ado/MemoryRecordset.h"

namespace quarv::ado {

MemoryConnection::MemoryConnection(std::shared_ptr<MemoryScript> script)
    : script_(std::move(script)) {}

MemoryConnection::~MemoryConnection() {
    if (open_) script_->CountClose();
}

void MemoryConnection::SetConnectionString(const QString& text) {
    if (open_) throw MakeDataError(DataErrorCode::ObjectOpen);
    connectionString_ = text;
}

void MemoryConnection::Open(const QString& connectionString, const QString&, const QString&, int) {
    if (open_) throw MakeDataError(DataErrorCode::ObjectOpen);
    if (!connectionString.isEmpty()) connectionString_ = connectionString;
    script_->CountOpen(connectionString_);
    open_ = std::make_shared<bool>(true);
}

void MemoryConnection::Close() {
    RequireOpen();
    *open_ = false;
    open_.reset();
    script_->CountClose();
}

RecordsetPtr MemoryConnection::Execute(const QString& sql, int) {
    RequireOpen();
    if (sql.isEmpty()) return MemoryRecordset::First({MemoryResult::Closed()}, open_);
    return MemoryRecordset::First(script_->Run(sql), open_);
}

RecordsetPtr MemoryConnection::OpenSchema(Schema schema, const TableName& table) {
    RequireOpen();
    return MemoryRecordset::First({script_->RunSchema(schema, table)}, open_);
}

void MemoryConnection::RequireOpen() const {
    if (!open_) throw MakeDataError(DataErrorCode::ObjectClosed);
}

}  // namespace quarv::ado
