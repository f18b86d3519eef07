// ExpressionNode: how the parsers of expressions and of conditions make a node of the tree and keep
// the tree from growing higher than the stack of whoever walks it can bear.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <memory>

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

// An operator chain such as 1+1+1+... makes a tree as high as it is long.
inline constexpr int MaxHeight = 250;

template <class Node>
std::unique_ptr<Node> Make(int line) {
    auto node = std::make_unique<Node>();
    node->line = line;
    return node;
}

// Sets the height from the parts and raises where the tree grows too high.
template <class Node>
ExpressionPtr Finish(TokenReader& reader, std::unique_ptr<Node> node,
                     std::initializer_list<const Expression*> parts) {
    for (const Expression* part : parts) {
        if (part) node->height = std::max(node->height, part->height + 1);
    }
    if (node->height > MaxHeight) {
        throw SyntaxError(SyntaxError::TooDeep, {}, reader.Line(), reader.Peek().column);
    }
    return node;
}

}  // namespace quarv::localdb::tsql
