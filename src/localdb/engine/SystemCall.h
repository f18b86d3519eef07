// SystemCall: one running system procedure: its arguments, the catalogue of the database that it
// was called in, and the client. Lives while the procedure runs.
#pragma once

#include <QStringList>
#include <initializer_list>

#include "localdb/engine/Metadata.h"
#include "localdb/engine/SystemObjects.h"

namespace quarv::localdb::engine {

class SystemCall {
  public:
    SystemCall(Store& store, const DatabaseList& databases, const DatabaseEntry& database,
               const SystemObjects& objects, std::vector<OwnedValue> arguments, ResultSink& sink);

    // Arguments by position; a null text is a null QString.
    bool IsNull(size_t argument) const { return arguments_[argument].View().IsNull(); }
    QString Text(size_t argument) const;
    int64_t Integer(size_t argument) const { return arguments_[argument].View().integer; }

    const DatabaseEntry& Database() const { return database_; }
    const DatabaseList& Databases() const { return databases_; }
    const SystemObjects& Objects() const { return objects_; }
    // Who called.
    struct Client {
        int id = 0;  // of the session
        QString login;
        QString host;
        QString database;  // the session's current one
    };
    void SetClient(Client client) { client_ = std::move(client); }
    const Client& GetClient() const { return client_; }
    Metadata GetMetadata() { return Metadata(store_, database_); }
    Metadata GetMetadata(const DatabaseEntry& database) { return Metadata(store_, database); }

    // A result set: Begin, any number of Append and Row, End.
    void Begin(std::vector<Column> columns);
    // The rows of storage SQL over a database's catalogue ("$" is its prefix, ":db" its name).
    struct Parameter {
        int index;
        QString text;  // a null QString binds null
    };
    void Append(const DatabaseEntry& database, const std::string& sql,
                const std::vector<Parameter>& parameters);
    // The first column of the first row of storage SQL, as Append takes it; 0 where it has no row.
    int64_t Ask(const DatabaseEntry& database, const std::string& sql);
    // One row; each value of its column's type.
    void Row(const std::vector<OwnedValue>& values);
    void End();
    void Query(std::vector<Column> columns, const std::string& sql,
               const std::vector<Parameter>& parameters);
    void Say(int number, const QStringList& inserts);

  private:
    Store& store_;
    const DatabaseList& databases_;
    const DatabaseEntry& database_;
    const SystemObjects& objects_;
    std::vector<OwnedValue> arguments_;
    ResultSink& sink_;
    std::vector<Column> columns_;
    std::vector<Datum> row_;
    int64_t count_ = 0;
    Client client_;
};

}  // namespace quarv::localdb::engine
