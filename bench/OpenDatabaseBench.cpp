// OpenDatabaseBench: from DoView to the painted window on 10,000 tables and 5,000 procedures,
// against a bare ODBC connection, the two catalogue calls with every row fetched, and an empty
// window. The server is ours, started by hand on a folder of its own; its time is in both elapsed
// times and in neither CPU time.
#include <sql.h>
#include <sqlext.h>

#include <QApplication>
#include <QPaintEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <cstdlib>
#include <functional>

#include "BenchServer.h"
#include "Ratio.h"
#include "app/DatabaseView.h"
#include "base/Error.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/Application.h"

namespace {

using quarv::bench::BenchServer;

constexpr int Tables = 10000;
constexpr int Procedures = 5000;
constexpr int Rounds = 7;
constexpr double Limit = 1.3;

// Runs the event loop until the window has been painted.
class PaintWatch : public QObject {
  public:
    static void Wait(QWidget& window) {
        PaintWatch watch;
        window.installEventFilter(&watch);
        while (!watch.painted_) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) painted_ = true;
        return false;
    }

  private:
    bool painted_ = false;
};

void Check(SQLRETURN code, const char* what) {
    if (SQL_SUCCEEDED(code)) return;
    std::fprintf(stderr, "OpenDatabaseBench: %s failed\n", what);
    std::exit(2);
}

// One bare ODBC connection.
class BareConnection {
  public:
    explicit BareConnection(const QByteArray& text) {
        Check(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_), "SQLAllocHandle");
        Check(SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION,
                            reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0),
              "SQLSetEnvAttr");
        Check(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_), "SQLAllocHandle");
        QByteArray string = text;
        Check(SQLDriverConnect(connection_, nullptr, reinterpret_cast<SQLCHAR*>(string.data()),
                               SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT),
              "SQLDriverConnect");
    }
    ~BareConnection() {
        SQLDisconnect(connection_);
        SQLFreeHandle(SQL_HANDLE_DBC, connection_);
        SQLFreeHandle(SQL_HANDLE_ENV, environment_);
    }
    BareConnection(const BareConnection&) = delete;
    BareConnection& operator=(const BareConnection&) = delete;

    void Execute(const QByteArray& sql) {
        QByteArray text = sql;
        WithStatement([&text](SQLHSTMT statement) {
            Check(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS),
                  "SQLExecDirect");
        });
    }

    // Fetches every row of a catalogue call, its name column bound; the number of rows.
    int Count(const std::function<SQLRETURN(SQLHSTMT)>& catalogueCall) {
        int rows = 0;
        WithStatement([&](SQLHSTMT statement) {
            Check(catalogueCall(statement), "the catalogue call");
            SQLWCHAR name[129];
            SQLLEN length = 0;
            Check(SQLBindCol(statement, 3, SQL_C_WCHAR, name, sizeof name, &length), "SQLBindCol");
            while (SQL_SUCCEEDED(SQLFetch(statement))) ++rows;
        });
        return rows;
    }

  private:
    void WithStatement(const std::function<void(SQLHSTMT)>& use) {
        SQLHSTMT statement = nullptr;
        Check(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement), "SQLAllocHandle");
        use(statement);
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
    }

    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
};

QByteArray BareString(const BenchServer& server) {
    return "Driver={FreeTDS};Server=127.0.0.1;Port=" + QByteArray::number(server.Port()) +
           ";UID=bench;PWD=bench;Database=mirel;TDS_Version=7.4;ClientCharset=UTF-8;";
}

QString OurString(const BenchServer& server) {
    return QStringLiteral(
               "Provider=sqloledb;Data Source=127.0.0.1,%1;Initial Catalog=mirel;"
               "User Id=bench;Password=bench;")
        .arg(server.Port());
}

void Fill(const BenchServer& server) {
    BareConnection connection(BareString(server));
    for (int i = 0; i < Tables;) {
        QByteArray batch;
        for (int end = i + 200; i < end; ++i)
            batch += "create table bench_table_" + QByteArray::number(i) + " (id int)\n";
        connection.Execute(batch);
    }
    for (int i = 0; i < Procedures; ++i)
        connection.Execute("create procedure bench_procedure_" + QByteArray::number(i) +
                           " as select 1");
}

void OpenBare(const BenchServer& server) {
    {
        BareConnection connection(BareString(server));
        const int tables = connection.Count([](SQLHSTMT s) {
            return SQLTables(s, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0);
        });
        const int procedures = connection.Count(
            [](SQLHSTMT s) { return SQLProcedures(s, nullptr, 0, nullptr, 0, nullptr, 0); });
        if (tables < Tables || procedures < Procedures) {
            std::fprintf(stderr, "OpenDatabaseBench: the server lists too little\n");
            std::exit(2);
        }
    }
    QWidget window;
    window.resize(1280, 800);
    window.show();
    PaintWatch::Wait(window);
}

void OpenOurs(const BenchServer& server) {
    quarv::DatabaseView window(quarv::ado::odbc::OdbcConnectionFactory());
    window.DoView(OurString(server));
    PaintWatch::Wait(window);
}

int Run() {
    const BenchServer server;
    Fill(server);
    OpenBare(server);
    OpenOurs(server);
    std::vector<quarv::bench::Cost> ours;
    std::vector<quarv::bench::Cost> bare;
    for (int i = 0; i < Rounds; ++i) {
        bare.push_back(quarv::bench::Measure([&server] { OpenBare(server); }));
        ours.push_back(quarv::bench::Measure([&server] { OpenOurs(server); }));
    }
    return Report("open_database", Median(ours), Median(bare), Limit) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    quarv::forms::Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        return Run();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "OpenDatabaseBench: %s\n", e.what());
        return 2;
    }
}
