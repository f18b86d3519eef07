// DataGridCopy: a block of a result's cells as the text that spreadsheets read: values whole,
// parted by tabs, lines ended by LF. Free functions; they know the result and no grid.
#pragma once

#include <QItemSelection>
#include <QString>
#include <QStringList>

#include "base/RowSource.h"

namespace quarv::forms {

// 0-based and inclusive; empty where bottom < top.
struct CellBlock {
    int top = 0;
    int left = 0;
    int bottom = -1;
    int right = -1;

    bool IsEmpty() const { return bottom < top || right < left; }
    bool IsSingle() const { return bottom == top && right == left; }
};

// The smallest block with all selected cells; `selected` is not empty.
CellBlock BlockAround(const QItemSelection& selected);

// UTF-16 units.
inline constexpr qint64 LongestCopy = qint64{1} << 30;

// `names`, where there are any, are those of all columns; the block's go on a line of their own
// before the rows. A single cell without names is given as it stands. Else a value that would be
// read as more than one, or as quoted, is quoted. Raises Overflow beyond `most` units.
QString TextOfBlock(const RowSource& source, const CellBlock& block, const QStringList& names = {},
                    qint64 most = LongestCopy);

}  // namespace quarv::forms
