// Recordset, Fields, Field: one result after another of an executed command, forward-only and
// read-only. The caller owns the record set; it keeps its connection alive. It knows no driver.
#pragma once

#include <QString>
#include <cstdio>
#include <memory>

#include "base/Value.h"
#include "platform/ado/CellSink.h"
#include "platform/ado/ObjectState.h"

#undef EOF  // a macro of <cstdio> that nothing here needs; the record set's member has the name

namespace quarv::ado {

// One column of the current result. Owned by its record set and valid until the record set moves to
// its next result or dies.
class Field {
  public:
    virtual ~Field() = default;

    virtual QString Name() const = 0;
    // The value in the current row, converted when it is asked for; asking again gives the same.
    // Raises DataError 3021 (no current row) and whatever the driver reports.
    virtual quarv::Value Value() const = 0;
};

// The columns of the current result. Positions are 0-based; names match in any letter case and the
// first of equal names wins.
class Fields {
  public:
    virtual ~Fields() = default;

    virtual int Count() const = 0;
    // Both raise DataError 3265 where there is no such field.
    virtual const Field& operator[](int index) const = 0;
    virtual const Field& operator[](const QString& name) const = 0;
};

class Recordset;
using RecordsetPtr = std::shared_ptr<Recordset>;

class Recordset {
  public:
    virtual ~Recordset() = default;

    virtual ObjectState State() const = 0;
    // No current row: past the last row, or no row at all. Raises 3704 on a closed record set, and
    // the server's error where reading the first row or a later one fails.
    virtual bool EOF() const = 0;
    // Steps to the next row. Raises 3704 when closed, 3021 when already past the end.
    virtual void MoveNext() = 0;
    virtual const ado::Fields& Fields() const = 0;
    // Appends the value of every field of the current row. Raises what EOF and Value raise, with
    // the values before the failing one appended.
    virtual void WriteRow(CellSink& sink) const;
    // The next result of the same command: open, or closed for a result without rows; null when
    // there is none left. This record set is closed by it. Errors of later statements are raised
    // here, each once; calling again goes on behind the failed statement.
    virtual RecordsetPtr NextRecordset() = 0;
    // Raises 3704 where already closed.
    virtual void Close() = 0;

    // Shorthand for Fields()[name].Value().
    quarv::Value operator[](const QString& name) const { return Fields()[name].Value(); }
};

}  // namespace quarv::ado
