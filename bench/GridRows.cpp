#include "GridRows.h"

namespace quarv::bench {

namespace {

int cellsRead = 0;

// What tables hold: numbers, words, and now and then more than a cell has room for.
QString TextOf(int row, int column) {
    const QString number = QString::number((row % TextPeriod) * 37 + column);
    switch (column % 4) {
        case 0:
            return number;
        case 1:
            return QStringLiteral("Item ") + number;
        case 2:
            return QStringLiteral("2024-03-") + number.right(2).rightJustified(2, u'0');
        default:
            return row % 2 == 0 ? QStringLiteral("Row ") + number
                                : QStringLiteral("The whole description of item ") + number;
    }
}

QString NameOf(int column) {
    return QStringLiteral("Column ") + QString::number(column + 1);
}

QList<QList<QString>> Texts(int columns) {
    QList<QList<QString>> texts(TextPeriod);
    for (int row = 0; row < TextPeriod; ++row)
        for (int column = 0; column < columns; ++column) texts[row] += TextOf(row, column);
    return texts;
}

class TextRow : public KelEditGridRow {
  public:
    explicit TextRow(const QList<Value>& cells) : cells_(cells) {}

    qint16 VisibleIndex() const override { return visibleIndex_; }
    void SetVisibleIndex(qint16 position) override { visibleIndex_ = position; }
    Value ColumnValue(qint16 ColNum) const override {
        ++cellsRead;
        return cells_[ColNum - 1];
    }

  private:
    QList<Value> cells_;  // shared with the rows of the same texts
    qint16 visibleIndex_ = 0;
};

}  // namespace

ColumnListRef MakeColumns(int count, qint32 width) {
    auto list = std::make_shared<KelEditGridColumnList>();
    for (int i = 0; i < count; ++i)
        list->AddColumn(NameOf(i), width, static_cast<qint32>(CellKind::Text));
    return list;
}

RowListRef MakeRows(int count, int columns) {
    QList<QList<Value>> cells;
    for (const QList<QString>& texts : Texts(columns))
        cells += QList<Value>(texts.begin(), texts.end());
    auto list = std::make_shared<KelEditGridRowList>();
    for (int i = 0; i < count; ++i) list->Add(std::make_shared<TextRow>(cells[i % TextPeriod]));
    return list;
}

int CellsRead() {
    return cellsRead;
}

TextTable::TextTable(int rows, int columns)
    : rows_(rows), columns_(columns), texts_(Texts(columns)) {}

int TextTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int TextTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant TextTable::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole) return {};
    ++cellsRead_;
    return texts_[index.row() % TextPeriod][index.column()];
}

QVariant TextTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return NameOf(section);
}

}  // namespace quarv::bench
