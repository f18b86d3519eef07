// FunctionTools: what the files of built-in functions share: making a call and bringing its
// arguments to the types that it takes.
#pragma once

#include "localdb/engine/Functions.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

using Arguments = std::vector<BoundPtr>;
using Compute = BoundCall::Compute;

// Null only where an argument may be null, unless the function itself can give null.
BoundPtr MakeCall(Compute compute, const SqlType& type, Arguments arguments,
                  bool takesNull = false);
// A call that can give null for arguments that are not.
BoundPtr MakeNullableCall(Compute compute, const SqlType& type, Arguments arguments,
                          bool takesNull = false);

// A call that takes null and never gives it.
BoundPtr MakeNeverNullCall(Compute compute, const SqlType& type, Arguments arguments);

// Text stays what it is; everything else becomes varchar.
BoundPtr AsText(BoundPtr value);
BoundPtr AsInteger(BoundPtr value);  // bigint
BoundPtr AsFloat(BoundPtr value);
// The value of a constant text, lower-cased; null where it is none.
QString ConstantWord(const BoundExpression& value);

// varchar for char, nvarchar for nchar.
SqlType Varying(SqlType type);
// The type as wide as it can be short of (max), which stays.
SqlType Widest(SqlType type);
// `text` as a value of the call's type: cut to its length, halves of pairs joined.
SqlValue FitResult(const BoundCall& call, std::string_view text, const Evaluation& evaluation);

// A fixed answer.
BoundPtr MakeAnswer(const QString& text, const SqlType& type);
BoundPtr MakeAnswer(int64_t number, const SqlType& type);

}  // namespace quarv::localdb::engine
