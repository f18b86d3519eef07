#include "FakeEngine.h"

#include <QMutexLocker>
#include <QThread>
#include <array>
#include <new>
#include <string>

#include "Datums.h"
#include "base/Error.h"

namespace quarv::localdb::server {

namespace {

using engine::Column;
using engine::Datum;
using engine::ResultSink;
using engine::SqlType;
using engine::StatementKind;
using engine::TypeKind;

Column NewColumn(const char* name, TypeKind kind, int32_t length = 0) {
    Column column;
    column.name = QString::fromLatin1(name);
    column.type.kind = kind;
    column.type.length = length;
    return column;
}

void BeginTwoColumns(ResultSink& sink) {
    const std::array columns{NewColumn("id", TypeKind::Int),
                             NewColumn("name", TypeKind::NVarChar, 4000)};
    sink.BeginRows(columns);
}

engine::Message NewMessage(int number, int severity, const char* text) {
    engine::Message message;
    message.number = number;
    message.severity = severity;
    message.text = QString::fromLatin1(text);
    message.line = 2;
    return message;
}

// Sends rows until `count` are sent (-1: no end) or the client wants no more.
int64_t SendRows(ResultSink& sink, int64_t count, std::string_view text,
                 std::atomic<int64_t>& counter) {
    BeginTwoColumns(sink);
    int64_t sent = 0;
    while (sent != count && !sink.Cancelled()) {
        const std::array row{Whole(sent), Text(text)};
        sink.Row(row);
        ++sent;
        ++counter;
    }
    return sent;
}

}  // namespace

class FakeSession final : public engine::Session {
  public:
    FakeSession(FakeEngine& owner, int id) : owner_(owner), id_(id) { ++owner_.sessions_; }
    ~FakeSession() override { --owner_.sessions_; }

    QString Database() const override { return database_; }
    void UseDatabase(const QString& name) override {
        if (!owner_.HasDatabase(name)) throw Error(911, QStringLiteral("no such database"));
        database_ = name;
    }
    void RunBatch(const QString& sql, ResultSink& sink) override;
    void RunProcedure(const QString& name, const std::vector<engine::Argument>& arguments,
                      ResultSink& sink) override;
    void SetClient(const QString& hostName, const QString& appName) override {
        const QMutexLocker lock(&owner_.mutex_);
        owner_.client_ = hostName + u'/' + appName;
    }
    void BeginTransaction(ResultSink& sink, const QString& name, int isolation) override {
        owner_.Note(QStringLiteral("begin:%1/%2").arg(name).arg(isolation));
        sink.TransactionBegan(0x0807060504030201);
    }
    void SaveTransaction(ResultSink&, const QString& name) override {
        owner_.Note(QStringLiteral("save:") + name);
    }
    void CommitTransaction(ResultSink& sink) override {
        sink.TransactionEnded(0x0807060504030201, true);
    }
    void RollbackTransaction(ResultSink& sink, const QString& name) override {
        owner_.Note(QStringLiteral("rollback:") + name);
        sink.TransactionEnded(0x0807060504030201, false);
    }
    void Reset(const QString& database) override { database_ = database; }
    int Id() const override { return id_; }

  private:
    FakeEngine& owner_;
    int id_;
    QString database_ = QStringLiteral("master");
};

void FakeSession::RunBatch(const QString& sql, ResultSink& sink) {
    owner_.Note(QStringLiteral("batch:") + sql);
    const QString verb = sql.trimmed().section(u' ', 0, 0);
    if (verb == u"rows") {
        const int64_t count = sql.section(u' ', 1, 1).toLongLong();
        sink.StatementDone(StatementKind::Select, SendRows(sink, count, "text", owner_.rows_),
                           false);
    } else if (verb == u"wide") {
        const std::string text(3000, 'x');
        sink.StatementDone(StatementKind::Select, SendRows(sink, 100, text, owner_.rows_), false);
    } else if (verb == u"endless") {
        SendRows(sink, -1, "text", owner_.rows_);
    } else if (verb == u"busy") {
        while (!sink.Cancelled()) QThread::msleep(1);
    } else if (verb == u"error") {
        sink.Say(NewMessage(208, 16, "Invalid object name 'x'."));
        sink.StatementDone(StatementKind::Select, -1, true);
    } else if (verb == u"fatal") {
        sink.Say(NewMessage(50000, 20, "over"));
        sink.StatementDone(StatementKind::Other, -1, true);
    } else if (verb == u"aborted") {
        sink.ProcedureBegins();
        sink.StatementDone(StatementKind::Update, 3, false);
        sink.ProcedureAborted();
        sink.StatementDone(StatementKind::Select, 1, false);
    } else if (verb == u"now") {
        sink.StatementDone(StatementKind::Update, 3, false);
        sink.Say(NewMessage(50000, 0, "now"));
        sink.SendNow();
        while (!sink.Cancelled()) QThread::msleep(1);
    } else if (verb == u"broken") {
        SendRows(sink, 2, "text", owner_.rows_);
        sink.Say(NewMessage(8134, 16, "Divide by zero error encountered."));
        sink.StatementDone(StatementKind::Select, 2, true);
    } else if (verb == u"print") {
        sink.Say(NewMessage(0, 0, "hello"));
    } else if (verb == u"nulls") {
        BeginTwoColumns(sink);
        const std::array row{Datum{}, Text("b")};
        sink.Row(row);
        sink.StatementDone(StatementKind::Select, 1, false);
    } else if (verb == u"overlong") {
        BeginTwoColumns(sink);
        const std::string text(40'000, 'x');
        const std::array row{Whole(1), Text(text)};
        sink.Row(row);
        sink.StatementDone(StatementKind::Select, 1, false);
    } else if (verb == u"use") {
        sink.DatabaseChanged(sql.section(u' ', 1, 1), database_);
        database_ = sql.section(u' ', 1, 1);
        sink.StatementDone(StatementKind::Other, -1, false);
    } else if (verb == u"exec") {
        sink.ProcedureBegins();
        sink.StatementDone(StatementKind::Update, 3, false);
        sink.ReturnStatus(4);
        sink.StatementDone(StatementKind::Execute, -1, false);
    } else if (verb == u"memory") {
        throw std::bad_alloc();
    }
}

void FakeSession::RunProcedure(const QString& name, const std::vector<engine::Argument>& arguments,
                               ResultSink& sink) {
    QStringList texts;
    for (const engine::Argument& argument : arguments) {
        texts.append(argument.name + u'=' +
                     (argument.null ? QStringLiteral("null") : argument.text));
    }
    owner_.Note(QStringLiteral("call:%1(%2)").arg(name, texts.join(u',')));
    if (name == u"missing") {
        sink.Say(NewMessage(2812, 16, "Could not find stored procedure 'missing'."));
        sink.StatementDone(StatementKind::Other, -1, true);
        return;
    }
    sink.ProcedureBegins();
    if (name == u"sp_executesql") {
        RunBatch(arguments.empty() ? QString() : arguments[0].text, sink);
    } else {
        sink.StatementDone(StatementKind::Select, SendRows(sink, 1, "row", owner_.rows_), false);
    }
    sink.ProcedureBegins();
    sink.StatementDone(StatementKind::Update, 5, false);
    sink.ReturnStatus(1);
    sink.ReturnStatus(-6);
    for (const engine::Argument& argument : arguments) {
        if (!argument.output) continue;
        SqlType type;
        type.kind = TypeKind::Int;
        sink.ReturnValue(argument.name, type, Whole(77));
    }
}

std::unique_ptr<engine::Session> FakeEngine::NewSession(const QString&) {
    return std::make_unique<FakeSession>(*this, nextId_++);
}

bool FakeEngine::HasDatabase(const QString& name) const {
    return name == u"master" || name == u"mirel";
}

QString FakeEngine::Client() const {
    const QMutexLocker lock(&mutex_);
    return client_;
}

QStringList FakeEngine::Ran() const {
    const QMutexLocker lock(&mutex_);
    return ran_;
}

void FakeEngine::Note(const QString& text) {
    const QMutexLocker lock(&mutex_);
    ran_.append(text);
}

}  // namespace quarv::localdb::server
