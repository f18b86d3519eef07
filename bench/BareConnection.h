// BareConnection: one connection opened with nothing but ODBC, as the measure of what a driver
// costs. Raises std::runtime_error with the driver's own message.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <QByteArray>
#include <QString>
#include <functional>

namespace quarv::bench {

class BareConnection {
  public:
    // A C type that loses nothing of a column's values, and the bytes that hold one.
    struct Binding {
        SQLSMALLINT type;
        SQLLEN width;
    };

    explicit BareConnection(const QByteArray& connectionString);
    ~BareConnection();
    BareConnection(const BareConnection&) = delete;
    BareConnection& operator=(const BareConnection&) = delete;

    // Runs a batch to its end.
    void Execute(const QByteArray& sql);
    // The same with a text that the driver takes as it is.
    void ExecuteUtf16(const QString& sql);
    // Runs a query, every column bound to the C type that a program would choose by hand, and
    // fetches every row; how many there were.
    int Loop(const QByteArray& query);
    // As Loop for a catalogue call, every column bound as text.
    int Count(const std::function<SQLRETURN(SQLHSTMT)>& catalogueCall);

    // The caller frees it.
    SQLHSTMT MakeStatement();
    // Raises what went wrong on `statement`, nothing where `code` says success.
    static void Check(SQLRETURN code, SQLHSTMT statement, const char* what);
    // `column` counts from 1.
    static Binding BindingOf(SQLHSTMT statement, SQLUSMALLINT column);

  private:
    void WithStatement(const std::function<void(SQLHSTMT)>& use);

    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
};

// Of a server of ours with the account bench/bench on a loopback port.
QByteArray BareString(int port, const char* database);

}  // namespace quarv::bench
