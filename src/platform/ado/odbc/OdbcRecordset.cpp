#include "platform/ado/odbc/OdbcRecordset.h"

#include <cstring>

#include "platform/ado/DataErrors.h"

namespace quarv::ado::odbc {

namespace {

// No longer text is kept for the next row.
constexpr qint64 KeptBytes = 128;

}  // namespace

OdbcRecordset::OdbcRecordset(std::shared_ptr<OdbcCommand> command) : command_(std::move(command)) {
    if (!command_ || !command_->Current()) return;
    open_ = true;
    const std::vector<Column>& columns = command_->Current()->Columns();
    fields_.reserve(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) fields_.emplace_back(*this, columns[i], i);
}

OdbcRecordset::~OdbcRecordset() = default;

ObjectState OdbcRecordset::State() const {
    return open_ && !command_->IsClosed() ? adStateOpen : adStateClosed;
}

bool OdbcRecordset::EOF() const {
    RequireOpen();
    FetchIfNeeded();
    return position_ == Position::AtEnd;
}

void OdbcRecordset::MoveNext() {
    RequireRow();
    position_ = Position::BeforeRow;
}

void OdbcRecordset::WriteRow(CellSink& sink) const {
    RequireRow();
    Result& result = *command_->Current();
    const std::vector<Column>& columns = result.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) WriteCell(columns[i], result.Read(i), sink);
}

RecordsetPtr OdbcRecordset::NextRecordset() {
    if (handedOn_) throw MakeDataError(DataErrorCode::ObjectClosed);
    if (command_ && command_->IsClosed()) throw MakeDataError(DataErrorCode::InvalidConnection);
    open_ = false;
    if (!command_ || !command_->Advance()) return nullptr;
    handedOn_ = true;
    return std::make_shared<OdbcRecordset>(std::move(command_));
}

void OdbcRecordset::Close() {
    RequireOpen();
    open_ = false;
    handedOn_ = true;
    command_.reset();
}

int OdbcRecordset::Count() const {
    return State() == adStateOpen ? static_cast<int>(fields_.size()) : 0;
}

const Field& OdbcRecordset::operator[](int index) const {
    if (index < 0 || index >= Count()) throw MakeDataError(DataErrorCode::ItemNotFound);
    return fields_[static_cast<std::size_t>(index)];
}

const Field& OdbcRecordset::operator[](const QString& name) const {
    const int count = Count();
    for (int i = 0; i < count; ++i) {
        const OdbcField& field = fields_[static_cast<std::size_t>(i)];
        if (field.Name().compare(name, Qt::CaseInsensitive) == 0) return field;
    }
    throw MakeDataError(DataErrorCode::ItemNotFound);
}

void OdbcRecordset::RequireOpen() const {
    if (State() != adStateOpen) throw MakeDataError(DataErrorCode::ObjectClosed);
}

void OdbcRecordset::RequireRow() const {
    if (EOF()) throw MakeDataError(DataErrorCode::NoCurrentRow);
}

void OdbcRecordset::FetchIfNeeded() const {
    if (position_ != Position::BeforeRow) return;
    position_ = Position::AtEnd;  // holds where Fetch raises
    if (command_->Fetch()) position_ = Position::OnRow;
}

quarv::Value OdbcRecordset::OdbcField::Value() const {
    owner_.RequireRow();
    const Cell cell = owner_.command_->Current()->Read(index_);
    if (column_.kind != CellKind::Text) return ToValue(column_, cell);
    if (IsLast(cell)) return last_;
    quarv::Value value = ToValue(column_, cell);
    if (!cell.IsNull() && cell.length <= KeptBytes) last_ = value.Text();
    return value;
}

bool OdbcRecordset::OdbcField::IsLast(const Cell& cell) const {
    return !cell.IsNull() && !last_.isNull() && cell.length == last_.size() * 2 &&
           std::memcmp(cell.data, last_.constData(), static_cast<std::size_t>(cell.length)) == 0;
}

}  // namespace quarv::ado::odbc
