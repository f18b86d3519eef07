// Window: what stands behind a function in OVER (...): partitions, order and frame.
#pragma once

#include "localdb/tsql/Expression.h"

namespace quarv::localdb::tsql {

class TokenReader;

enum class FrameUnit : uint8_t { None, Rows, Range };

// In the order in which they may begin and end a frame.
enum class FrameEdge : uint8_t {
    UnboundedPreceding,
    Preceding,
    CurrentRow,
    Following,
    UnboundedFollowing
};

struct FrameBound {
    FrameEdge edge = FrameEdge::CurrentRow;
    int count = 0;  // of Preceding and Following
};

struct Window {
    ExpressionList partition;
    std::vector<OrderItem> order;
    FrameUnit unit = FrameUnit::None;  // no frame was written
    FrameBound begin, end;
};

// What follows a function's arguments, where it stands here: WITHIN GROUP and OVER.
void ParseFunctionTail(TokenReader& reader, Function& function);

}  // namespace quarv::localdb::tsql
