#include "platform/ado/MemoryScript.h"

#include "platform/ado/MemoryConnection.h"

namespace quarv::ado {

MemoryScript& MemoryScript::Answer(const QString& sql, MemoryResults results) {
    answers_.insert(sql, std::move(results));
    return *this;
}

MemoryScript& MemoryScript::Answer(const QString& sql, MemoryResult result) {
    return Answer(sql, MemoryResults{std::move(result)});
}

MemoryScript& MemoryScript::AnswerOthers(Answerer answerer) {
    others_ = std::move(answerer);
    return *this;
}

MemoryScript& MemoryScript::AnswerSchema(Schema schema, MemoryResult result) {
    return AnswerSchema(schema, QString(), std::move(result));
}

MemoryScript& MemoryScript::AnswerSchema(Schema schema, const QString& table, MemoryResult result) {
    schemas_.insert({static_cast<int>(schema), table}, std::move(result));
    return *this;
}

MemoryScript& MemoryScript::FailOpen(std::optional<DataError> error) {
    openError_ = std::move(error);
    return *this;
}

MemoryScript& MemoryScript::FailOpenOf(const QString& connectionString, const DataError& error) {
    openErrors_.insert(connectionString, std::make_shared<DataError>(error));
    return *this;
}

ConnectionFactory MemoryScript::Factory() {
    return [script = shared_from_this()] { return std::make_shared<MemoryConnection>(script); };
}

MemoryResults MemoryScript::Run(const QString& sql) {
    statements_.append(sql);
    const auto found = answers_.constFind(sql);
    if (found != answers_.constEnd()) return *found;
    if (others_) return others_(sql);
    return {MemoryResult::Fails(QStringLiteral("No answer was scripted for: ") + sql)};
}

MemoryResult MemoryScript::RunSchema(Schema schema, const TableName& table) {
    const int number = static_cast<int>(schema);
    QString asked = QString::number(number);
    if (!table.name.isEmpty()) asked += u' ' + table.schema + u'.' + table.name;
    schemasAsked_.append(asked);
    for (const QString& name : {table.name, QString()}) {
        const auto found = schemas_.constFind({number, name});
        if (found != schemas_.constEnd()) return *found;
    }
    return MemoryResult::Fails(QStringLiteral("No rowset was scripted for schema ") + asked);
}

void MemoryScript::CountOpen(const QString& connectionString) {
    opened_.append(connectionString);
    if (openError_) throw DataError(*openError_);
    if (const auto error = openErrors_.value(connectionString)) throw DataError(*error);
    ++openConnections_;
}

}  // namespace quarv::ado
