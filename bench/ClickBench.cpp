// ClickBench: from the click on a table in the main window to the last pane painted, against the
// bare ODBC calls that such a click needs and a plain table view that paints the same rows; for a
// table of 20 columns and for one of 1,024. The server is ours, started by hand on a folder of its
// own; its time is in both elapsed times and in neither CPU time.
#include <QMouseEvent>
#include <stdexcept>
#include <vector>

#include "BareClick.h"
#include "BenchServer.h"
#include "PaintWatch.h"
#include "Ratio.h"
#include "TemporaryRegistry.h"
#include "app/DatabaseView.h"
#include "inspect/TableFieldView.h"
#include "inspect/TableIndexView.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/Application.h"
#include "platform/forms/ListView.h"
#include "platform/forms/TreeView.h"

namespace {

using namespace quarv;
using bench::Cost;
using bench::Measure;

constexpr int Rows = 100;

// Two tables of the same shape, so that each click goes from one to the other.
struct Shape {
    const char* report;
    const char* tables[2];
    int columns;
    int rounds;
    double limit;
};

constexpr Shape Shapes[] = {
    {"click.20_columns", {"bench_narrow_1", "bench_narrow_2"}, 20, 150, 1.5},
    {"click.1024_columns", {"bench_wide_1", "bench_wide_2"}, 1024, 31, 3},
};

// What tables hold: the column's type and its value in one row.
struct Kind {
    const char* type;
    QByteArray (*value)(int row);
};

constexpr Kind Kinds[] = {
    {"nvarchar(40) not null",
     [](int row) { return "N'Item number " + QByteArray::number(row) + "'"; }},
    {"int not null", [](int row) { return QByteArray::number(row * 1000); }},
    {"decimal(12,2) not null default 0", [](int row) { return QByteArray::number(row) + ".25"; }},
    {"datetime null",
     [](int row) { return "'2024-03-1" + QByteArray::number(row % 10) + "T08:30:00'"; }},
    {"varchar(20) null",
     [](int row) {
         return row % 3 == 0 ? QByteArray("null") : "'code " + QByteArray::number(row) + "'";
     }},
    {"bit not null", [](int row) { return QByteArray::number(row % 2); }},
    {"float null", [](int row) { return QByteArray::number(row) + ".5"; }},
    {"bigint null", [](int row) { return "90000000" + QByteArray::number(row); }},
    {"uniqueidentifier null",
     [](int row) {
         return "'6F9619FF-8B86-D011-B42D-00C04FC9" + QByteArray::number(1000 + row) + "'";
     }},
    {"date null", [](int row) { return "'2023-11-1" + QByteArray::number(row % 10) + "'"; }},
};

void Fill(bench::BareConnection& connection, const QByteArray& table, int columns) {
    const auto kindOf = [](int column) { return Kinds[column % std::size(Kinds)]; };
    QByteArray definition = "id int not null primary key";
    for (int i = 1; i < columns; ++i)
        definition += ", column_" + QByteArray::number(i) + ' ' + kindOf(i).type;
    connection.Execute("create table " + table + " (" + definition + ")");
    connection.Execute("create index " + table + "_more on " + table + " (column_1, column_2)");
    for (int row = 1; row <= Rows; ++row) {
        QByteArray values = QByteArray::number(row);
        for (int i = 1; i < columns; ++i) values += ", " + kindOf(i).value(row);
        connection.Execute("insert into " + table + " values (" + values + ")");
    }
}

class ClickBench {
  public:
    explicit ClickBench(int port) : port_(port) {
        window_.DoView(bench::ClientString(port));
        bench::PaintWatch({tree_.viewport()}).Wait();
        tree_.Nodes().Item(QStringLiteral("Tables")).SetExpanded(true);
    }

    bool Compare(const Shape& shape) {
        Click(shape.tables[1]);
        bench::BareClick bare(bench::BareString(port_, "mirel"), rows_);
        std::vector<Cost> bareCosts, costs;
        for (int round = 0; round < shape.rounds; ++round) {
            const QByteArray table = shape.tables[round % 2];
            int rows = 0;
            bareCosts.push_back(Measure([&] { rows = bare.Run(table); }));
            costs.push_back(Click(table));
            if (rows != Rows || !Shows(shape.columns))
                throw std::runtime_error("cells are missing");
        }
        const Cost floor = bench::Median(bareCosts);
        const Cost ours = bench::Median(costs);
        std::printf("# bare: %.2f ms CPU, %.2f ms elapsed; ours %.2f ms, %.2f ms\n",
                    floor.cpu * 1e3, floor.elapsed * 1e3, ours.cpu * 1e3, ours.elapsed * 1e3);
        return bench::Report(shape.report, ours, floor, shape.limit);
    }

  private:
    // To the last pane painted; finding the node is no part of it.
    Cost Click(const QString& table) {
        const QModelIndex node =
            tree_.model()
                ->match(tree_.model()->index(0, 0), Qt::DisplayRole, table, 1,
                        Qt::MatchExactly | Qt::MatchCaseSensitive | Qt::MatchRecursive)
                .value(0);
        tree_.scrollTo(node);
        QCoreApplication::processEvents();
        const QPoint at = tree_.visualRect(node).center();
        return Measure([&] {
            bench::PaintWatch watch({fields_.viewport(), indexes_.viewport(), &rows_});
            Send(QEvent::MouseButtonPress, at, Qt::LeftButton);
            Send(QEvent::MouseButtonRelease, at, Qt::NoButton);
            watch.Wait();
        });
    }

    void Send(QEvent::Type type, const QPoint& at, Qt::MouseButton held) {
        QMouseEvent event(type, at, tree_.viewport()->mapToGlobal(at), Qt::LeftButton, held,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(tree_.viewport(), &event);
    }

    bool Shows(int columns) const {
        const GridState& state = rows_.State();
        return fields_.model()->rowCount() == columns && indexes_.model()->rowCount() == 2 &&
               state.columns->Count() == columns && state.rows->Count() == Rows &&
               !state.lines.empty();
    }

    int port_;
    bench::TemporaryRegistry home_;
    DatabaseView window_{ado::odbc::OdbcConnectionFactory(), home_.registry};
    forms::TreeView& tree_ = *window_.findChild<forms::TreeView*>();
    forms::ListView& fields_ = *window_.findChild<TableFieldView*>()->findChild<forms::ListView*>();
    forms::ListView& indexes_ =
        *window_.findChild<TableIndexView*>()->findChild<forms::ListView*>();
    KelEditGrid& rows_ = *window_.findChild<KelEditGrid*>();
};

}  // namespace

int main(int argc, char** argv) {
    forms::Application application(argc, argv);
    try {
        const bench::BenchServer server;
        bench::BareConnection connection(bench::BareString(server.Port(), "mirel"));
        for (const Shape& shape : Shapes)
            for (const char* table : shape.tables) Fill(connection, table, shape.columns);
        ClickBench bench(server.Port());
        bool kept = true;
        for (const Shape& shape : Shapes) kept = bench.Compare(shape) && kept;
        return kept ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ClickBench: %s\n", error.what());
        return 2;
    }
}
