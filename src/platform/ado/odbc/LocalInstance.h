// LocalInstance: turns a local instance's name, the one behind "(localdb)\", into host, port and
// account, starting the instance where it does not run. It knows the instance's files, not what
// answers there.
#pragma once

#include <QString>
#include <optional>

namespace quarv::ado::odbc {

class LocalInstance {
  public:
    struct Access {
        QString host;
        int port = 0;
        QString user;
        QString secret;
    };

    // `program` is the path of the local server's program; empty: beside the running program.
    // Raises a DataError where `name` is no instance's name.
    LocalInstance(const QString& name, const QString& program);

    // How to reach the instance, started if need be within `timeout` milliseconds (0: none).
    // Raises a DataError that says what failed and where the log lies.
    Access Reach(int timeout) const;
    // A server holds the instance now.
    bool IsServed() const;

  private:
    QString File(const char* name) const;
    void Start(int timeout) const;
    std::optional<Access> ReadState() const;

    QString name_;
    QString program_;
    QString folder_;
};

}  // namespace quarv::ado::odbc
