// The program with the fake engine, for tests that need processes: its data directory remembers
// nothing.
#include "FakeEngine.h"
#include "base/Error.h"
#include "localdb/server/CommandLine.h"

int main(int argc, char* argv[]) {
    using namespace quarv::localdb::server;
    QStringList arguments;
    for (int i = 1; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
    EngineAccess engine;
    engine.open = [](const QString& directory) -> std::unique_ptr<quarv::localdb::engine::Server> {
        if (qEnvironmentVariableIsSet("FAKE_ENGINE_FAILS")) {
            throw quarv::Error(945, QStringLiteral("the database in %1 is damaged").arg(directory));
        }
        return std::make_unique<FakeEngine>();
    };
    engine.productVersion = QStringLiteral("16.00.1000");
    return RunCommandLine(arguments, engine);
}
