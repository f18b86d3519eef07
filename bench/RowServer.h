// RowServer: a process that answers every statement with the same rows over a loopback port, as
// fast as the client takes them, so that a bench measures the client. It ends with this object.
#pragma once

#include <sys/types.h>

#include <QString>

namespace quarv::bench {

class RowServer {
  public:
    // Each answer has as many rows as the first number in the statement says, `rows` without one.
    // Their ten columns: int, bigint, bit, float, decimal(18,4), nvarchar(40), nvarchar(100),
    // varchar(20), datetime2(3) and uniqueidentifier; every tenth row has nulls. With 0 `rows` each
    // answer is that of a statement that changed one row.
    explicit RowServer(int rows);
    ~RowServer();
    RowServer(const RowServer&) = delete;
    RowServer& operator=(const RowServer&) = delete;

    int Port() const { return port_; }

  private:
    pid_t process_ = -1;
    int port_ = 0;
};

}  // namespace quarv::bench
