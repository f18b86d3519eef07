// ScriptedRowSource: a result of as many rows as a test wants, which keeps count of how it is read
// and raises where it is told to.
#pragma once

#include <functional>
#include <limits>
#include <map>

#include "base/RowSource.h"
#include "base/RuntimeError.h"

namespace quarv::forms {

class ScriptedRowSource : public RowSource {
  public:
    ScriptedRowSource(QStringList fields, qint64 rows) { Refresh(std::move(fields), rows); }

    // Another result in place of this one, unread.
    void Refresh(QStringList fields, qint64 rows) {
        fields_ = std::move(fields);
        rows_ = rows;
        read_ = calls = 0;
        greatest = -1;
        atEnd_ = false;
    }
    // Before the 0-based `row`, or at the end where that is the count of rows, reading raises the
    // error `times` times.
    void RaiseBefore(qint64 row, const Error& error, int times = 1) {
        for (; times > 0; --times) errors_.emplace(row, error);
    }

    int calls = 0;         // of ReadTo
    qint64 greatest = -1;  // row asked for
    // Called by each ReadTo.
    std::function<void()> onRead = [] {};
    std::function<Value(qint64, int)> cell = [](qint64 row, int column) {
        return Value(QStringLiteral("r%1c%2").arg(row).arg(column));
    };

    const QStringList& Fields() const override { return fields_; }
    qint64 RowCount() const override { return read_; }
    bool AtEnd() const override { return atEnd_; }
    void ReadTo(qint64 row) override {
        ++calls;
        greatest = std::max(greatest, row);
        onRead();
        if (read_ > row || atEnd_) return;
        const auto next = errors_.lower_bound(read_);
        const bool raises = next != errors_.end() && next->first <= std::min(row, rows_);
        read_ = raises ? next->first : std::min(rows_, row == LastRow ? rows_ : row + 1);
        if (raises) {
            const Error error = next->second;
            errors_.erase(next);
            throw error;
        }
        atEnd_ = read_ <= row;
    }
    Value ValueAt(qint64 row, int column) const override {
        Check(row, column);
        return cell(row, column);
    }
    CellStart StartOf(qint64 row, int column, qint64 most) const override {
        const Value value = ValueAt(row, column);
        if (value.kind() == Value::Kind::Text)
            return {Value(value.Text().left(most)), value.Text().size()};
        if (value.kind() == Value::Kind::Bytes)
            return {Value(value.Bytes().left(most)), value.Bytes().size()};
        return {value, 0};
    }

  private:
    static constexpr qint64 LastRow = std::numeric_limits<qint64>::max();

    void Check(qint64 row, int column) const {
        if (row < 0 || row >= read_ || column < 0 || column >= fields_.size())
            throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    }

    QStringList fields_;
    qint64 rows_ = 0;
    qint64 read_ = 0;
    bool atEnd_ = false;
    std::multimap<qint64, Error> errors_;
};

}  // namespace quarv::forms
