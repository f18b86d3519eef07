// WindowFunction: what OVER (...) says, and the functions that exist only with it: ROW_NUMBER,
// RANK, LAG and their kin. Aggregates with OVER are in Aggregate.
#pragma once

#include "localdb/engine/BoundExpression.h"
#include "localdb/tsql/Window.h"

namespace quarv::localdb::engine {

class ExpressionBinder;

// Partitions, order and frame. The expressions are parts of the function, from `first` on.
struct BoundOver {
    size_t first = 0;
    size_t partitions = 0;
    std::vector<bool> descending;  // one for each expression of the order
    std::string frame;             // empty: the default

    // " OVER (...)".
    void Write(SqlWriter& writer, const std::vector<BoundPtr>& parts) const;
    std::string Detail() const;
};

class BoundWindowFunction : public BoundExpression {
  public:
    // `name` is the storage's; the arguments are the first parts.
    BoundWindowFunction(const char* name, size_t arguments) : name_(name), arguments_(arguments) {}
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    bool IsWindow() const override { return true; }
    std::string Detail() const override;

    BoundOver over;

  protected:
    Collating FoldCollations() const override;

  private:
    const char* name_;
    size_t arguments_;
};

// In any letter case.
bool IsWindowName(const QString& name);
// A function of the above; `binder` is one that binds what stands inside of it. Raises SqlError.
BoundPtr BindWindowFunction(const tsql::Function& function, ExpressionBinder& binder);
// Appends the expressions of OVER to the function's parts. Raises SqlError 4194, 5308, 5309, 10756.
BoundOver BindOver(const tsql::Window& window, ExpressionBinder& binder,
                   std::vector<BoundPtr>& parts);

// Whether something in the tree is computed over a window.
bool HasWindow(const BoundExpression& expression);

}  // namespace quarv::localdb::engine
