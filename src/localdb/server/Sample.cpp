#include "localdb/server/Sample.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

constexpr int FirstErrorSeverity = 11;

// Keeps the first error and passes over everything else.
class ErrorSink final : public engine::ResultSink {
  public:
    void BeginRows(std::span<const engine::Column>) override {}
    void Row(std::span<const engine::Datum>) override {}
    void StatementDone(engine::StatementKind, int64_t, bool failed) override { failed_ |= failed; }
    void Say(const engine::Message& message) override {
        if (message.severity >= FirstErrorSeverity && text_.isEmpty()) {
            text_ = QStringLiteral("line %1: %2").arg(message.line).arg(message.text);
        }
    }
    void DatabaseChanged(const QString&, const QString&) override {}
    void ReturnStatus(int) override {}
    void ReturnValue(const QString&, const engine::SqlType&, const engine::Datum&) override {}
    void TransactionBegan(uint64_t) override {}
    void TransactionEnded(uint64_t, bool) override {}
    bool Cancelled() override { return false; }

    bool Failed() const { return failed_ || !text_.isEmpty(); }
    const QString& Text() const { return text_; }

  private:
    bool failed_ = false;
    QString text_;
};

// A scratch directory that is gone afterwards, and before if an earlier try was cut short.
class Workshop {
  public:
    explicit Workshop(const QString& path) : directory_(path) {
        directory_.removeRecursively();
        directory_.mkpath(QStringLiteral("."));
    }
    ~Workshop() { directory_.removeRecursively(); }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    QString Path() const { return directory_.absolutePath(); }
    QSet<QString> Files() const {
        const QStringList names = directory_.entryList(QDir::Files | QDir::Hidden);
        return {names.begin(), names.end()};
    }

  private:
    QDir directory_;
};

void RunAll(engine::Session& session, const EngineAccess& engine) {
    const auto run = [&](const QString& batch, int number) {
        ErrorSink sink;
        session.RunBatch(batch, sink);
        if (!sink.Failed()) return;
        throw ServerError(ServerError::Sample, engine.sampleName,
                          QStringLiteral("batch %1, %2").arg(number).arg(sink.Text()));
    };
    run(QStringLiteral("CREATE DATABASE [%1]").arg(engine.sampleName), 0);
    session.UseDatabase(engine.sampleName);
    int number = 0;
    for (const QString& batch : engine.sampleBatches) run(batch, ++number);
}

void MakeIn(Workshop& workshop, const EngineAccess& engine, const QString& dataDirectory) {
    QSet<QString> before;
    {
        const auto server = engine.open(workshop.Path());
        before = workshop.Files();
        RunAll(*server->NewSession(QStringLiteral("sa")), engine);
    }
    QSet<QString> made = workshop.Files().subtract(before);
    // A closed database is one file; the rename is what makes it appear, in one step.
    if (made.size() != 1) {
        throw ServerError(ServerError::Sample, engine.sampleName,
                          QStringLiteral("its file was not found"));
    }
    const QString name = *made.begin();
    if (!QFile::rename(workshop.Path() + u'/' + name, dataDirectory + u'/' + name)) {
        throw ServerError(ServerError::Sample, engine.sampleName,
                          QStringLiteral("its file could not be moved into place"));
    }
}

}  // namespace

std::unique_ptr<engine::Server> OpenWithSample(const EngineAccess& engine,
                                               const QString& dataDirectory) {
    auto server = engine.open(dataDirectory);
    if (engine.sampleName.isEmpty() || server->HasDatabase(engine.sampleName)) return server;
    server.reset();
    {
        Workshop workshop(dataDirectory + QStringLiteral("/.sample"));
        MakeIn(workshop, engine, dataDirectory);
    }
    return engine.open(dataDirectory);
}

}  // namespace quarv::localdb::server
