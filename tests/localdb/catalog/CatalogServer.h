// CatalogServer: what the catalogue's tests talk to: a real server in a temporary directory and a
// sink that writes down what a client would get. A value is its text, null is "NULL", a row is its
// values with "|" between them.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "localdb/catalog/OpenServer.h"

namespace quarv::localdb::catalog {

using Texts = std::vector<std::string>;

struct RecordedSet {
    Texts columns;  // "name type"
    Texts rows;
};

struct Recording : engine::ResultSink {
    std::vector<RecordedSet> sets;
    Texts messages;   // "number severity text"
    int status = -1;  // of the last procedure

    void BeginRows(std::span<const engine::Column> columns) override;
    void Row(std::span<const engine::Datum> row) override;
    void StatementDone(engine::StatementKind, int64_t, bool) override {}
    void Say(const engine::Message& message) override;
    void DatabaseChanged(const QString&, const QString&) override {}
    void ReturnStatus(int value) override { status = value; }
    bool Cancelled() override { return false; }

  private:
    std::vector<engine::SqlType> types_;
};

// Begins in an empty database "shop".
class CatalogServer : public testing::Test {
  protected:
    CatalogServer();

    Recording Run(const std::string& sql);
    // The only result set of a batch that raises nothing.
    RecordedSet Query(const std::string& sql);
    Texts Rows(const std::string& sql) { return Query(sql).rows; }
    // Runs one batch for each entry and expects no message.
    void Prepare(const Texts& batches);

    QTemporaryDir directory_;
    std::unique_ptr<engine::Server> server_;
    std::unique_ptr<engine::Session> session_;
};

}  // namespace quarv::localdb::catalog
