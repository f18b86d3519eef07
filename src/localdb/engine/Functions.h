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
    bool IsVolatile() const override { return isVolatile; }
    bool IsDeterministic() const override { return !isVolatile && isDeterministic; }
    std::string Detail() const override;

    static constexpr size_t MaxArguments = 254;

    bool isVolatile = false;      // another value for each row
    bool isDeterministic = true;  // by the catalogue's rules
    int option = 0;               // what the function was bound with: a date part, a property

  private:
    Compute compute_;
    bool takesNull_;
};

// How a function is bound; the arguments are bound already and may be converted.
using BindFunctionCall = BoundPtr (*)(std::vector<BoundPtr> arguments);
// Of a function whose first argument is a word, not a value. `word` is empty where it is none.
using BindWordCall = BoundPtr (*)(const QString& function, const QString& word,
                                  std::vector<BoundPtr> arguments);

struct FunctionEntry {
    QStringView name;  // lower case
    size_t least, most;
    BindFunctionCall bind;
    BindWordCall bindWord = nullptr;  // instead of `bind`
};

// The tables of the files that are named after them.
std::span<const FunctionEntry> TextFunctions();
std::span<const FunctionEntry> TextEditFunctions();
std::span<const FunctionEntry> TextSearchFunctions();
std::span<const FunctionEntry> NumberFunctions();
std::span<const FunctionEntry> MathFunctions();
std::span<const FunctionEntry> DateFunctions();
std::span<const FunctionEntry> DateMakers();
std::span<const FunctionEntry> ChoiceFunctions();
std::span<const FunctionEntry> SystemFunctions();
std::span<const FunctionEntry> HashFunctions();
std::span<const FunctionEntry> MetadataFunctions();
std::span<const FunctionEntry> ServerFunctions();
std::span<const FunctionEntry> BitFunctions();
std::span<const FunctionEntry> DateBuckets();
std::span<const FunctionEntry> FormatFunctions();
std::span<const FunctionEntry> SessionFunctions();
// Of a function that SQL Server has and this server does not. In SessionFunctions.cpp.
bool IsRefusedFunction(const QString& name);

}  // namespace quarv::localdb::engine
