#include "localdb/engine/Frame.h"

#include <QDateTime>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/Server.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

Frame::Frame(SessionState& session, QString procedure, int64_t procedureId)
    : session_(session), procedure_(std::move(procedure)), procedureId_(procedureId) {
    BeginStatement();
}

Frame::~Frame() {
    for (const auto& [name, table] : variables_.Tables()) {
        session_.temporaries.DropVariable(*table);
    }
}

void Frame::BeginStatement() {
    clock_.reset();
    texts_.Reset();
}

const Frame::Clock& Frame::TimeOfStatement() const {
    if (!clock_) {
        const Moment moment = Moment::Now();
        const int64_t now = moment.Store(TypeKind::DateTime).value_or(0);
        const int64_t full = moment.Store(TypeKind::DateTime2).value_or(0);
        const int offset = QDateTime::currentDateTime().offsetFromUtc();
        clock_ = Clock{now, now - int64_t{offset} * 300, full, full - int64_t{offset} * 10'000'000,
                       static_cast<int16_t>(offset / 60)};
    }
    return *clock_;
}

BindContext Frame::NewContext() {
    return BindContext(session_.store, session_.databases, Database(), session_.objects, variables_,
                       *session_.parsed);
}

BoundPtr Frame::BindAlone(const tsql::Expression& expression) {
    BindContext context = NewContext();
    const Scope none;
    ExpressionBinder binder(context, none);
    return binder.Value(expression);
}

OwnedValue Frame::Compute(const BoundExpression& expression) {
    if (IsFixed(expression)) {
        TextArena arena;
        const Evaluation evaluation{nullptr, &arena, this};
        return OwnedValue(expression.Evaluate(evaluation));
    }
    // A query stands in it.
    const Transactions::Reading reading(session_.transactions);
    SqlWriter writer(*this);
    writer.Text("SELECT ");
    writer.Expression(expression);
    SqliteStatement statement = writer.Prepare(session_.store);
    const Store::Stoppable stoppable(session_.store);
    if (!statement.Step()) return {};
    return OwnedValue(ReadColumn(statement.Handle(), 0, expression.type));
}

OwnedValue Frame::Compute(const tsql::Expression& expression, const SqlType& type) {
    return Compute(*ExpressionBinder::Convert(BindAlone(expression), type));
}

bool Frame::Decide(const tsql::Expression& condition) {
    BindContext context = NewContext();
    const Scope none;
    ExpressionBinder binder(context, none);
    const BoundPtr bound = binder.Condition(condition);
    return Holds(Compute(*bound).View());
}

SqlValue Frame::VariableValue(size_t index) const {
    return variables_.At(index).value.View();
}

void Frame::AssignVariable(size_t index, const SqlValue& value) const {
    variables_.Set(index, value);
}

SqlValue Frame::Keep(const QString& text) const {
    return SqlValue::Text(texts_.Keep(ToUtf8(text)));
}

namespace {

// The highest byte first, as a rowversion has them.
std::string VersionBytes(int64_t version) {
    std::string bytes;
    for (int shift = 56; shift >= 0; shift -= 8)
        bytes += static_cast<char>(version >> shift & 0xFF);
    return bytes;
}

}  // namespace

SqlValue Frame::Ask(SystemValue what) const {
    switch (what) {
        case SystemValue::Version:
            return Keep(Server::VersionText());
        case SystemValue::ServerName:
            return Keep(Server::Name());
        case SystemValue::ServiceName:
            return Keep(QStringLiteral("MSSQLSERVER"));
        case SystemValue::Language:
            return Keep(QStringLiteral("us_english"));
        case SystemValue::DatabaseName:
            return Keep(session_.database.name);
        case SystemValue::DatabaseId:
            return SqlValue::Integer(session_.database.id);
        case SystemValue::LoginName:
            return Keep(session_.login);
        case SystemValue::UserName:
            return Keep(QStringLiteral("dbo"));
        case SystemValue::HostName:
            return Keep(session_.hostName);
        case SystemValue::AppName:
            return Keep(session_.appName);
        case SystemValue::Spid:
            return SqlValue::Integer(session_.id);
        case SystemValue::RowCount:
            return SqlValue::Integer(session_.rowCount);
        case SystemValue::Error:
            return SqlValue::Integer(session_.error);
        case SystemValue::TranCount:
            return SqlValue::Integer(session_.transactions.Count());
        case SystemValue::Identity:
            return session_.identity ? SqlValue::Wide(*session_.identity) : SqlValue();
        case SystemValue::ScopeIdentity:
            return scopeIdentity ? SqlValue::Wide(*scopeIdentity) : SqlValue();
        case SystemValue::MaxPrecision:
            return SqlValue::Integer(38);
        case SystemValue::NestLevel:
            return SqlValue::Integer(session_.nestLevel);
        case SystemValue::TextSize:
            return SqlValue::Integer(session_.options.textSize);
        case SystemValue::LockTimeout:
            return SqlValue::Integer(session_.options.lockTimeout);
        case SystemValue::DateFirst:
            return SqlValue::Integer(session_.options.dateFirst);
        case SystemValue::ProcId:
            return SqlValue::Integer(procedureId_);
        case SystemValue::Now:
            return SqlValue::Integer(TimeOfStatement().now);
        case SystemValue::UtcNow:
            return SqlValue::Integer(TimeOfStatement().utcNow);
        case SystemValue::FullNow:
            return SqlValue::Integer(TimeOfStatement().fullNow);
        case SystemValue::FullUtcNow:
            return SqlValue::Integer(TimeOfStatement().fullUtcNow);
        case SystemValue::OffsetNow: {
            SqlValue value = SqlValue::Integer(TimeOfStatement().fullUtcNow);
            value.offset = TimeOfStatement().offset;
            return value;
        }
        case SystemValue::Options:
            return SqlValue::Integer(session_.options.Bits());
        case SystemValue::LanguageId:
            return SqlValue::Integer(0);
        case SystemValue::TransactionState:
            if (session_.transactions.Doomed()) return SqlValue::Integer(-1);
            return SqlValue::Integer(session_.transactions.Count() > 0 ? 1 : 0);
        case SystemValue::ContextInfo:
            return session_.contextInfo.empty() ? SqlValue()
                                                : SqlValue::Bytes(session_.contextInfo);
        case SystemValue::LastRowVersion:
            return SqlValue::Bytes(texts_.Keep(VersionBytes(Catalog().LastRowVersion())));
        default:
            return AskOfCatch(what);
    }
}

SqlValue Frame::AskOfCatch(SystemValue what) const {
    const Message* caught = session_.caught;
    if (!caught) return {};
    switch (what) {
        case SystemValue::ErrorNumber:
            return SqlValue::Integer(caught->number);
        case SystemValue::ErrorSeverity:
            return SqlValue::Integer(caught->severity);
        case SystemValue::ErrorState:
            return SqlValue::Integer(caught->state);
        case SystemValue::ErrorLine:
            return SqlValue::Integer(caught->line);
        case SystemValue::ErrorProcedure:
            return caught->procedure.isEmpty() ? SqlValue() : Keep(caught->procedure);
        case SystemValue::ErrorMessage:
            return Keep(caught->text);
        default:
            return {};
    }
}

double Frame::Random(std::optional<int64_t> seed) const {
    return session_.random.Next(seed);
}

Metadata Frame::Catalog() const {
    return Metadata(session_.store, Database());
}

SqlValue Frame::ObjectId(const QString& name, const QString& type) const {
    const std::optional<tsql::ObjectName> parsed = tsql::ParseLooseName(name);
    if (!parsed) return {};
    const std::optional<DatabaseEntry> database = parsed->database.isEmpty()
                                                      ? std::optional(Database())
                                                      : session_.databases.Find(parsed->database);
    if (!database) return {};
    Metadata metadata(session_.store, *database);
    const std::optional<ObjectInfo> object = metadata.Find(parsed->schema, parsed->name);
    const bool asked = type.isEmpty() || (object && object->type == type.trimmed().toUpper());
    return object && asked ? SqlValue::Integer(object->id) : SqlValue();
}

SqlValue Frame::ObjectName(int64_t id) const {
    Metadata metadata(session_.store, Database());
    const std::optional<ObjectInfo> object = metadata.Find(id);
    return object ? Keep(object->name) : SqlValue();
}

SqlValue Frame::DatabaseIdOf(const QString& name) const {
    const std::optional<DatabaseEntry> entry = session_.databases.Find(name);
    return entry ? SqlValue::Integer(entry->id) : SqlValue();
}

SqlValue Frame::DatabaseNameOf(int64_t id) const {
    if (id < 1 || id > 32767) return {};
    const std::optional<DatabaseEntry> entry = session_.databases.Find(static_cast<int>(id));
    return entry ? Keep(entry->name) : SqlValue();
}

}  // namespace quarv::localdb::engine
