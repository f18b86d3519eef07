// RecordsetBench: a record set over a million rows of ten columns against a bare ODBC loop with
// bound columns: stepping through, and reading every value; and how much memory the rows leave. The
// rows come from a process of their own; QUARV_BENCH_SERVER (a connection string of an account) and
// QUARV_BENCH_QUERY name another server and what it is asked.
#include <sql.h>
#include <sqlext.h>

#include <QFile>
#include <array>
#include <cstdlib>
#include <memory>
#include <vector>

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

void Check(SQLRETURN code, const char* what) {
    if (SQL_SUCCEEDED(code)) return;
    std::fprintf(stderr, "RecordsetBench: %s failed\n", what);
    std::exit(2);
}

// The C type that a program would bind a column to by hand.
struct Binding {
    SQLSMALLINT type;
    SQLLEN width;
};

Binding BindingOf(SQLSMALLINT sqlType, SQLULEN size) {
    switch (sqlType) {
        case SQL_BIT:
        case SQL_TINYINT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
            return {SQL_C_SBIGINT, 8};
        case SQL_REAL:
        case SQL_FLOAT:
        case SQL_DOUBLE:
            return {SQL_C_DOUBLE, 8};
        case SQL_DECIMAL:
        case SQL_NUMERIC:
            return {SQL_C_CHAR, 64};
        case SQL_TYPE_DATE:
            return {SQL_C_TYPE_DATE, sizeof(SQL_DATE_STRUCT)};
        case SQL_TYPE_TIMESTAMP:
            return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
        default:
            return {SQL_C_WCHAR, static_cast<SQLLEN>(size + 1) * 2};
    }
}

// A connection opened with nothing but ODBC.
class Bare {
  public:
    explicit Bare(const QString& connectionString) {
        Check(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_), "environment");
        Check(SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION,
                            reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0),
              "version");
        Check(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_), "connection");
        QByteArray text = connectionString.toUtf8();
        Check(SQLDriverConnect(connection_, nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                               SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
              "connect");
    }
    ~Bare() {
        SQLDisconnect(connection_);
        SQLFreeHandle(SQL_HANDLE_DBC, connection_);
        SQLFreeHandle(SQL_HANDLE_ENV, environment_);
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    // Runs `query` with every column bound; how many rows there were.
    int Loop(const QString& query) {
        SQLHSTMT statement = nullptr;
        Check(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement), "statement");
        QByteArray text = query.toUtf8();
        Check(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS),
              "execute");
        const auto buffers = Bind(statement);
        int rows = 0;
        while (SQL_SUCCEEDED(SQLFetch(statement))) ++rows;
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        return rows;
    }

  private:
    struct Buffer {
        std::vector<char> bytes;
        SQLLEN indicator = 0;
    };

    static std::vector<std::unique_ptr<Buffer>> Bind(SQLHSTMT statement) {
        SQLSMALLINT count = 0;
        Check(SQLNumResultCols(statement, &count), "columns");
        std::vector<std::unique_ptr<Buffer>> buffers;
        for (SQLUSMALLINT i = 1; i <= count; ++i) {
            std::array<SQLCHAR, 256> name{};
            SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
            SQLULEN size = 0;
            Check(SQLDescribeCol(statement, i, name.data(), name.size(), &length, &type, &size,
                                 &digits, &nullable),
                  "describe");
            const Binding binding = BindingOf(type, size);
            auto buffer = std::make_unique<Buffer>();
            buffer->bytes.resize(static_cast<std::size_t>(binding.width));
            Check(SQLBindCol(statement, i, binding.type, buffer->bytes.data(), binding.width,
                             &buffer->indicator),
                  "bind");
            buffers.push_back(std::move(buffer));
        }
        return buffers;
    }

    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
};

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
    Bare bare(ado::ConnectionSettings::Read(connectionString).ForOdbc().Text());
    const auto connection = ado::odbc::OdbcConnectionFactory()();
    connection->SetCommandTimeout(0);
    std::vector<Cost> bareCosts, stepCosts, readCosts;
    int expected = 0, stepped = 0, read = 0;
    double before = 0;
    for (int round = 0; round < Rounds; ++round) {
        bareCosts.push_back(bench::Measure([&] { expected = bare.Loop(query); }));
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
    } catch (const quarv::Error& error) {
        std::fprintf(stderr, "RecordsetBench: %s\n", error.what());
        return 2;
    }
}
