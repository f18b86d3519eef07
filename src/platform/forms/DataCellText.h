// DataCellText: the cells of a result as texts, the same in every locale: numbers with ".", dates
// in ISO order, booleans as 1 and 0, bytes as hexadecimal digits, null as "NULL". Free functions;
// they know no grid.
#pragma once

#include <QString>

#include "base/RowSource.h"

namespace quarv::forms {

enum class CellLook : quint8 { Text, Number, Null };

CellLook LookOf(const Value& value);

// How much of a long cell is shown: UTF-16 units of a text, bytes of bytes.
struct CellLimit {
    qint64 units;
    qint64 bytes;

    // What to ask RowSource::StartOf for.
    qint64 Most() const { return units > bytes ? units : bytes; }
};

inline constexpr CellLimit ShownLimit{512, 32};
inline constexpr CellLimit ToolTipLimit{1000, 496};

// One line to paint or to speak, control characters as blanks. What is longer than the limit ends
// in an ellipsis, bytes also in their count.
QString ShownCell(const CellStart& cell, const CellLimit& limit = ShownLimit);

// Several lines, cut as ToolTipLimit says and where a screen ends.
QString ToolTipOfCell(const CellStart& cell);

// Appends the whole value. Raises TypeMismatch for an object.
void AppendCell(QString& text, const Value& value);

}  // namespace quarv::forms
