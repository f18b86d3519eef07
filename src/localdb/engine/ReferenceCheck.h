// ReferenceCheck: what a foreign key demands when rows that it refers to go or change their key:
// that nobody refers to them, or that whoever does goes along, changes along or lets go. All of it
// happens at the statement's end, when its other rows are where they belong.
#pragma once

#include <memory>

#include "localdb/engine/Frame.h"
#include "localdb/engine/Metadata.h"

namespace quarv::localdb::engine {

class RowChecks;

class ReferenceCheck {
  public:
    using Row = std::vector<OwnedValue>;
    static constexpr int MaxDepth = 64;  // of actions that lead to actions

    // `key` refers to `table`; both outlive this. Raises SqlError 217 beyond MaxDepth.
    ReferenceCheck(Frame& frame, Metadata& metadata, const TableInfo& table,
                   const ForeignKeyInfo& key, const QString& statement, int depth);
    ~ReferenceCheck();

    // Raise SqlError 547.
    void Removed(const Row& before);
    void Changed(const Row& before, const Row& after);
    void Finish();

  private:
    struct Event {
        Row key;          // as it was
        Row replacement;  // empty: the row is gone
    };
    struct Child {
        Row identity;  // its row number or storage key
        Row row;
        size_t event;
    };

    Row KeyOf(const Row& row) const;
    bool HasChildren(const Row& key);
    bool IsThere(const Row& key);
    void Load();
    void BindKey(SqliteStatement& statement, const Row& key) const;
    std::vector<Child> FindChildren(size_t event);
    void Act(ForeignKeyInfo::Action action, std::vector<Child>& children);
    void Delete(const std::vector<Child>& children);
    void Change(ForeignKeyInfo::Action action, std::vector<Child>& children);
    void CheckNulls(const Row& row) const;
    [[noreturn]] void Raise();

    Frame& frame_;
    Store& store_;
    Metadata& metadata_;
    const TableInfo& table_;
    const ForeignKeyInfo& key_;
    const QString statement_;
    const int depth_;
    std::vector<size_t> places_;  // of the key's columns in a row of the table
    TableInfo child_;             // loaded when first needed
    SqliteStatement findChild_, find_;
    std::vector<Event> events_;
};

}  // namespace quarv::localdb::engine
