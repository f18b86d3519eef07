#include "platform/forms/DataGridCopy.h"

#include <algorithm>

#include "base/RuntimeError.h"
#include "platform/forms/DataCellText.h"

namespace quarv::forms {

namespace {

constexpr qint64 UsualCell = 8;
constexpr qint64 MostReserved = 1 << 24;

bool NeedsQuotes(QStringView value) {
    if (value.startsWith(u'"')) return true;
    return std::any_of(value.begin(), value.end(),
                       [](QChar c) { return c == u'\t' || c == u'\n' || c == u'\r'; });
}

class BlockWriter {
  public:
    BlockWriter(qint64 cells, qint64 most) : most_(most) {
        text_.reserve(std::min({cells * UsualCell, MostReserved, most}));
    }

    void WriteAsItStands(const Value& value) {
        CheckRoomFor(LengthOf(value));
        AppendCell(text_, value);
    }
    void Write(const Value& value) {
        const qsizetype start = text_.size();
        WriteAsItStands(value);
        if (value.kind() == Value::Kind::Text && NeedsQuotes(QStringView(text_).mid(start)))
            Quote(start);
    }
    void End(QChar separator) {
        text_ += separator;
        if (text_.size() > most_) Refuse();
    }
    QString Take() { return std::move(text_); }

  private:
    [[noreturn]] static void Refuse() { throw RuntimeError(RuntimeError::Overflow); }

    static qint64 LengthOf(const Value& value) {
        if (value.kind() == Value::Kind::Text) return value.Text().size();
        return value.kind() == Value::Kind::Bytes ? 2 + 2 * value.Bytes().size() : 0;
    }
    void CheckRoomFor(qint64 units) const {
        if (units > most_ - text_.size()) Refuse();
    }
    void Quote(qsizetype start) {
        QString value = text_.mid(start);
        CheckRoomFor(value.count(u'"') + 2);
        value.replace(u'"', QStringLiteral("\"\""));
        text_.truncate(start);
        text_ += u'"';
        text_ += value;
        text_ += u'"';
    }

    QString text_;
    qint64 most_;
};

}  // namespace

CellBlock BlockAround(const QItemSelection& selected) {
    CellBlock block{selected.first().top(), selected.first().left()};
    for (const QItemSelectionRange& part : selected) {
        block.top = std::min(block.top, part.top());
        block.left = std::min(block.left, part.left());
        block.bottom = std::max(block.bottom, part.bottom());
        block.right = std::max(block.right, part.right());
    }
    return block;
}

QString TextOfBlock(const RowSource& source, const CellBlock& block, const QStringList& names,
                    qint64 most) {
    if (block.IsEmpty()) return {};
    const qint64 rows = qint64{block.bottom} - block.top + 1;
    BlockWriter writer(rows * (qint64{block.right} - block.left + 1), most);
    if (block.IsSingle() && names.isEmpty()) {
        writer.WriteAsItStands(source.ValueAt(block.top, block.left));
        return writer.Take();
    }
    const auto writeLine = [&](auto&& valueOf) {
        for (int column = block.left; column <= block.right; ++column) {
            writer.Write(valueOf(column));
            writer.End(column < block.right ? u'\t' : u'\n');
        }
    };
    if (!names.isEmpty()) writeLine([&](int column) { return Value(names.at(column)); });
    for (int row = block.top; row <= block.bottom; ++row)
        writeLine([&](int column) { return source.ValueAt(row, column); });
    return writer.Take();
}

}  // namespace quarv::forms
