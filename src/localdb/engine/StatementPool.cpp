#include "localdb/engine/StatementPool.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>

namespace quarv::localdb::engine {

bool StatementPool::Keeps(std::string_view sql) {
    constexpr std::array<std::string_view, 5> Words = {"SELECT ", "WITH ", "INSERT ", "UPDATE ",
                                                       "DELETE "};
    return sql.size() <= LongestText &&
           std::any_of(Words.begin(), Words.end(),
                       [sql](std::string_view word) { return sql.starts_with(word); });
}

StatementPool::Entry* StatementPool::Lend(std::string_view sql) {
    const auto found = byText_.find(sql);
    if (found == byText_.end() || found->second->lent) return nullptr;
    entries_.splice(entries_.begin(), entries_, found->second);
    found->second->lent = true;
    return &*found->second;
}

StatementPool::Entry* StatementPool::Add(sqlite3_stmt* statement) {
    const std::string_view text = sqlite3_sql(statement);
    if (byText_.contains(text)) return nullptr;
    const int bytes = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_MEMUSED, 0);
    entries_.push_front({statement, static_cast<size_t>(std::max(bytes, 0)), true});
    byText_.emplace(text, entries_.begin());
    bytes_ += entries_.front().bytes;
    MakeRoom();
    return &entries_.front();
}

void StatementPool::Return(Entry& entry) {
    sqlite3_reset(entry.statement);
    // Bound texts can be large.
    sqlite3_clear_bindings(entry.statement);
    entry.lent = false;
}

std::list<StatementPool::Entry>::iterator StatementPool::Remove(std::list<Entry>::iterator entry) {
    byText_.erase(sqlite3_sql(entry->statement));
    bytes_ -= entry->bytes;
    sqlite3_finalize(entry->statement);
    return entries_.erase(entry);
}

// What is lent stays; there is no more of that than statements run inside one another.
void StatementPool::MakeRoom() {
    for (auto entry = entries_.end();
         entry != entries_.begin() && (entries_.size() > Most || bytes_ > MostBytes);) {
        --entry;
        if (!entry->lent) entry = Remove(entry);
    }
}

void StatementPool::Forget(const std::string& part) {
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const std::string_view text = sqlite3_sql(entry->statement);
        const bool goes = !entry->lent && text.find(part) != std::string_view::npos;
        entry = goes ? Remove(entry) : std::next(entry);
    }
}

void StatementPool::Clear() {
    byText_.clear();
    for (const Entry& entry : entries_) sqlite3_finalize(entry.statement);
    entries_.clear();
    bytes_ = 0;
}

}  // namespace quarv::localdb::engine
