// CellRules: what each kind of column means for its cells: which editor is laid over them, what is
// written when editing ends, what text is shown. It knows no control.
#pragma once

#include "base/Value.h"
#include "grid/CellEditors.h"
#include "grid/KelEditGridColumn.h"

namespace quarv {

struct CellRule {
    // Lays the editor over the place with the cell's value in it. Raises TypeMismatch where the
    // value is none of the column's kind, InvalidPropertyValue where a list has no such entry.
    void (*show)(CellEditors& editors, const KelEditGridColumn& column, const Value& value,
                 const QRectF& place);
    // The value that the editor holds.
    Value (*read)(const CellEditors& editors, const KelEditGridColumn& column);
};

// Null for a column whose kind has no editor.
const CellRule* FindCellRule(const KelEditGridColumn& column);

// What a cell of the column shows: the entry of a numbered choice, else the value as text, of long
// bytes only their start; nothing for an object. Never raises.
QString ShownText(const KelEditGridColumn& column, const Value& value);

// The value as text; null as no text. Raises TypeMismatch for an object.
QString CellText(const Value& value);

}  // namespace quarv
