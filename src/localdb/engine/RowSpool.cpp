#include "localdb/engine/RowSpool.h"

#include <sqlite3.h>

#include <string>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/StoredForm.h"

namespace quarv::localdb::engine {

RowSpool::RowSpool(std::vector<SqlType> types) : types_(std::move(types)) {
    // The empty name means a file that only this connection knows; short ones stay in memory.
    Check(sqlite3_open_v2("", &handle_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr));
    std::string columns, values;
    for (size_t i = 0; i < types_.size(); ++i) {
        columns += (i ? ", c" : "c") + std::to_string(i);
        values += i ? ", ?" : "?";
    }
    const std::string create = "PRAGMA journal_mode=OFF; BEGIN; CREATE TABLE r(" + columns + ")";
    Check(sqlite3_exec(handle_, create.c_str(), nullptr, nullptr, nullptr));
    Prepare(("INSERT INTO r VALUES (" + values + ")").c_str(), &insert_);
}

RowSpool::~RowSpool() {
    sqlite3_finalize(insert_);
    sqlite3_finalize(select_);
    sqlite3_close(handle_);
}

void RowSpool::Prepare(const char* sql, sqlite3_stmt** statement) {
    Check(sqlite3_prepare_v2(handle_, sql, -1, statement, nullptr));
}

void RowSpool::Check(int result) {
    if (result == SQLITE_OK || result == SQLITE_DONE || result == SQLITE_ROW) return;
    if (result == SQLITE_NOMEM) throw std::bad_alloc();
    throw SqlError(1105, {QString(), QStringLiteral("tempdb"), QStringLiteral("PRIMARY")});
}

void RowSpool::Append(const std::vector<OwnedValue>& row) {
    for (size_t i = 0; i < types_.size(); ++i) {
        BindStored(insert_, static_cast<int>(i) + 1, row[i].View(), types_[i]);
    }
    const int result = sqlite3_step(insert_);
    sqlite3_reset(insert_);
    Check(result);
}

bool RowSpool::Next(std::vector<OwnedValue>& row) {
    if (!select_) Prepare("SELECT * FROM r ORDER BY rowid", &select_);
    const int result = sqlite3_step(select_);
    Check(result);
    if (result != SQLITE_ROW) return false;
    row.resize(types_.size());
    for (size_t i = 0; i < types_.size(); ++i) {
        row[i] = ReadColumn(select_, static_cast<int>(i), types_[i]);
    }
    return true;
}

}  // namespace quarv::localdb::engine
