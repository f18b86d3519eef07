// RecordingSink: what a client would see of a batch, one line of text a fact, so that a test can
// compare it with lines typed by hand. Values are written by rules of its own, not the engine's.
#pragma once

#include <QStringList>
#include <vector>

#include "localdb/engine/ResultSink.h"

namespace quarv::localdb::engine {

class RecordingSink : public ResultSink {
  public:
    void BeginRows(std::span<const Column> columns) override;
    void Row(std::span<const Datum> row) override;
    void StatementDone(StatementKind kind, int64_t rowCount, bool failed) override;
    void Say(const Message& message) override;
    void DatabaseChanged(const QString& now, const QString& before) override;
    void ProcedureBegins() override { ++procedures; }
    void ReturnStatus(int status) override;
    void ReturnValue(const QString& name, const SqlType& type, const Datum& value) override;
    void TransactionBegan(uint64_t id) override;
    void TransactionEnded(uint64_t id, bool committed) override;
    bool Cancelled() override { return cancelAfterRows >= 0 && rows >= cancelAfterRows; }

    // "columns a int not null, b nvarchar(10)", "1 | x", "(1 row)", "error 208 16 1 line 1: ...".
    QStringList lines;
    std::vector<Message> messages;
    int64_t rows = 0;
    int64_t cancelAfterRows = -1;  // -1: never
    int procedures = 0;
    bool keepRows = true;

    QString Text() const { return lines.join(u'\n'); }
    // The number of the first error; 0 where there was none.
    int FirstError() const;

  private:
    std::vector<SqlType> types_;
};

// One value as the cases write it.
QString DatumText(const SqlType& type, const Datum& datum);

}  // namespace quarv::localdb::engine
