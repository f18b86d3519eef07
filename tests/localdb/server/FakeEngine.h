// FakeEngine: an engine that does what its "SQL" says in one word, hostile things included, so that
// the server can be tested without a database.
#pragma once

#include <QMutex>
#include <QStringList>
#include <atomic>
#include <memory>

#include "localdb/engine/Server.h"

namespace quarv::localdb::server {

class FakeEngine final : public engine::Server {
  public:
    std::unique_ptr<engine::Session> NewSession(const QString& login) override;
    bool HasDatabase(const QString& name) const override;

    // Sessions that live now.
    int Sessions() const { return sessions_; }
    // Rows that were handed out.
    int64_t RowsSent() const { return rows_; }
    // What was run, "batch:..." or "call:name(arguments)".
    QStringList Ran() const;
    // "machine/program" of the client that came last.
    QString Client() const;

  private:
    friend class FakeSession;
    void Note(const QString& text);

    std::atomic<int> sessions_ = 0;
    std::atomic<int> nextId_ = 51;
    std::atomic<int64_t> rows_ = 0;
    mutable QMutex mutex_;
    QStringList ran_;
    QString client_;
};

}  // namespace quarv::localdb::server
