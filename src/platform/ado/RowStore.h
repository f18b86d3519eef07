// RowStore: the rows of a result as they were read, packed into bytes; a cell takes about what its
// value needs and no object. Owned by the DataControl; it knows no record set.
#pragma once

#include <deque>

#include "base/RowSource.h"
#include "platform/ado/ByteLog.h"
#include "platform/ado/CellSink.h"
#include "platform/ado/PackedText.h"

namespace quarv::ado {

class PackedNumber;

// What is appended is the next cell, the columns of a row in turn. Without columns that raises
// InvalidProcedureCall.
class RowStore : public CellSink {
  public:
    // Without columns nothing can be stored.
    explicit RowStore(int columnCount = 0) : columnCount_(columnCount) {}

    int ColumnCount() const { return columnCount_; }
    // Whole rows; one that is still being written is not counted.
    qint64 RowCount() const { return rowCount_; }

    void AppendEmpty() override;
    void AppendNull() override;
    void AppendBoolean(bool value) override;
    void AppendInteger(qint64 value) override;
    void AppendSingle(float value) override;
    void AppendFloating(double value) override;
    void AppendDecimal(const Decimal& value) override;
    void AppendText(QStringView value) override;
    void AppendDateTime(const DateTime& value) override;
    void AppendBytes(QByteArrayView value) override;
    // Gives up the cells of the row that is being written.
    void DropUnfinishedRow();

    // The value as it was written. Positions are 0-based; raises SubscriptOutOfRange outside the
    // whole rows.
    Value ValueAt(qint64 row, int column) const;
    // As ValueAt, but copies at most `most` UTF-16 units or bytes of a long one.
    CellStart StartOf(qint64 row, int column, qint64 most) const;

    // Bytes of memory taken by the rows.
    quint64 MemoryUsed() const { return log_.Capacity() + marks_.size() * sizeof(quint64); }

  private:
    // A cell as it lies in the log: a tag byte, for longer ones their length, then the bytes.
    struct Cell {
        quint8 code;
        quint64 start;   // offset of its bytes
        quint64 length;  // of its bytes
    };

    void BeginCell();
    void EndCell();
    void AppendNumber(quint8 code, const PackedNumber& number);
    void WriteHead(quint8 code, quint64 length);
    // Raises SubscriptOutOfRange outside the whole rows.
    Cell Find(qint64 row, int column) const;
    Cell CellAt(quint64 offset) const;
    static PackedText::Place PlaceOf(const Cell& cell);
    // At most `most` units of a text or bytes.
    Value Decode(const Cell& cell, qint64 most) const;
    Value NumberOf(const Cell& cell) const;

    // Every so many cells the offset is noted; from there a cell is found by skipping.
    static constexpr quint64 MarkDistance = 32;

    int columnCount_;
    qint64 rowCount_ = 0;
    int unfinished_ = 0;    // cells of the row that is being written
    quint64 rowStart_ = 0;  // where that row starts in the log
    ByteLog log_;
    std::deque<quint64> marks_;
};

}  // namespace quarv::ado
