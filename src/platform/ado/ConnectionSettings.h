// ConnectionSettings: what an OLE DB connection string asks for, read and checked, ready to be
// handed to an ODBC driver. It opens nothing and looks nothing up.
#pragma once

#include <QString>
#include <optional>

#include "platform/ado/OdbcString.h"
#include "platform/ado/ServerAddress.h"

namespace quarv::ado {

struct ConnectionSettings {
    // The driver that speaks to SQL Server.
    static const QString SqlServerDriver;

    QString driver = SqlServerDriver;
    // Set where the string names a driver itself: everything for it; the members below but the
    // timeout are then unused.
    std::optional<OdbcString> forDriver;

    ServerAddress server;
    QString user;
    QString password;
    bool integrated = false;  // the Windows account; wins over user and password
    bool encrypt = false;
    QString database;  // empty: the account's own
    QString applicationName;
    QString workstation;
    QString language;
    std::optional<int> packetSize;      // bytes
    std::optional<int> connectTimeout;  // seconds; 0: for ever

    // Reads `text`; a non-empty user or password stands in for what it says. Raises DataError: 3706
    // for any provider but sqloledb, and a connect problem for what cannot be meant or carried.
    static ConnectionSettings Read(const QString& text, const QString& user = {},
                                   const QString& password = {});

    // The driver's own connection string. `server` must hold host and port. Raises where a value
    // cannot be carried.
    OdbcString ForOdbc() const;
};

}  // namespace quarv::ado
