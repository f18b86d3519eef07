#include "localdb/engine/SqliteStatement.h"

#include <sqlite3.h>

#include <utility>

#include "localdb/engine/Store.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

SqliteStatement::SqliteStatement(Store& store, const std::string& sql, StatementPool* pool)
    : store_(&store) {
    if (pool && !StatementPool::Keeps(sql)) pool = nullptr;
    loan_ = pool ? pool->Lend(sql) : nullptr;
    if (loan_) {
        statement_ = loan_->statement;
        return;
    }
    const int result = sqlite3_prepare_v2(store.Handle(), sql.data(), static_cast<int>(sql.size()),
                                          &statement_, nullptr);
    if (result != SQLITE_OK) store.Raise(result);
    if (pool) loan_ = pool->Add(statement_);
}

SqliteStatement::~SqliteStatement() {
    if (loan_) {
        StatementPool::Return(*loan_);
    } else {
        sqlite3_finalize(statement_);
    }
}

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : store_(other.store_),
      statement_(std::exchange(other.statement_, nullptr)),
      loan_(std::exchange(other.loan_, nullptr)) {}

SqliteStatement& SqliteStatement::operator=(SqliteStatement&& other) noexcept {
    std::swap(store_, other.store_);
    std::swap(statement_, other.statement_);
    std::swap(loan_, other.loan_);
    return *this;
}

SqliteStatement& SqliteStatement::Bind(int index, int64_t value) {
    sqlite3_bind_int64(statement_, index, value);
    return *this;
}

SqliteStatement& SqliteStatement::Bind(int index, std::string_view text) {
    // A null pointer would bind null.
    sqlite3_bind_text64(statement_, index, text.data() ? text.data() : "", text.size(),
                        SQLITE_TRANSIENT, SQLITE_UTF8);
    return *this;
}

SqliteStatement& SqliteStatement::Bind(int index, const QString& text) {
    return Bind(index, std::string_view(ToUtf8(text)));
}

SqliteStatement& SqliteStatement::Bind(int index, const SqlValue& value, const SqlType& type) {
    BindStored(statement_, index, value, type);
    return *this;
}

SqliteStatement& SqliteStatement::BindPointer(int index, void* pointer, const char* tag) {
    sqlite3_bind_pointer(statement_, index, pointer, tag, nullptr);
    return *this;
}

bool SqliteStatement::Step() {
    const int result = sqlite3_step(statement_);
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    store_->Raise(result);
}

void SqliteStatement::Run() {
    while (Step()) {
    }
    Reset();
}

void SqliteStatement::Reset() {
    sqlite3_reset(statement_);
}

bool SqliteStatement::IsNull(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

int64_t SqliteStatement::Integer(int column) const {
    return sqlite3_column_int64(statement_, column);
}

std::string_view SqliteStatement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    const auto size = static_cast<size_t>(sqlite3_column_bytes(statement_, column));
    return text ? std::string_view(text, size) : std::string_view();
}

QString SqliteStatement::String(int column) const {
    return FromUtf8(Text(column));
}

}  // namespace quarv::localdb::engine
