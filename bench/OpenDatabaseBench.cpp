// OpenDatabaseBench: from DoView to the painted window on 10,000 tables and 5,000 procedures,
// against a bare ODBC connection, the two catalogue calls with every row fetched, and an empty
// window. As in the program, each opening is the only one of its process and comes after the dialog
// was shown and what it loads meanwhile was loaded; the bare one comes after another empty window.
// The server is ours, started by hand on a folder of its own; its time is in both elapsed times and
// in neither CPU time.
#include <QApplication>
#include <QProcess>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "BareConnection.h"
#include "BenchServer.h"
#include "PaintWatch.h"
#include "Ratio.h"
#include "TemporaryRegistry.h"
#include "app/DatabaseView.h"
#include "app/WarmUp.h"
#include "db/SQLServerConnectionDetails.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/Application.h"

namespace {

using quarv::bench::BareConnection;
using quarv::bench::BareString;
using quarv::bench::BenchServer;
using quarv::bench::Cost;
using quarv::bench::Measure;
using quarv::bench::Median;
using quarv::bench::PaintWatch;

const QString BareWord = QStringLiteral("--open-bare");
const QString OurWord = QStringLiteral("--open-ours");

constexpr int Tables = 10000;
constexpr int Procedures = 5000;
constexpr int Rounds = 15;
constexpr double Limit = 1.3;

// Ends the bench by way of main, so that its server ends too.
[[noreturn]] void Fail(const std::string& what) {
    throw std::runtime_error(what);
}

void Fill(int port) {
    BareConnection connection(BareString(port, "mirel"));
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

// Leaves the process as it is when the program opens a database.
void ShowDialog() {
    class NoWindow : public quarv::MainWindow {
        void DoView(const QString&) override {}
    };
    quarv::bench::TemporaryRegistry home;
    NoWindow none;
    quarv::SQLServerConnectionDetails dialog(none, quarv::ado::odbc::OdbcConnectionFactory(),
                                             home.registry);
    dialog.Show();
    PaintWatch({&dialog}).Wait();
    quarv::WarmUp();
}

void ShowEmptyWindow() {
    QWidget window;
    window.resize(600, 400);
    window.show();
    PaintWatch({&window}).Wait();
}

Cost OpenBare(int port) {
    std::unique_ptr<BareConnection> connection;
    std::unique_ptr<QWidget> window;
    return Measure([&] {
        connection = std::make_unique<BareConnection>(BareString(port, "mirel"));
        const int tables = connection->Count([](SQLHSTMT s) {
            return SQLTables(s, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0);
        });
        const int procedures = connection->Count(
            [](SQLHSTMT s) { return SQLProcedures(s, nullptr, 0, nullptr, 0, nullptr, 0); });
        if (tables < Tables || procedures < Procedures) Fail("the server lists too little");
        window = std::make_unique<QWidget>();
        window->resize(1400, 800);  // as the main window
        window->show();
        PaintWatch({window.get()}).Wait();
    });
}

Cost OpenOurs(int port) {
    quarv::bench::TemporaryRegistry home;
    std::unique_ptr<quarv::DatabaseView> window;
    return Measure([&] {
        window = std::make_unique<quarv::DatabaseView>(quarv::ado::odbc::OdbcConnectionFactory(),
                                                       home.registry);
        window->DoView(quarv::bench::ClientString(port));
        PaintWatch({window.get()}).Wait();
    });
}

// In the process that opens: prints what it cost.
int Open(void (*before)(), Cost (*open)(int), int port) {
    before();
    const Cost cost = open(port);
    std::printf("%.6f %.6f\n", cost.cpu, cost.elapsed);
    return 0;
}

// A process that opens once, by the word for it.
Cost OpenInProcess(const QString& word, int port) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {word, QString::number(port)});
    if (!process.waitForFinished(120000) || process.exitCode() != 0) Fail("an opening failed");
    const QList<QByteArray> words = process.readAllStandardOutput().trimmed().split(' ');
    if (words.size() != 2) Fail("an opening said nothing");
    return {words[0].toDouble(), words[1].toDouble()};
}

int Compare() {
    const BenchServer server;
    Fill(server.Port());
    OpenInProcess(BareWord, server.Port());
    OpenInProcess(OurWord, server.Port());
    std::vector<Cost> ours;
    std::vector<Cost> bare;
    for (int i = 0; i < Rounds; ++i) {
        bare.push_back(OpenInProcess(BareWord, server.Port()));
        ours.push_back(OpenInProcess(OurWord, server.Port()));
    }
    std::printf("# bare: %.1f ms CPU\n", Median(bare).cpu * 1000);
    return Report("open_database", Median(ours), Median(bare), Limit) ? 0 : 1;
}

int Run(const QStringList& arguments) {
    if (arguments.size() == 3 && arguments[1] == BareWord)
        return Open(ShowEmptyWindow, OpenBare, arguments[2].toInt());
    if (arguments.size() == 3 && arguments[1] == OurWord)
        return Open(ShowDialog, OpenOurs, arguments[2].toInt());
    return Compare();
}

}  // namespace

int main(int argc, char** argv) {
    quarv::forms::Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        return Run(QCoreApplication::arguments());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "OpenDatabaseBench: %s\n", e.what());
        return 2;
    }
}
