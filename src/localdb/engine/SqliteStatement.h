// SqliteStatement: one prepared statement of the storage library. Owns it, or has it on loan from
// the session's pool; movable.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"
#include "localdb/engine/StatementPool.h"

struct sqlite3_stmt;

namespace quarv::localdb::engine {

class Store;

class SqliteStatement {
  public:
    SqliteStatement() = default;
    // Raises SqlError where the storage refuses the text. With a pool the statement comes from
    // there and goes back to it, its parameters unset.
    SqliteStatement(Store& store, const std::string& sql, StatementPool* pool = nullptr);
    ~SqliteStatement();
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&& other) noexcept;

    // Parameters are 1-based; bound texts are copied.
    SqliteStatement& Bind(int index, int64_t value);
    SqliteStatement& Bind(int index, std::string_view text);
    SqliteStatement& Bind(int index, const QString& text);
    // In the storage form of the type.
    SqliteStatement& Bind(int index, const SqlValue& value, const SqlType& type);
    SqliteStatement& BindPointer(int index, void* pointer, const char* tag);

    // True where a row stands ready. Raises SqlError.
    bool Step();
    // Step until the end.
    void Run();
    void Reset();

    // Columns are 0-based and valid until the next Step.
    bool IsNull(int column) const;
    int64_t Integer(int column) const;
    std::string_view Text(int column) const;
    QString String(int column) const;
    sqlite3_stmt* Handle() const { return statement_; }

  private:
    Store* store_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
    StatementPool::Entry* loan_ = nullptr;  // nothing: its own
};

}  // namespace quarv::localdb::engine
