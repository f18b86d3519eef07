// StatementPool: the storage library's prepared statements that one session keeps for the next time
// that the same text comes: queries and changes of rows, least recently used first to go. Bounded
// in number, in the length of a text and in the library's memory. Owned by the Store.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3_stmt;

namespace quarv::localdb::engine {

class StatementPool {
  public:
    static constexpr size_t Most = 64;
    static constexpr size_t LongestText = size_t{16} * 1024;  // bytes
    static constexpr size_t MostBytes = size_t{1024} * 1024;  // of all statements

    struct Entry {
        sqlite3_stmt* statement = nullptr;
        size_t bytes = 0;   // of the library's memory
        bool lent = false;  // somebody runs it
    };

    StatementPool() = default;
    ~StatementPool() { Clear(); }
    StatementPool(const StatementPool&) = delete;
    StatementPool& operator=(const StatementPool&) = delete;

    // Whether a statement of this text is worth keeping: no definition, nothing of transactions.
    static bool Keeps(std::string_view sql);

    // Lends the statement of this text. Nothing where there is none, or where it is lent.
    Entry* Lend(std::string_view sql);
    // Takes a new statement over, which counts as lent. Nothing where its text is here already;
    // the caller keeps it then.
    Entry* Add(sqlite3_stmt* statement);
    // Takes back what was lent.
    static void Return(Entry& entry);

    // Lets go of all whose text contains `part`; none of them may be lent.
    void Forget(const std::string& part);
    void Clear();

  private:
    void MakeRoom();
    std::list<Entry>::iterator Remove(std::list<Entry>::iterator entry);

    std::list<Entry> entries_;  // the last used first
    // By the statement's own copy of its text.
    std::unordered_map<std::string_view, std::list<Entry>::iterator> byText_;
    size_t bytes_ = 0;
};

}  // namespace quarv::localdb::engine
