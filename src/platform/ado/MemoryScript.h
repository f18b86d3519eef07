// MemoryScript: what memory connections answer, and what was asked of them. One script may serve
// many connections (Factory), so that a test sees all that a window opens. Owned by the test.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "platform/ado/Connection.h"
#include "platform/ado/MemoryResult.h"

namespace quarv::ado {

class MemoryScript : public std::enable_shared_from_this<MemoryScript> {
  public:
    using Answerer = std::function<MemoryResults(const QString& sql)>;

    // What `sql`, letter for letter, gives; a later answer replaces an earlier one.
    MemoryScript& Answer(const QString& sql, MemoryResults results);
    MemoryScript& Answer(const QString& sql, MemoryResult result);
    // Asked for statements that have no answer of their own.
    MemoryScript& AnswerOthers(Answerer answerer);
    // Whatever table is asked for.
    MemoryScript& AnswerSchema(Schema schema, MemoryResult result);
    // Where this table is asked for, by its name, letter for letter.
    MemoryScript& AnswerSchema(Schema schema, const QString& table, MemoryResult result);
    // Every Open raises this error; with nothing, it succeeds again.
    MemoryScript& FailOpen(std::optional<DataError> error);
    // So does every Open with this connection string, letter for letter.
    MemoryScript& FailOpenOf(const QString& connectionString, const DataError& error);

    // Every statement text sent, in order; empty texts are not sent.
    const QStringList& Statements() const { return statements_; }
    // Every rowset asked for, in order: its number and, where one was given, the table as "schema"
    // and "name": "20", "20 .t", "28 dbo.t".
    const QStringList& Schemas() const { return schemasAsked_; }
    // The connection string of every Open, failed ones included.
    const QStringList& Opened() const { return opened_; }
    // How many connections are open now.
    int OpenConnections() const { return openConnections_; }

    // Closed connections over this script, which they keep alive.
    ConnectionFactory Factory();

  private:
    friend class MemoryConnection;

    // A statement without an answer raises a DataError that quotes it.
    MemoryResults Run(const QString& sql);
    MemoryResult RunSchema(Schema schema, const TableName& table);
    void CountOpen(const QString& connectionString);
    void CountClose() { --openConnections_; }

    QHash<QString, MemoryResults> answers_;
    QHash<std::pair<int, QString>, MemoryResult> schemas_;  // no name: whatever the table
    Answerer others_;
    std::optional<DataError> openError_;
    QHash<QString, std::shared_ptr<DataError>> openErrors_;
    QStringList statements_;
    QStringList schemasAsked_;
    QStringList opened_;
    int openConnections_ = 0;
};

}  // namespace quarv::ado
