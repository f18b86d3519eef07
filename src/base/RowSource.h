// RowSource: a result whose rows are read on as they are asked for, as a control that shows rows
// sees it. Whoever fetches the rows implements it; it knows neither of the two.
#pragma once

#include <QStringList>

#include "base/Value.h"

namespace quarv {

// The start of a cell, for a control that shows no more of a long one.
struct CellStart {
    Value value;    // a text or bytes may be cut; any other value is whole
    qint64 length;  // of the whole text in UTF-16 units or of the whole bytes; else 0
};

class RowSource {
  public:
    virtual ~RowSource() = default;

    // Column names as the server gave them, empty and equal ones included.
    virtual const QStringList& Fields() const = 0;
    // Rows read so far.
    virtual qint64 RowCount() const = 0;
    // No further row will come and no error is left to be raised.
    virtual bool AtEnd() const = 0;
    // Reads on until the 0-based `row` is there or the end is met; nothing where it is there.
    // Raises Error where reading fails, with the rows before it kept. Of several errors each call
    // raises the next one, until AtEnd.
    virtual void ReadTo(qint64 row) = 0;

    // A cell of a row that was read, 0-based. Both raise SubscriptOutOfRange for another.
    virtual Value ValueAt(qint64 row, int column) const = 0;
    // `most` is how many UTF-16 units of a text and how many bytes are wanted, above 0.
    virtual CellStart StartOf(qint64 row, int column, qint64 most) const = 0;
};

}  // namespace quarv
