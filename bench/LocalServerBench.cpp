// LocalServerBench: the embedded server against the storage library in this process: a million rows
// read over the wire (every value, on both sides), single-row inserts, and a point query. The
// server is a process of its own: its work counts in the elapsed times alone, which are what the
// limits are for. The processor times are this side's: the driver's beside the library's.
#include <sqlite3.h>

#include <QDir>
#include <memory>
#include <stdexcept>
#include <string>

#include "BareConnection.h"
#include "BenchServer.h"
#include "Ratio.h"
#include "RoundTrips.h"
#include "WireClient.h"

namespace {

using namespace quarv::bench;

constexpr int RowBits = 20;
constexpr int Rows = 1000000;
constexpr int Inserts = 100000;
constexpr int Queries = 10000;
constexpr int Rounds = 5;
constexpr double ScanLimit = 2.5;
constexpr double InsertLimit = 3;
constexpr double PointLimit = 2;
constexpr size_t BatchBytes = 150;  // of a single-row insert on the wire

// A database file opened with nothing but the storage library.
class BareFile {
  public:
    explicit BareFile(const QString& path) {
        Check(sqlite3_open(path.toUtf8().constData(), &handle_));
        // Column texts are sorted by it; the rows are read as they lie.
        const auto equal = [](void*, int, const void*, int, const void*) { return 0; };
        Check(sqlite3_create_collation(handle_, "tsql", SQLITE_UTF8, nullptr, equal));
    }
    ~BareFile() { sqlite3_close_v2(handle_); }
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;

    void Run(const char* sql) { Check(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr)); }
    sqlite3_stmt* Prepare(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        Check(sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr));
        return statement;
    }
    // Steps over the rows that a query gives and reads each of their values; how many there were.
    int Read(const std::string& sql) {
        sqlite3_stmt* statement = Prepare(sql);
        const int columns = sqlite3_column_count(statement);
        int rows = 0;
        for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
            for (int i = 0; i < columns; ++i) ReadValue(statement, i);
        }
        sqlite3_finalize(statement);
        return rows;
    }
    // What was read, so that the reading cannot be left out.
    double Sum() const { return sum_; }

  private:
    void Check(int result) {
        if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(handle_));
    }

    void ReadValue(sqlite3_stmt* statement, int column) {
        switch (sqlite3_column_type(statement, column)) {
            case SQLITE_INTEGER:
                sum_ += static_cast<double>(sqlite3_column_int64(statement, column));
                break;
            case SQLITE_FLOAT:
                sum_ += sqlite3_column_double(statement, column);
                break;
            default:
                sum_ += *sqlite3_column_text(statement, column);
                break;
        }
    }

    sqlite3* handle_ = nullptr;
    double sum_ = 0;
};

void Expect(int expected, int found) {
    if (expected != found) throw std::runtime_error("the rows are not all there");
}

void Fill(BareConnection& connection) {
    connection.Execute(
        "create table big (id int not null primary key, large bigint, flag bit, ratio float,"
        " price decimal(18,4), name nvarchar(40), remark nvarchar(100), code varchar(20),"
        " made datetime, due date)");
    connection.Execute(
        "insert into big values (0, 5000000000, 1, 0.5, 12.3456, N'name of a row',"
        " N'a remark that is some fifty characters in length', 'code', '2024-02-29 12:34:56.789',"
        " '2024-02-29')");
    for (int bit = 0; bit < RowBits; ++bit) {
        const QByteArray step = QByteArray::number(1 << bit);
        connection.Execute("insert into big select id + " + step + ", large + " + step +
                           ", 1, ratio + " + step + ", price + " + step +
                           ", name, remark, code, made, due from big where id < " +
                           QByteArray::number(Rows - (1 << bit)));
    }
}

bool Scan(const BenchServer& server, BareConnection& connection) {
    const QDir data(server.DataFolder());
    BareFile file(data.filePath(data.entryList({QStringLiteral("bench-*.sqlite")}).value(0)));
    sqlite3_stmt* find = file.Prepare("select object_id from q_objects where name = 'big'");
    if (sqlite3_step(find) != SQLITE_ROW) throw std::runtime_error("the table is not there");
    const std::string query = "select * from t" + std::to_string(sqlite3_column_int64(find, 0));
    sqlite3_finalize(find);
    std::vector<Cost> ours, bare;
    for (int round = 0; round < Rounds; ++round) {
        bare.push_back(Measure([&] { Expect(Rows, file.Read(query)); }));
        ours.push_back(Measure([&] { Expect(Rows, connection.Loop("select * from big")); }));
    }
    if (file.Sum() <= 0) throw std::runtime_error("the rows hold nothing");
    return ReportElapsed("localdb.scan", Median(ours), Median(bare), ScanLimit);
}

void InsertBare(BareFile& file, RoundTrips& trips) {
    file.Run("drop table if exists filled");
    file.Run("create table filled (id integer not null primary key, name text, amount integer)");
    sqlite3_stmt* insert = file.Prepare("insert into filled values (?, ?, ?)");
    file.Run("begin");
    for (int i = 0; i < Inserts; ++i) {
        const std::string name = "name " + std::to_string(i);
        sqlite3_bind_int(insert, 1, i);
        sqlite3_bind_text(insert, 2, name.data(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
        sqlite3_bind_int(insert, 3, 2 * i);
        if (sqlite3_step(insert) != SQLITE_DONE) throw std::runtime_error("a row did not go in");
        sqlite3_reset(insert);
        trips.Once();
    }
    file.Run("commit");
    sqlite3_finalize(insert);
}

void InsertOurs(WireClient& client) {
    client.Run(QStringLiteral("begin transaction"));
    for (int i = 0; i < Inserts; ++i) {
        client.Run(
            QStringLiteral("insert into filled values (%1, N'name %1', %2)").arg(i).arg(2 * i));
    }
    client.Run(QStringLiteral("commit"));
}

bool Insert(WireClient& client) {
    const QTemporaryDir folder;
    BareFile file(folder.filePath(QStringLiteral("bare.sqlite")));
    file.Run("pragma journal_mode = wal");
    file.Run("pragma synchronous = full");
    RoundTrips trips(BatchBytes);
    std::vector<Cost> ours, bare;
    for (int round = 0; round < 3; ++round) {
        bare.push_back(Measure([&] { InsertBare(file, trips); }));
        if (round > 0) client.Run(QStringLiteral("drop table filled"));
        client.Run(QStringLiteral(
            "create table filled (id int not null primary key, name nvarchar(40), amount int)"));
        ours.push_back(Measure([&] { InsertOurs(client); }));
    }
    return ReportElapsed("localdb.insert", Median(ours), Median(bare), InsertLimit);
}

bool PointQuery(WireClient& client) {
    std::vector<Cost> ours, bare;
    unsigned id = 1;
    for (int round = 0; round < Rounds; ++round) {
        bare.push_back(Measure([&] {
            for (int i = 0; i < Queries; ++i) client.Run(QString());
        }));
        ours.push_back(Measure([&] {
            for (int i = 0; i < Queries; ++i) {
                id = id * 1664525U + 1013904223U;
                client.Run(QStringLiteral("select * from big where id = %1").arg(id % Rows));
            }
        }));
    }
    return ReportElapsed("localdb.point_query", Median(ours), Median(bare), PointLimit);
}

}  // namespace

int main() {
    try {
        const BenchServer server;
        BareConnection(BareString(server.Port(), "master")).Execute("create database bench");
        BareConnection connection(BareString(server.Port(), "bench"));
        Fill(connection);
        WireClient client(server.Port(), QStringLiteral("bench"));
        const bool scan = Scan(server, connection);
        const bool insert = Insert(client);
        const bool query = PointQuery(client);
        return scan && insert && query ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "LocalServerBench: %s\n", error.what());
        return 2;
    }
}
