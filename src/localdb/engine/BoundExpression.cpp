#include "localdb/engine/BoundExpression.h"

#include <algorithm>
#include <typeinfo>

#include "localdb/engine/SqlWriter.h"

namespace quarv::localdb::engine {

void BoundExpression::Write(SqlWriter& writer) const {
    writer.Call(*this);
}

bool IsFixed(const BoundExpression& expression) {
    return !expression.IsLeaf() && !expression.IsVolatile() &&
           std::all_of(expression.parts.begin(), expression.parts.end(),
                       [](const BoundPtr& part) { return IsFixed(*part); });
}

bool SameExpression(const BoundExpression& a, const BoundExpression& b) {
    return typeid(a) == typeid(b) && a.type == b.type && a.Detail() == b.Detail() &&
           std::equal(a.parts.begin(), a.parts.end(), b.parts.begin(), b.parts.end(),
                      [](const BoundPtr& x, const BoundPtr& y) { return SameExpression(*x, *y); });
}

}  // namespace quarv::localdb::engine
