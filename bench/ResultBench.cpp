// ResultBench: reading a large result through the data control against a plain ODBC loop in the
// same run: a million rows of ten columns to the end, the memory that they take against their text,
// and the first rows of five million. The rows come from a process of their own.
#include <optional>
#include <vector>

#include "BareConnection.h"
#include "BareQuery.h"
#include "ProcessMemory.h"
#include "Ratio.h"
#include "RowServer.h"
#include "base/Error.h"
#include "platform/ado/ConnectionSettings.h"
#include "platform/ado/DataControl.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace {

using namespace quarv;
using bench::Cost;

constexpr int Rows = 1000000;
constexpr int Rounds = 5;
constexpr double ReadLimit = 1.3;
constexpr double MemoryLimit = 1.5;  // of the values as text

constexpr int FirstRows = 80;
constexpr int FirstRounds = 50;
constexpr double FirstLimit = 1.3;
constexpr double FirstMemoryLimit = 40;  // MiB

constexpr qint64 Everything = 0x7FFFFFFFFFFFFFFF;
constexpr int All = 0x7FFFFFFF;
const QString LargeQuery = QStringLiteral("select top 1000000 * from rows");
const QString HugeQuery = QStringLiteral("select top 5000000 * from rows");
const QString SmallQuery = QStringLiteral("select top 1 * from rows");

// As the window shows it; a bit takes the least that any window could show.
QString ShownText(const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Null:
            return QStringLiteral("NULL");
        case Value::Kind::Boolean:
            return QStringLiteral("1");
        case Value::Kind::DateTime:
            return value.AsDateTime().ToIsoText();
        default:
            return value.ToText(QLocale::c());
    }
}

double TextMiB(const ado::DataControl& control) {
    double bytes = 0;
    for (qint64 row = 0; row < control.RowCount(); ++row)
        for (int column = 0; column < control.ColumnCount(); ++column)
            bytes += static_cast<double>(ShownText(control.ValueAt(row, column)).toUtf8().size());
    return bytes / (1024 * 1024);
}

void Query(ado::DataControl& control, const QString& query, qint64 last) {
    control.SetRecordSource(query);
    control.Refresh();
    control.ReadTo(last);
}

class ResultBench {
  public:
    explicit ResultBench(QString connectionString)
        : connectionString_(std::move(connectionString)),
          bareString_(ado::ConnectionSettings::Read(connectionString_).ForOdbc().Text().toUtf8()),
          bare_(bareString_) {}

    bool Run() {
        // Before anything else has left memory that could be taken again unseen.
        const bool memory = KeepRows();
        const bool firstMemory = KeepFirstRows();
        const bool read = ReadRows();
        return ReadFirstRows() && read && memory && firstMemory;
    }

  private:
    ado::DataControl Control() const {
        ado::DataControl control(ado::odbc::OdbcConnectionFactory());
        control.SetConnectionString(connectionString_);
        Query(control, SmallQuery, Everything);  // an idle connection from here on
        return control;
    }

    bool KeepRows() const {
        ado::DataControl control = Control();
        const bench::ProcessMemory memory;
        Query(control, LargeQuery, Everything);
        const double kept = memory.Growth();
        const double peak = memory.PeakGrowth();
        if (control.RowCount() != Rows) throw std::runtime_error("rows are missing");
        const double text = TextMiB(control);
        std::printf("# %.1f MiB of text; %.1f MiB kept, at most %.1f MiB\n", text, kept, peak);
        const bool keeps = bench::ReportMemory("result.memory", kept / text, MemoryLimit);
        return bench::ReportMemory("result.memory_peak", peak / text, MemoryLimit) && keeps;
    }

    bool KeepFirstRows() const {
        ado::DataControl control = Control();
        const bench::ProcessMemory memory;
        Query(control, HugeQuery, FirstRows - 1);
        return bench::ReportMemory("result.first_rows_memory_mib", memory.PeakGrowth(),
                                   FirstMemoryLimit);
    }

    bool ReadRows() {
        std::vector<Cost> bareCosts, boundCosts, costs;
        for (int round = 0; round < Rounds; ++round) {
            int rows = 0, bound = 0;
            bareCosts.push_back(bench::Measure(
                [&] { rows = bench::BareQuery(bare_, LargeQuery.toUtf8()).Read(All); }));
            boundCosts.push_back(bench::Measure([&] { bound = bare_.Loop(LargeQuery.toUtf8()); }));
            ado::DataControl control = Control();
            costs.push_back(bench::Measure([&] { Query(control, LargeQuery, Everything); }));
            if (rows != Rows || bound != Rows || control.RowCount() != Rows)
                throw std::runtime_error("rows are missing");
        }
        const Cost bare = bench::Median(bareCosts);
        const Cost bound = bench::Median(boundCosts);
        const Cost ours = bench::Median(costs);
        std::printf(
            "# bare: %.2f s CPU, %.2f s elapsed; with bound columns %.2f s, %.2f s; "
            "ours %.2f s, %.2f s\n",
            bare.cpu, bare.elapsed, bound.cpu, bound.elapsed, ours.cpu, ours.elapsed);
        return bench::Report("result.read", ours, bare, ReadLimit);
    }

    bool ReadFirstRows() {
        std::vector<Cost> bareCosts, costs;
        for (int round = 0; round < FirstRounds; ++round) {
            bareCosts.push_back(ReadFirstRowsBare());
            ado::DataControl control = Control();
            costs.push_back(bench::Measure([&] { Query(control, HugeQuery, FirstRows - 1); }));
            if (control.RowCount() != FirstRows) throw std::runtime_error("rows are missing");
        }
        const Cost bare = bench::Median(bareCosts);
        const Cost ours = bench::Median(costs);
        std::printf("# bare: %.0f us CPU, %.0f us elapsed; ours %.0f us, %.0f us\n", bare.cpu * 1e6,
                    bare.elapsed * 1e6, ours.cpu * 1e6, ours.elapsed * 1e6);
        return bench::Report("result.first_rows", ours, bare, FirstLimit);
    }

    // What was not read is given up behind the measurement, as the data control does.
    Cost ReadFirstRowsBare() const {
        bench::BareConnection connection(bareString_);
        bench::BareQuery(connection, SmallQuery.toUtf8()).Read(All);
        std::optional<bench::BareQuery> query;
        int rows = 0;
        const Cost cost = bench::Measure([&] {
            query.emplace(connection, HugeQuery.toUtf8());
            rows = query->Read(FirstRows);
        });
        if (rows != FirstRows) throw std::runtime_error("rows are missing");
        return cost;
    }

    QString connectionString_;
    QByteArray bareString_;
    bench::BareConnection bare_;
};

}  // namespace

int main() {
    try {
        const bench::RowServer rows(Rows);
        const QString text =
            QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1,%1;User Id=a;Password=b");
        return ResultBench(text.arg(rows.Port())).Run() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ResultBench: %s\n", error.what());
        return 2;
    }
}
