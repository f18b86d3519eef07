// GridBench: the grid's repaint against a table view's of the same cells, a scroll step among many
// rows against one among few, and how long the grid takes over a new row list, against reading its
// values from a server of ours.
#include <QHeaderView>
#include <QImage>
#include <QTableView>
#include <QWindow>
#include <stdexcept>
#include <vector>

#include "BareConnection.h"
#include "BenchServer.h"
#include "GridRows.h"
#include "Ratio.h"
#include "grid/KelEditGrid.h"
#include "platform/forms/Application.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/Twips.h"

namespace {

using namespace quarv;
using bench::Cost;
using bench::Measure;
using bench::Median;

constexpr QSize Screen(1920, 1080);  // pixels
constexpr int Columns = 28;
constexpr qint32 ColumnWidth = 1000;  // twips
constexpr int PaintedRows = 300;
constexpr int PaintRounds = 100;
constexpr double PaintLimit = 0.5;

constexpr int FewRows = 100;
constexpr int ManyRows = 32757;  // as many as a list holds
constexpr int StepRounds = 200;
constexpr int StepsPerRound = 2;
constexpr int StepPositions = 40;  // so few that the grid of few rows is full at each
constexpr double StepLimit = 1;

constexpr int ListRows = 100;
constexpr int ListColumns = 40;
constexpr int ListRounds = 100;
constexpr double ListLimit = 0.1;

// Until then a window paints nothing.
void Show(QWidget& window) {
    window.show();
    while (!window.windowHandle()->isExposed())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// A grid that fills a window of its own.
struct ShownGrid {
    ShownGrid(const ColumnListRef& columns, const RowListRef& rows)
        : grid(&window, QStringLiteral("Grid")) {
        window.resize(Screen);
        grid.Move(0, 0, forms::ToTwips(Screen.width()), forms::ToTwips(Screen.height()));
        grid.SetVisible(true);
        grid.SetColList(columns);
        grid.SetRowList(rows);
        Show(window);
    }

    QWidget window;
    KelEditGrid grid;
};

// A table view in a window of its own, its cells where the grid has them.
struct ShownTable {
    explicit ShownTable(const KelEditGrid& grid) : model(PaintedRows, Columns), view(&window) {
        window.resize(Screen);
        view.setModel(&model);
        view.setFont(grid.font());
        view.setFrameShape(QFrame::NoFrame);
        view.setSelectionMode(QAbstractItemView::NoSelection);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        PlaceCells(grid.Geometry());
        view.setGeometry(QRect(QPoint(), Screen));
        Show(window);
    }

    void PlaceCells(const GridGeometry& geometry) {
        using forms::ToPixels;
        QHeaderView& names = *view.horizontalHeader();
        names.setFixedHeight(ToPixels(geometry.HeaderHeight()));
        for (int i = 0; i < Columns; ++i)
            names.resizeSection(i, ToPixels((i + 1) * ColumnWidth) - ToPixels(i * ColumnWidth));
        QHeaderView& band = *view.verticalHeader();
        band.setMinimumSectionSize(1);
        band.setDefaultSectionSize(ToPixels(geometry.RowHeight()));
        band.setFixedWidth(ToPixels(GridGeometry::LeftMargin));
    }

    bench::TextTable model;
    QWidget window;
    QTableView view;
};

bool ComparePainting() {
    ShownGrid ours(bench::MakeColumns(Columns, ColumnWidth), bench::MakeRows(PaintedRows, Columns));
    ShownTable theirs(ours.grid);
    std::vector<Cost> ourCosts, theirCosts;
    QImage image(Screen, QImage::Format_RGB32);
    const int ourStart = bench::CellsRead(), theirStart = theirs.model.CellsRead();
    for (int i = 0; i < PaintRounds; ++i) {
        theirCosts.push_back(Measure([&] { theirs.view.render(&image); }));
        ourCosts.push_back(Measure([&] { ours.grid.render(&image); }));
    }
    const int ourCells = (bench::CellsRead() - ourStart) / PaintRounds;
    const int theirCells = (theirs.model.CellsRead() - theirStart) / PaintRounds;
    const int lines = static_cast<int>(ours.grid.State().lines.size());
    std::printf("# cells: %d ours, %d the table's; ours %.2f ms, the table's %.2f ms\n", ourCells,
                theirCells, Median(ourCosts).elapsed * 1000, Median(theirCosts).elapsed * 1000);
    if (ourCells != lines * Columns || theirCells < ourCells)
        throw std::runtime_error("not all cells were painted");
    return bench::Report("grid_repaint", Median(ourCosts), Median(theirCosts), PaintLimit);
}

// The position of the last row of that number: a look at every row, which the grid owes its rows
// at each step.
qint16 Walk(const KelEditGridRowList& rows, qint16 number) {
    qint16 found = 0;
    for (qint16 i = 1; i <= rows.Count(); ++i)
        if (rows.Items(i)->VisibleIndex() == number) found = i;
    return found;
}

forms::ScrollBar& BarOf(const KelEditGrid& grid) {
    auto* bar = grid.findChild<forms::ScrollBar*>(QStringLiteral("VScr"));
    if (!bar || !bar->Visible()) throw std::runtime_error("the grid has no vertical bar");
    return *bar;
}

void Step(ShownGrid& shown, forms::ScrollBar& bar, int number) {
    bar.SetValue(static_cast<qint16>(number));
    shown.grid.repaint();
}

Cost operator-(const Cost& a, const Cost& b) {
    return {a.cpu - b.cpu, a.elapsed - b.elapsed};
}

// Without the walk: it is measured alone and taken off. What it leaves of the caches is worse than
// what a step finds that is short of it; therefore the step among few rows comes after that walk
// over the many rows too, and gets it taken off too. Both show the same texts; the bar's thumb is
// longer among few rows, which a step paints for about a twentieth of its time: the room for noise.
bool CompareSteps() {
    const ColumnListRef columns = bench::MakeColumns(Columns, ColumnWidth);
    const RowListRef manyRows = bench::MakeRows(ManyRows, Columns);
    ShownGrid many(columns, manyRows);
    ShownGrid few(columns, bench::MakeRows(FewRows, Columns));
    forms::ScrollBar& manyBar = BarOf(many.grid);
    forms::ScrollBar& fewBar = BarOf(few.grid);
    const int above = ManyRows / 2 / bench::TextPeriod * bench::TextPeriod;
    std::vector<Cost> manyCosts, fewCosts, walks;
    qint64 walked = 0;
    for (int round = 0; round < StepRounds; ++round) {
        const auto each = [round](auto&& step) {
            return Measure([&] {
                for (int i = 0; i < StepsPerRound; ++i) step(1 + (round + i) % StepPositions);
            });
        };
        walks.push_back(
            each([&](int i) { walked += Walk(*manyRows, static_cast<qint16>(above + i)); }));
        fewCosts.push_back(each([&](int i) {
            walked += Walk(*manyRows, static_cast<qint16>(above + i));
            Step(few, fewBar, i);
        }));
        manyCosts.push_back(each([&](int i) { Step(many, manyBar, above + i); }));
    }
    if (walked < ManyRows || many.grid.State().topRow->VisibleIndex() != manyBar.Value() ||
        few.grid.State().topRow->VisibleIndex() != fewBar.Value())
        throw std::runtime_error("the grid did not scroll");
    const Cost walk = Median(walks);
    std::printf("# among %d rows %.3f ms, among %d rows %.3f ms, the walk in both %.3f ms\n",
                ManyRows, Median(manyCosts).elapsed * 1000 / StepsPerRound, FewRows,
                Median(fewCosts).elapsed * 1000 / StepsPerRound,
                walk.elapsed * 1000 / StepsPerRound);
    return bench::Report("grid_scroll_step", Median(manyCosts) - walk, Median(fewCosts) - walk,
                         StepLimit);
}

void Fill(bench::BareConnection& connection) {
    QByteArray names, values;
    for (int i = 1; i <= ListColumns; ++i) {
        names += (i > 1 ? ", c" : "c") + QByteArray::number(i) + " nvarchar(40)";
        values += (i > 1 ? ", N'Item " : "N'Item ") + QByteArray::number(i) + "'";
    }
    connection.Execute("create table bench_grid (" + names + ")");
    for (int i = 0; i < ListRows; ++i)
        connection.Execute("insert into bench_grid values (" + values + ")");
}

bool CompareRowList() {
    const bench::BenchServer server;
    bench::BareConnection connection(bench::BareString(server.Port(), "mirel"));
    Fill(connection);
    const RowListRef lists[] = {bench::MakeRows(ListRows, ListColumns),
                                bench::MakeRows(ListRows, ListColumns)};
    ShownGrid shown(bench::MakeColumns(ListColumns, ColumnWidth), lists[0]);
    std::vector<Cost> taking, reading;
    int rows = 0;
    for (int round = 0; round < ListRounds; ++round) {
        reading.push_back(Measure([&] { rows = connection.Loop("select * from bench_grid"); }));
        if (rows != ListRows) throw std::runtime_error("the server has other rows");
        const RowListRef& list = lists[(round + 1) % 2];
        taking.push_back(Measure([&] { shown.grid.SetRowList(list); }));
        if (shown.grid.State().topRow != list->Items(1))
            throw std::runtime_error("the grid does not show the rows");
        shown.grid.repaint();
    }
    std::printf("# the list %.1f us, its values from the server %.1f us\n",
                Median(taking).elapsed * 1e6, Median(reading).elapsed * 1e6);
    return bench::Report("grid_set_row_list", Median(taking), Median(reading), ListLimit);
}

}  // namespace

int main(int argc, char** argv) {
    forms::Application application(argc, argv);
    try {
        const bool painting = ComparePainting();
        const bool steps = CompareSteps();
        const bool rowList = CompareRowList();
        return painting && steps && rowList ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "GridBench: %s\n", e.what());
        return 2;
    }
}
