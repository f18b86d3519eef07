// ScriptBench: script files run from the disk against a bare ODBC loop that has their batches in
// memory: ten thousand small batches, fifty megabytes of long lines, and a batch whose million rows
// nobody reads. The server is a process of its own that answers at once whatever it is sent.
#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>
#include <vector>

#include "BareConnection.h"
#include "Ratio.h"
#include "RowServer.h"
#include "platform/ado/ConnectionSettings.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "query/ScriptRunner.h"

namespace {

using namespace quarv;
using bench::Cost;

constexpr int SmallBatches = 10000;
constexpr int LargeBatches = 48;
constexpr int LongLine = 1024 * 1024;
constexpr int ShortLines = 600;  // of a large batch
constexpr int Rows = 1000000;
constexpr int Rounds = 9;
constexpr double Limit = 1.3;
// The bare loop leaves it to the driver to pass over rows.
constexpr double UnreadLimit = 1.5;

QStringList Small() {
    QStringList batches;
    for (int i = 1; i <= SmallBatches; ++i)
        batches.append(QStringLiteral("insert into t (a, b) values (%1, N'name %1')\r\n").arg(i));
    return batches;
}

QStringList Large() {
    const QString line =
        QStringLiteral("insert t values (N'sixty characters of a statement: Köln')");
    const QString lines = (line + QStringLiteral("\r\n")).repeated(ShortLines);
    const QString longLine =
        QStringLiteral("insert t values (N'") + QString(LongLine, u'x') + QStringLiteral("')\r\n");
    return QStringList(LargeBatches, lines + longLine);
}

// The empty batch behind the last "GO" is not sent.
void Save(const QString& path, const QStringList& batches) {
    QFile file(path);
    const QString separator = QStringLiteral("GO\r\n");
    const QByteArray bytes = (batches.join(separator) + separator).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("the script could not be written");
}

bool Compare(const char* name, const bench::RowServer& server, const QStringList& batches,
             double limit = Limit) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("script.sql"));
    Save(path, batches);
    const QString text =
        QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1,%1;User Id=a;Password=b")
            .arg(server.Port());
    bench::BareConnection bare(ado::ConnectionSettings::Read(text).ForOdbc().Text().toUtf8());
    const auto connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(text);
    std::vector<Cost> bareCosts, costs;
    int run = 0;
    for (int round = 0; round < Rounds; ++round) {
        bareCosts.push_back(bench::Measure([&] {
            for (const QString& batch : batches) bare.ExecuteUtf16(batch);
        }));
        costs.push_back(bench::Measure(
            [&] { ScriptRunner(connection).Run(path, [&run](int done, int) { run = done; }); }));
        if (run != batches.size() + 1) throw std::runtime_error("not every batch was run");
    }
    const Cost loop = bench::Median(bareCosts);
    std::printf("# bare loop: %.3f s CPU, %.3f s elapsed\n", loop.cpu, loop.elapsed);
    return bench::Report(name, bench::Median(costs), loop, limit);
}

}  // namespace

int main() {
    try {
        const bench::RowServer changes(0);
        const bench::RowServer rows(Rows);
        const bool small = Compare("script.small_batches", changes, Small());
        const bool large = Compare("script.long_lines", changes, Large());
        const bool unread = Compare("script.unread_rows", rows,
                                    {QStringLiteral("select * from rows\r\n")}, UnreadLimit);
        return small && large && unread ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ScriptBench: %s\n", error.what());
        return 2;
    }
}
