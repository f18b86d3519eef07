#include "localdb/engine/BoundExpression.h"

#include <algorithm>
#include <typeinfo>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

void BoundExpression::Write(SqlWriter& writer) const {
    writer.Call(*this);
}

bool IsFixed(const BoundExpression& expression) {
    return !expression.IsLeaf() && !expression.IsVolatile() &&
           std::all_of(expression.parts.begin(), expression.parts.end(),
                       [](const BoundPtr& part) { return IsFixed(*part); });
}

Collating FoldCollations(std::span<const BoundPtr> parts) {
    Collating folded;
    for (const BoundPtr& part : parts) {
        if (ClassOf(part->type) == TypeClass::Text) folded.Meet(part->Collates());
    }
    folded.Settle();
    return folded;
}

Collating BoundExpression::FoldCollations() const {
    Collating folded = engine::FoldCollations(parts);
    if (ClassOf(type) == TypeClass::Text) {
        folded.unicode = IsUnicode(type.kind);
        folded.Settle();
    }
    return folded;
}

void CheckCollation(const Collating& collating, QStringView operation, bool compares) {
    if (!collating.clash && !(compares && collating.IsUnresolved())) return;
    throw SqlError(468, {NameOf(collating.id), NameOf(collating.other), operation.toString()});
}

bool SameExpression(const BoundExpression& a, const BoundExpression& b) {
    return typeid(a) == typeid(b) && a.type == b.type && a.Detail() == b.Detail() &&
           std::equal(a.parts.begin(), a.parts.end(), b.parts.begin(), b.parts.end(),
                      [](const BoundPtr& x, const BoundPtr& y) { return SameExpression(*x, *y); });
}

}  // namespace quarv::localdb::engine
