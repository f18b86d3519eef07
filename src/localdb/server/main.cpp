// quarv-localdb: the embedded local server. Puts the engine, its catalogue and the sample together.
#include "localdb/catalog/OpenServer.h"
#include "localdb/sample/SampleScript.h"
#include "localdb/server/CommandLine.h"

int main(int argc, char* argv[]) {
    using namespace quarv::localdb;
    QStringList arguments;
    for (int i = 1; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
    server::EngineAccess engine;
    engine.open = catalog::OpenServer;
    engine.productVersion = engine::Server::ProductVersion();
    engine.sampleName = QStringLiteral("mirel");
    engine.sampleBatches = sample::SampleBatches();
    return server::RunCommandLine(arguments, engine);
}
