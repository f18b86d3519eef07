#include "localdb/engine/SystemCall.h"

#include "localdb/engine/SqlError.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

SystemCall::SystemCall(Store& store, const DatabaseList& databases, const DatabaseEntry& database,
                       const SystemObjects& objects, std::vector<OwnedValue> arguments,
                       ResultSink& sink)
    : store_(store),
      databases_(databases),
      database_(database),
      objects_(objects),
      arguments_(std::move(arguments)),
      sink_(sink) {}

QString SystemCall::Text(size_t argument) const {
    const SqlValue value = arguments_[argument].View();
    if (value.IsNull()) return {};
    const QString text = FromUtf8(value.text);
    return text.isNull() ? QStringLiteral("") : text;
}

void SystemCall::Begin(std::vector<Column> columns) {
    columns_ = std::move(columns);
    row_.assign(columns_.size(), Datum());
    count_ = 0;
    sink_.BeginRows(columns_);
}

void SystemCall::Append(const DatabaseEntry& database, const std::string& sql,
                        const std::vector<Parameter>& parameters) {
    SqliteStatement statement =
        store_.Prepare(FillInDatabase(sql, store_.Attach(database) + ".", database, databases_));
    for (const Parameter& parameter : parameters) {
        if (!parameter.text.isNull()) statement.Bind(parameter.index, parameter.text);
    }
    const Store::Stoppable stoppable(store_);
    while (statement.Step()) {
        for (size_t i = 0; i < columns_.size(); ++i) {
            ReadDatum(statement.Handle(), static_cast<int>(i), columns_[i].type, row_[i]);
        }
        sink_.Row(row_);
        ++count_;
        if (sink_.Cancelled()) throw Cancelled();
    }
}

int64_t SystemCall::Ask(const DatabaseEntry& database, const std::string& sql) {
    SqliteStatement statement =
        store_.Prepare(FillInDatabase(sql, store_.Attach(database) + ".", database, databases_));
    const Store::Stoppable stoppable(store_);
    return statement.Step() ? statement.Integer(0) : 0;
}

void SystemCall::Row(const std::vector<OwnedValue>& values) {
    for (size_t i = 0; i < columns_.size(); ++i) row_[i] = ToDatum(values[i].View());
    sink_.Row(row_);
    ++count_;
}

void SystemCall::End() {
    sink_.StatementDone(StatementKind::Select, count_, false);
}

void SystemCall::Query(std::vector<Column> columns, const std::string& sql,
                       const std::vector<Parameter>& parameters) {
    Begin(std::move(columns));
    Append(database_, sql, parameters);
    End();
}

void SystemCall::Say(int number, const QStringList& inserts) {
    sink_.Say(SqlError(number, inserts).What());
}

}  // namespace quarv::localdb::engine
