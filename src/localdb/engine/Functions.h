// Functions: the scalar built-in functions: one table of names, numbers of arguments, how the types
// come about and how the value is computed.
#pragma once

#include "localdb/engine/BoundNodes.h"
#include "localdb/engine/ExpressionBinder.h"

namespace quarv::localdb::engine {

// Raises SqlError 174, 189 or 195.
BoundPtr BindScalarFunction(const tsql::Function& function, ExpressionBinder& binder);

// A call of a function of the table; null arguments give null unless the function asks for them.
class BoundCall : public BoundExpression {
  public:
    using Compute = SqlValue (*)(const BoundCall& call, const SqlValue* arguments,
                                 const Evaluation& evaluation);

    BoundCall(Compute compute, bool takesNull) : compute_(compute), takesNull_(takesNull) {}
    SqlValue Evaluate(const Evaluation& evaluation) const override;
    std::string Detail() const override;

    static constexpr size_t MaxArguments = 254;

  private:
    Compute compute_;
    bool takesNull_;
};

// How a function is bound; the arguments are bound already and may be converted.
using BindFunctionCall = BoundPtr (*)(std::vector<BoundPtr> arguments);

struct FunctionEntry {
    QStringView name;  // lower case
    size_t least, most;
    BindFunctionCall bind;
};

// The tables of the files TextFunctions, NumberFunctions and SystemFunctions.
std::span<const FunctionEntry> TextFunctions();
std::span<const FunctionEntry> NumberFunctions();
std::span<const FunctionEntry> SystemFunctions();

}  // namespace quarv::localdb::engine
