// ExpressionBinder: gives the names and types of an expression's tree a meaning, inserting the
// conversions that the rules ask for. Raises SqlError with the line where something does not fit.
#pragma once

#include "localdb/engine/BindContext.h"
#include "localdb/engine/Scope.h"

namespace quarv::localdb::engine {

// Where GROUP BY stands: its expressions, and which of them count as null in the set of groups that
// is being bound.
struct GroupingState {
    std::vector<BoundPtr> groups;
    std::vector<bool> absent;
};

class ExpressionBinder {
  public:
    ExpressionBinder(BindContext& context, const Scope& scope) : context_(context), scope_(scope) {}

    BoundPtr Value(const tsql::Expression& expression);
    BoundPtr Condition(const tsql::Expression& expression);

    // Aggregates may stand here: select lists, HAVING, ORDER BY.
    void AllowAggregates(bool allow) { aggregatesAllowed_ = allow; }
    // Functions with OVER may stand here: select lists and ORDER BY.
    void AllowWindows(bool allow) { windowsAllowed_ = allow; }
    // For GROUPING, and for groups that are absent.
    void SetGrouping(const GroupingState* grouping) { grouping_ = grouping; }
    bool SawAggregate() const { return sawAggregate_; }

    // The value as `type`, itself where it has it already. Raises SqlError 206 or 257.
    static BoundPtr Convert(BoundPtr value, const SqlType& type, bool isExplicit = false);
    // a + b and its like, converted by the rules of arithmetic.
    static BoundPtr Combine(char16_t sign, BoundPtr a, BoundPtr b);
    // Both as their common type, ready to be compared.
    static void Unify(BoundPtr& a, BoundPtr& b);

  private:
    // A number written as a constant that `to` can hold exactly becomes one of `to` now, so that a
    // column beside it keeps its index. False, and nothing done, where it cannot.
    static bool TakeExactly(BoundPtr& constant, const SqlType& to);

    BoundPtr BindVariable(const tsql::Variable& variable);
    BoundPtr BindNegate(const tsql::Negate& negate);
    BoundPtr BindArithmetic(const tsql::Arithmetic& arithmetic);
    BoundPtr BindCast(const tsql::Cast& cast);
    BoundPtr BindCollate(const tsql::Collate& collate);
    BoundPtr BindCase(const tsql::Case& expression);
    BoundPtr BindFunction(const tsql::Function& function);
    BoundPtr BindAggregate(const tsql::Function& function);
    std::vector<BoundPtr> BindArguments(const tsql::Function& function);
    BoundPtr BindWindowed(const tsql::Function& function);
    BoundPtr BindGroupingCall(const tsql::Function& function);
    BoundPtr BindNode(const tsql::Expression& expression);
    BoundPtr NullIfAbsent(BoundPtr value) const;
    BoundPtr BindSubquery(const tsql::Subquery& subquery);
    BoundPtr BindComparison(const tsql::Comparison& comparison);
    BoundPtr BindJunction(const tsql::Junction& junction);
    BoundPtr BindIsNull(const tsql::IsNull& test);
    BoundPtr BindLike(const tsql::Like& like);
    BoundPtr BindIn(const tsql::In& in);
    BoundPtr BindBetween(const tsql::Between& between);
    BoundPtr BindExists(const tsql::Exists& exists);
    BoundPtr BindQuantified(const tsql::Quantified& quantified);
    BoundPtr Compare(tsql::ComparisonSign sign, BoundPtr left, BoundPtr right);

    BindContext& context_;
    const Scope& scope_;
    bool aggregatesAllowed_ = false;
    bool insideAggregate_ = false;
    bool sawAggregate_ = false;
    bool windowsAllowed_ = false;
    bool insideWindow_ = false;
    const GroupingState* grouping_ = nullptr;  // or nothing
};

// The type that is written, as a column or variable has it. `ordinal` names the place in messages.
// Raises SqlError 131, 1001, 2715, 2716, 2750, 2751 or 40517.
SqlType BindType(const tsql::TypeName& name, int ordinal);

}  // namespace quarv::localdb::engine
