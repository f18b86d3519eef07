// RecordsetBench: a record set over a million rows of ten columns against a bare ODBC loop with
// bound columns: stepping through, and reading every value; and how much memory the rows leave. The
// rows come from a process of their own; QUARV_BENCH_SERVER (a connection string of an account) and
// QUARV_BENCH_QUERY name another server and what it is asked.
#include <QFile>
#include <vector>

#include "BareConnection.h"
#include "Ratio.h"
#include "RowServer.h"
#include "base/Error.h"
#include "platform/ado/ConnectionSettings.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace {

using namespace quarv;
using bench::Cost;

constexpr int Rows = 1000000;
constexpr int Rounds = 3;
constexpr double StepLimit = 1.15;
constexpr double ReadLimit = 2.5;
constexpr double MemoryLimit = 4096;  // KiB

int Step(ado::Connection& connection, const QString& query) {
    const auto rows = connection.Execute(query);
    int count = 0;
    for (; !rows->EOF(); rows->MoveNext()) ++count;
    return count;
}

int ReadAll(ado::Connection& connection, const QString& query) {
    const auto rows = connection.Execute(query);
    const ado::Fields& fields = rows->Fields();
    const int columns = fields.Count();
    int count = 0;
    qint64 nulls = 0;
    for (; !rows->EOF(); rows->MoveNext(), ++count)
        for (int i = 0; i < columns; ++i) nulls += fields[i].Value().IsNull() ? 1 : 0;
    return nulls < 0 ? -1 : count;
}

// Resident memory of this process, in KiB.
double Resident() {
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4;
}

bool ReportMemory(double before, double after) {
    const double growth = after > before ? after - before : 0;
    std::printf("recordset.memory_growth_kib %.0f %.0f %.0f\n", growth, growth, MemoryLimit);
    return growth <= MemoryLimit;
}

bool Run(const QString& connectionString, const QString& query) {
    bench::BareConnection bare(
        ado::ConnectionSettings::Read(connectionString).ForOdbc().Text().toUtf8());
    const auto connection = ado::odbc::OdbcConnectionFactory()();
    connection->SetCommandTimeout(0);
    std::vector<Cost> bareCosts, stepCosts, readCosts;
    int expected = 0, stepped = 0, read = 0;
    double before = 0;
    for (int round = 0; round < Rounds; ++round) {
        bareCosts.push_back(bench::Measure([&] { expected = bare.Loop(query.toUtf8()); }));
        if (round == 0) {
            connection->Open(connectionString);
            before = Resident();
        }
        stepCosts.push_back(bench::Measure([&] { stepped = Step(*connection, query); }));
        readCosts.push_back(bench::Measure([&] { read = ReadAll(*connection, query); }));
        if (stepped != expected || read != expected) {
            std::fprintf(stderr, "RecordsetBench: %d rows, %d stepped over, %d read\n", expected,
                         stepped, read);
            return false;
        }
    }
    const Cost loop = bench::Median(bareCosts);
    std::printf("# %d rows, bare loop: %.2f s CPU, %.2f s elapsed\n", expected, loop.cpu,
                loop.elapsed);
    const bool step = bench::Report("recordset.step", bench::Median(stepCosts), loop, StepLimit);
    const bool values = bench::Report("recordset.read", bench::Median(readCosts), loop, ReadLimit);
    return ReportMemory(before, Resident()) && step && values;
}

}  // namespace

int main() {
    const QString server = qEnvironmentVariable("QUARV_BENCH_SERVER");
    try {
        if (!server.isEmpty())
            return Run(server, qEnvironmentVariable("QUARV_BENCH_QUERY")) ? 0 : 1;
        const bench::RowServer rows(Rows);
        const QString text =
            QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1,%1;User Id=a;Password=b");
        return Run(text.arg(rows.Port()), QStringLiteral("select * from rows")) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "RecordsetBench: %s\n", error.what());
        return 2;
    }
}
