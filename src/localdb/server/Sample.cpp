#include "localdb/server/Sample.h"

#include <QFile>

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

// Stands while the sample is in the making, a kill included.
class Mark {
  public:
    explicit Mark(const QString& path) : path_(path) {}

    bool Stands() const { return QFile::exists(path_); }
    bool Set() const { return QFile(path_).open(QIODevice::WriteOnly); }
    void Clear() const { QFile::remove(path_); }

  private:
    QString path_;
};

class Maker {
  public:
    Maker(engine::Server& server, const EngineAccess& engine)
        : server_(server), engine_(engine), session_(server.NewSession(QStringLiteral("sa"))) {}

    void Drop() {
        if (!server_.HasDatabase(engine_.sampleName)) return;
        session_->UseDatabase(QStringLiteral("master"));
        Run(QStringLiteral("DROP DATABASE [%1]").arg(engine_.sampleName), QStringLiteral("drop"));
    }

    void Make() {
        Run(QStringLiteral("CREATE DATABASE [%1]").arg(engine_.sampleName),
            QStringLiteral("create"));
        session_->UseDatabase(engine_.sampleName);
        int number = 0;
        for (const QString& batch : engine_.sampleBatches) {
            Run(batch, QStringLiteral("batch %1").arg(++number));
        }
    }

  private:
    void Run(const QString& batch, const QString& what) {
        ErrorSink sink;
        session_->RunBatch(batch, sink);
        if (!sink.Failed()) return;
        throw ServerError(ServerError::Sample, engine_.sampleName,
                          what + QStringLiteral(", ") + sink.Text());
    }

    engine::Server& server_;
    const EngineAccess& engine_;
    std::unique_ptr<engine::Session> session_;
};

}  // namespace

std::unique_ptr<engine::Server> OpenWithSample(const EngineAccess& engine,
                                               const QString& dataDirectory) {
    auto server = engine.open(dataDirectory);
    const Mark mark(dataDirectory + QStringLiteral("/.sample-unfinished"));
    if (engine.sampleName.isEmpty()) return server;
    if (server->HasDatabase(engine.sampleName) && !mark.Stands()) return server;
    if (!mark.Set()) {
        throw ServerError(ServerError::Sample, engine.sampleName,
                          QStringLiteral("the data directory cannot be written"));
    }
    Maker maker(*server, engine);
    try {
        maker.Drop();
        maker.Make();
    } catch (const Error&) {
        maker.Drop();
        mark.Clear();
        throw;
    }
    mark.Clear();
    return server;
}

}  // namespace quarv::localdb::server
