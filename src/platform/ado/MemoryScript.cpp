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
    schemas_.insert(static_cast<int>(schema), std::move(result));
    return *this;
}

MemoryScript& MemoryScript::FailOpen(std::optional<DataError> error) {
    openError_ = std::move(error);
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

MemoryResult MemoryScript::RunSchema(Schema schema) const {
    const auto found = schemas_.constFind(static_cast<int>(schema));
    if (found != schemas_.constEnd()) return *found;
    return MemoryResult::Fails(
        QStringLiteral("No rowset was scripted for schema %1").arg(static_cast<int>(schema)));
}

void MemoryScript::CountOpen(const QString& connectionString) {
    opened_.append(connectionString);
    if (openError_) throw DataError(*openError_);
    ++openConnections_;
}

}  // namespace quarv::ado
