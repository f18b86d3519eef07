// Arithmetic: + - * / % & | ^ and the signs, on values of one type class.
#pragma once

#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"
#include "localdb/engine/TextArena.h"
#include "localdb/engine/TextOrder.h"

namespace quarv::localdb::engine {

class Arithmetic {
  public:
    // `a sign b` as `result`. Decimals keep their own scales in `typeA` and `typeB`; other operands
    // are of `result`'s type. Null where one is null. Raises SqlError 8115 or 8134.
    static SqlValue Apply(char16_t sign, const SqlValue& a, const SqlType& typeA, const SqlValue& b,
                          const SqlType& typeB, const SqlType& result, TextArena& arena);
    static SqlValue Negate(char16_t sign, const SqlValue& a, const SqlType& type);
};

// Order of two values of one type: below 0, 0, above 0. Neither is null.
int CompareValues(const SqlValue& a, const SqlValue& b,
                  TextOrder order = TextOrder::CaseInsensitive);

}  // namespace quarv::localdb::engine
