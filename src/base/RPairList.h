// RPairList: an ordered list of values whose keys are values too and match where they are equal:
// texts exactly, numbers numerically, objects by identity. Its owner is whoever made it.
#pragma once

#include "base/KeyedList.h"

namespace quarv {

struct PairListMatcher {
    static bool Match(const Value& a, const Value& b) { return Value::Equal(a, b); }
};

class RPairList : public KeyedList<Value, PairListMatcher> {};

}  // namespace quarv
