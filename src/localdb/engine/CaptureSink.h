// CaptureSink: takes the rows that a procedure sends and keeps them for INSERT ... EXECUTE;
// messages and transactions go on to the client. Lives for one statement.
#pragma once

#include <memory>
#include <vector>

#include "localdb/engine/ResultSink.h"
#include "localdb/engine/RowSpool.h"

namespace quarv::localdb::engine {

class CaptureSink : public ResultSink {
  public:
    explicit CaptureSink(ResultSink& client) : client_(client) {}

    // One for each result set, in their order.
    std::vector<std::unique_ptr<RowSpool>>& Sets() { return sets_; }

    void BeginRows(std::span<const Column> columns) override;
    void Row(std::span<const Datum> row) override;
    void StatementDone(StatementKind, int64_t, bool) override {}
    void Say(const Message& message) override { client_.Say(message); }
    void DatabaseChanged(const QString& now, const QString& before) override {
        client_.DatabaseChanged(now, before);
    }
    void ReturnStatus(int) override {}
    void TransactionBegan(uint64_t id) override { client_.TransactionBegan(id); }
    void TransactionEnded(uint64_t id, bool committed) override {
        client_.TransactionEnded(id, committed);
    }
    bool Cancelled() override { return client_.Cancelled(); }

  private:
    ResultSink& client_;
    std::vector<std::unique_ptr<RowSpool>> sets_;
    std::vector<OwnedValue> row_;
};

}  // namespace quarv::localdb::engine
