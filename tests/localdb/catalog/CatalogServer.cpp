#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {

using engine::TypeKind;

namespace {

std::string TextOf(const engine::Datum& datum, const engine::SqlType& type) {
    if (datum.null) return "NULL";
    switch (type.kind) {
        case TypeKind::Numeric:
            return (datum.negative ? "-" : "") +
                   std::to_string(static_cast<uint64_t>(datum.magnitude));
        case TypeKind::Char:
        case TypeKind::VarChar:
        case TypeKind::NChar:
        case TypeKind::NVarChar:
            return std::string(datum.text);
        default:
            return std::to_string(datum.integer);
    }
}

}  // namespace

void Recording::BeginRows(std::span<const engine::Column> columns) {
    sets.emplace_back();
    types_.clear();
    for (const engine::Column& column : columns) {
        sets.back().columns.push_back((column.name + u' ' + column.type.ToText()).toStdString());
        types_.push_back(column.type);
    }
}

void Recording::Row(std::span<const engine::Datum> row) {
    std::string text;
    for (size_t i = 0; i < row.size(); ++i) {
        if (i > 0) text += '|';
        text += TextOf(row[i], types_[i]);
    }
    sets.back().rows.push_back(std::move(text));
}

void Recording::Say(const engine::Message& message) {
    messages.push_back(std::to_string(message.number) + ' ' + std::to_string(message.severity) +
                       ' ' + message.text.toStdString());
}

CatalogServer::CatalogServer()
    : server_(OpenServer(directory_.path())), session_(server_->NewSession(QStringLiteral("sa"))) {
    Prepare({"create database shop"});
    session_->UseDatabase(QStringLiteral("shop"));
}

Recording CatalogServer::Run(const std::string& sql) {
    Recording recording;
    session_->RunBatch(QString::fromStdString(sql), recording);
    return recording;
}

RecordedSet CatalogServer::Query(const std::string& sql) {
    const Recording recording = Run(sql);
    EXPECT_EQ(recording.messages, Texts());
    EXPECT_EQ(recording.sets.size(), 1u);
    return recording.sets.empty() ? RecordedSet() : recording.sets.front();
}

void CatalogServer::Prepare(const Texts& batches) {
    for (const std::string& batch : batches) {
        const Recording recording = Run(batch);
        EXPECT_EQ(recording.messages, Texts()) << batch;
    }
}

}  // namespace quarv::localdb::catalog
