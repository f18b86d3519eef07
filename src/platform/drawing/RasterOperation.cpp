#include "platform/drawing/RasterOperation.h"

#include "base/RuntimeError.h"

namespace quarv::drawing {

namespace {

struct Row {
    qint64 code;
    QPainter::CompositionMode mode;
};

constexpr Row Table[] = {
    {SourceCopy, QPainter::CompositionMode_SourceOver},
    {0x008800C6, QPainter::RasterOp_SourceAndDestination},
    {0x00EE0086, QPainter::RasterOp_SourceOrDestination},
    {0x00660046, QPainter::RasterOp_SourceXorDestination},
    {0x00330008, QPainter::RasterOp_NotSource},
    {0x00440328, QPainter::RasterOp_SourceAndNotDestination},
    {0x001100A6, QPainter::RasterOp_NotSourceAndNotDestination},
    {0x00BB0226, QPainter::RasterOp_NotSourceOrDestination},
    {0x00550009, QPainter::RasterOp_NotDestination},
    {0x00000042, QPainter::RasterOp_ClearDestination},
    {0x00FF0062, QPainter::RasterOp_SetDestination},
};

}  // namespace

QPainter::CompositionMode CompositionModeOf(qint64 code) {
    for (const Row& row : Table)
        if (row.code == code) return row.mode;
    throw RuntimeError(RuntimeError::InvalidProcedureCall);
}

}  // namespace quarv::drawing
