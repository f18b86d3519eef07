// SqlWriter: collects storage SQL and what is bound to its parameters. Values never become text of
// the SQL. The expressions that it was given must outlive the statement that it prepares.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "localdb/engine/BoundExpression.h"
#include "localdb/engine/SqliteStatement.h"

namespace quarv::localdb::engine {

// A tree that the storage calls back for: its leaves are the call's arguments.
struct Program {
    const BoundExpression* root = nullptr;
    std::vector<SqlType> leafTypes;
    std::vector<SqlValue> leaves;  // room for one call's values
    const Environment* environment = nullptr;
    std::shared_ptr<TextArena> arena;

    static constexpr const char* Tag = "q_eval";
};

class SqlWriter {
  public:
    explicit SqlWriter(const Environment& environment);

    SqlWriter& Text(std::string_view sql) {
        sql_ += sql;
        return *this;
    }
    // Puts text before everything that was written.
    void Prepend(const std::string& sql) { sql_.insert(0, sql); }
    // As the storage computes it; a tree without leaves is computed now and bound as a value.
    void Expression(const BoundExpression& expression);
    // As Expression, compared by the collation where it is text.
    void Collated(const BoundExpression& expression);
    void Collated(const BoundExpression& expression, TextOrder order);
    void Value(const SqlValue& value, const SqlType& type);
    // A call that evaluates the tree.
    void Call(const BoundExpression& root);

    // Nesting of what the storage's parser has to keep on its stack.
    bool IsDeep() const { return depth_ > 8; }
    class Level;

    // The statement as written so far, its values bound.
    SqliteStatement Prepare(Store& store);
    const std::string& Sql() const { return sql_; }
    // The types of the values that Prepare binds; nothing where a call stands among them.
    std::optional<std::vector<SqlType>> ValueTypes() const;

  private:
    struct Binding {
        OwnedValue value;
        SqlType type;
        Program* program = nullptr;
    };

    bool TryFixed(const BoundExpression& expression);
    void CollectLeaves(const BoundExpression& node, Program& program,
                       std::vector<std::string>& arguments);
    void AddLeaf(const BoundExpression& leaf, Program& program,
                 std::vector<std::string>& arguments);

    const Environment& environment_;
    std::string sql_;
    std::vector<Binding> bindings_;
    std::vector<std::unique_ptr<Program>> programs_;
    std::shared_ptr<TextArena> arena_;
    int depth_ = 0;
};

class SqlWriter::Level {
  public:
    explicit Level(SqlWriter& writer) : writer_(writer) { ++writer_.depth_; }
    ~Level() { --writer_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

  private:
    SqlWriter& writer_;
};

}  // namespace quarv::localdb::engine
