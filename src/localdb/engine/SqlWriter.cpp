#include "localdb/engine/SqlWriter.h"

#include <algorithm>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/Store.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

// The storage takes 127 arguments; one is the program.
constexpr size_t MaxLeaves = 126;

}  // namespace

SqlWriter::SqlWriter(const Environment& environment)
    : environment_(environment), arena_(std::make_shared<TextArena>()) {}

void SqlWriter::Value(const SqlValue& value, const SqlType& type) {
    bindings_.push_back({OwnedValue(value), type, nullptr});
    sql_ += '?' + std::to_string(bindings_.size());
}

// What depends on no row is computed once. Where that raises, it is left to the first row, since
// there may be none.
bool SqlWriter::TryFixed(const BoundExpression& expression) {
    if (!IsFixed(expression)) return false;
    try {
        const Evaluation evaluation{nullptr, arena_.get(), &environment_};
        Value(expression.Evaluate(evaluation), expression.type);
        arena_->Reset();
        return true;
    } catch (const SqlError&) {
        arena_->Reset();
        Call(expression);
        return true;
    }
}

void SqlWriter::Expression(const BoundExpression& expression) {
    if (!TryFixed(expression)) expression.Write(*this);
}

void SqlWriter::Collated(const BoundExpression& expression) {
    Collated(expression, expression.Order());
}

void SqlWriter::Collated(const BoundExpression& expression, TextOrder order) {
    Expression(expression);
    const char* collation = StorageCollation(expression.type, order);
    if (collation) Text(std::string(" COLLATE ") + collation);
}

void SqlWriter::AddLeaf(const BoundExpression& leaf, Program& program,
                        std::vector<std::string>& arguments) {
    std::string outer;
    outer.swap(sql_);
    leaf.Write(*this);
    outer.swap(sql_);
    // A column that stands in the tree twice is one argument.
    const auto known = std::find(arguments.begin(), arguments.end(), outer);
    leaf.slot = static_cast<size_t>(known - arguments.begin());
    if (known != arguments.end()) return;
    if (arguments.size() == MaxLeaves) throw SqlError(8623);
    arguments.push_back(std::move(outer));
    program.leafTypes.push_back(leaf.type);
}

void SqlWriter::CollectLeaves(const BoundExpression& node, Program& program,
                              std::vector<std::string>& arguments) {
    if (node.IsLeaf() || node.IsOncePerQuery()) {
        AddLeaf(node, program, arguments);
        return;
    }
    for (const BoundPtr& part : node.parts) CollectLeaves(*part, program, arguments);
}

void SqlWriter::Call(const BoundExpression& root) {
    auto program = std::make_unique<Program>();
    program->root = &root;
    program->environment = &environment_;
    program->arena = arena_;
    std::vector<std::string> arguments;
    CollectLeaves(root, *program, arguments);
    program->leaves.resize(arguments.size());
    bindings_.push_back({OwnedValue(), root.type, program.get()});
    sql_ += "q_eval(?" + std::to_string(bindings_.size());
    for (const std::string& argument : arguments) sql_ += ',' + argument;
    sql_ += ')';
    programs_.push_back(std::move(program));
}

std::optional<std::vector<SqlType>> SqlWriter::ValueTypes() const {
    std::vector<SqlType> types;
    for (const Binding& binding : bindings_) {
        if (binding.program) return std::nullopt;
        types.push_back(binding.type);
    }
    return types;
}

SqliteStatement SqlWriter::Prepare(Store& store) {
    SqliteStatement statement = store.Prepare(sql_);
    int index = 0;
    for (const Binding& binding : bindings_) {
        ++index;
        if (binding.program) {
            statement.BindPointer(index, binding.program, Program::Tag);
        } else {
            statement.Bind(index, binding.value.View(), binding.type);
        }
    }
    return statement;
}

}  // namespace quarv::localdb::engine
