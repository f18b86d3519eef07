#include "BareClick.h"

#include <QHeaderView>

#include "PaintWatch.h"
#include "platform/forms/Twips.h"

namespace quarv::bench {

namespace {

using forms::ToPixels;

TextModel TextsOf(const GridState& state) {
    QStringList names, texts;
    const qint16 columns = state.columns->Count();
    for (qint16 column = 1; column <= columns; ++column)
        names << state.columns->Items(column)->Name;
    for (qint16 row = 1; row <= state.rows->Count(); ++row)
        for (qint16 column = 1; column <= columns; ++column)
            texts << state.rows->Items(row)->ColumnValue(column).ToText();
    return {std::move(names), std::move(texts)};
}

}  // namespace

BareClick::BareClick(const QByteArray& connectionString, const KelEditGrid& grid)
    : connection_(connectionString), texts_(TextsOf(grid.State())) {
    window_.resize(grid.window()->size());
    view_.setModel(&texts_);
    view_.setFont(grid.font());
    view_.setFrameShape(QFrame::NoFrame);
    view_.setGeometry(QRect(grid.mapTo(grid.window(), QPoint()), grid.size()));
    PlaceCells(grid);
    PaintWatch watch({view_.viewport()});
    window_.show();
    watch.Wait();
}

void BareClick::PlaceCells(const KelEditGrid& grid) {
    QHeaderView& names = *view_.horizontalHeader();
    names.setFixedHeight(ToPixels(grid.Geometry().HeaderHeight()));
    names.setDefaultSectionSize(ToPixels(grid.State().columns->Items(1)->Width));
    QHeaderView& band = *view_.verticalHeader();
    band.setMinimumSectionSize(1);
    band.setDefaultSectionSize(ToPixels(grid.Geometry().RowHeight()));
    band.setFixedWidth(ToPixels(GridGeometry::LeftMargin));
}

int BareClick::Run(const QByteArray& table) {
    connection_.Loop("select * from information_schema.columns where table_name='" + table +
                     "' order by ordinal_position");
    connection_.Loop("sp_helpindex '" + table + "'");
    QByteArray name = table;
    connection_.Count([&name](SQLHSTMT s) {
        return SQLPrimaryKeys(s, nullptr, 0, nullptr, 0, reinterpret_cast<SQLCHAR*>(name.data()),
                              SQL_NTS);
    });
    const int rows = connection_.Loop("select top 100 * from [" + table + "]");
    PaintWatch watch({view_.viewport()});
    texts_.Renew();
    watch.Wait();
    return rows;
}

}  // namespace quarv::bench
