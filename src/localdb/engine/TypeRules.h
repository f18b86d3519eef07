// TypeRules: which type an expression has ("Data type precedence", "Precision, scale, and length"),
// and what converts to what.
#pragma once

#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

class TypeRules {
  public:
    // The type that both are brought to for a comparison, a CASE or a COALESCE.
    static SqlType Common(const SqlType& a, const SqlType& b);
    // The result of `a sign b`. Raises SqlError 206, 402 or 8117 where the types do not go
    // together.
    static SqlType OfArithmetic(char16_t sign, const SqlType& a, const SqlType& b);
    // Raises SqlError 206, 257 or 529 where there is no such conversion.
    static void CheckConversion(const SqlType& from, const SqlType& to, bool isExplicit);
    // `sign` as messages call it: "equal to". Raises SqlError 305 or 402 for what has no order.
    static void CheckComparison(const char16_t* sign, const SqlType& a, const SqlType& b);
    // For ORDER BY, GROUP BY and the like. Raises SqlError 305 or 306.
    // Raises SqlError `number` with the type's name for what cannot be compared at all.
    static void CheckComparable(const SqlType& type, int number);
    static void CheckOrder(const SqlType& type);
    // A decimal as wide as an integer or money kind needs.
    static SqlType AsDecimal(const SqlType& type);
};

}  // namespace quarv::localdb::engine
