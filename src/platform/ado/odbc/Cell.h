// Cell: one fetched value as bytes, not yet converted, and its conversion to a Value. The bytes
// belong to the result that gave the cell.
#pragma once

#include "base/Value.h"
#include "platform/ado/CellSink.h"
#include "platform/ado/odbc/Column.h"

namespace quarv::ado::odbc {

struct Cell {
    static constexpr qint64 NullLength = -1;

    const char* data = nullptr;  // at an even address
    qint64 length = NullLength;  // bytes; NullLength for null

    bool IsNull() const { return length < 0; }
};

// Appends what `cell` means in `column`. Bytes that the column's kind does not allow give a null
// rather than a wrong value, a number that is not exact decimal digits its text.
void WriteCell(const Column& column, const Cell& cell, CellSink& sink);
// The same as a value.
Value ToValue(const Column& column, const Cell& cell);

}  // namespace quarv::ado::odbc
