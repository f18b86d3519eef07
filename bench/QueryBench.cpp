// QueryBench: from F5 to the first rows painted of a result of five million, against bare ODBC to
// the same rows and a table view that paints the same cells, and the memory that it takes; and a
// million rows scrolled to their end by one key, against a bare loop.
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableView>
#include <QWindow>
#include <optional>
#include <stdexcept>
#include <vector>

#include "BareConnection.h"
#include "BareQuery.h"
#include "ProcessMemory.h"
#include "Ratio.h"
#include "RowServer.h"
#include "TextModel.h"
#include "db/SQLServerConnection.h"
#include "platform/ado/ConnectionSettings.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/Application.h"
#include "platform/forms/DataGrid.h"
#include "platform/forms/TextBox.h"
#include "query/QueryView.h"

namespace {

using namespace quarv;
using bench::Cost;
using bench::Measure;

constexpr int Rounds = 40;
constexpr double FirstLimit = 1.3;
constexpr double MemoryLimit = 40;  // MiB

constexpr int LargeRows = 1000000;
constexpr int LargeRounds = 3;
constexpr double LargeLimit = 1.3;

const QString HugeQuery = QStringLiteral("select top 5000000 * from rows");
const QString LargeQuery = QStringLiteral("select top 1000000 * from rows");
const QString SmallQuery = QStringLiteral("select top 1 * from rows");

// Everything that is to be seen of `view` is painted when it returns.
void Paint(QTableView& view) {
    QCoreApplication::processEvents();
    view.viewport()->repaint();
    view.horizontalHeader()->viewport()->repaint();
    view.verticalHeader()->viewport()->repaint();
}

// A table view of the size of the grid, with its columns.
void Resemble(QTableView& table, const QTableView& grid) {
    table.resize(grid.size());
    for (int column = 0; column < table.model()->columnCount(); ++column)
        table.setColumnWidth(column, grid.columnWidth(column));
    table.verticalHeader()->setDefaultSectionSize(grid.rowHeight(0));
    table.show();
}

class QueryBench {
  public:
    explicit QueryBench(const QString& connectionString)
        : db_(std::make_shared<SQLServerConnection>(ado::odbc::OdbcConnectionFactory())),
          bareString_(ado::ConnectionSettings::Read(connectionString).ForOdbc().Text().toUtf8()) {
        db_->InitOpen(connectionString);
        window_.DoModeless(db_, SmallQuery);
        while (!window_.windowHandle()->isExposed())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        window_.RunIt();
        Paint(Grid());
    }

    bool Run() {
        const bool memory = CompareMemory();
        std::vector<Cost> bareCosts, costs;
        const auto texts = bench::TextModel::Of(*Grid().model());
        QTableView table;
        table.setModel(texts.get());
        Resemble(table, Grid());
        const int rows = texts->rowCount();
        for (int round = 0; round < Rounds; ++round) {
            bareCosts.push_back(RunBare(rows, *texts, table));
            costs.push_back(RunOurs());
            if (Grid().model()->rowCount() != rows) throw std::runtime_error("other rows");
        }
        const Cost bare = bench::Median(bareCosts);
        const Cost ours = bench::Median(costs);
        std::printf("# %d rows; bare: %.0f us CPU, %.0f us elapsed; ours %.0f us, %.0f us\n", rows,
                    bare.cpu * 1e6, bare.elapsed * 1e6, ours.cpu * 1e6, ours.elapsed * 1e6);
        const bool first = bench::Report("query.first_rows", ours, bare, FirstLimit);
        return CompareScrolling() && first && memory;
    }

  private:
    forms::DataGrid& Grid() {
        return *window_.findChild<forms::DataGrid*>(QStringLiteral("Results"));
    }

    void SetQuery(const QString& query) {
        window_.findChild<forms::TextBox*>(QStringLiteral("Query"))->SetText(query);
    }

    // The result stays, unread but for its first rows.
    bool CompareMemory() {
        SetQuery(HugeQuery);
        const bench::ProcessMemory memory;
        window_.RunIt();
        Paint(Grid());
        return bench::ReportMemory("query.first_rows_memory_mib", memory.PeakGrowth(), MemoryLimit);
    }

    bool CompareScrolling() {
        std::vector<Cost> bareCosts, costs;
        bench::BareConnection connection(bareString_);
        for (int round = 0; round < LargeRounds; ++round) {
            int rows = 0;
            bareCosts.push_back(Measure([&] {
                rows = bench::BareQuery(connection, LargeQuery.toUtf8()).Read(2 * LargeRows);
            }));
            if (rows != LargeRows) throw std::runtime_error("rows are missing");
            SetQuery(SmallQuery);
            window_.RunIt();
            SetQuery(LargeQuery);
            costs.push_back(Measure([&] {
                window_.RunIt();
                PressEnd();
                Paint(Grid());
            }));
            if (Grid().model()->rowCount() != LargeRows) throw std::runtime_error("other rows");
        }
        return bench::Report("query.scroll_to_end", bench::Median(costs), bench::Median(bareCosts),
                             LargeLimit);
    }

    void PressEnd() {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_End, Qt::ControlModifier);
        QCoreApplication::sendEvent(&Grid(), &key);
    }

    // The earlier result is dropped and an idle connection is there when it begins.
    Cost RunOurs() {
        SetQuery(SmallQuery);
        window_.RunIt();
        SetQuery(HugeQuery);
        Paint(Grid());
        return Measure([&] {
            window_.RunIt();
            Paint(Grid());
        });
    }

    // What was not read is given up behind the measurement.
    Cost RunBare(int rows, bench::TextModel& texts, QTableView& table) const {
        bench::BareConnection connection(bareString_);
        bench::BareQuery(connection, SmallQuery.toUtf8()).Read(1);
        std::optional<bench::BareQuery> query;
        int read = 0;
        const Cost cost = Measure([&] {
            query.emplace(connection, HugeQuery.toUtf8());
            read = query->Read(rows);
            texts.Renew();
            Paint(table);
        });
        if (read != rows) throw std::runtime_error("rows are missing");
        return cost;
    }

    std::shared_ptr<SQLServerConnection> db_;
    QByteArray bareString_;
    QueryView window_{ado::odbc::OdbcConnectionFactory()};
};

}  // namespace

int main(int argc, char** argv) {
    forms::Application application(argc, argv);
    try {
        const bench::RowServer rows(1);
        const QString text =
            QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1,%1;User Id=a;Password=b");
        return QueryBench(text.arg(rows.Port())).Run() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "QueryBench: %s\n", error.what());
        return 2;
    }
}
