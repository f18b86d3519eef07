// ServerAddress: where a data source "host", "host,port", "host\instance", "tcp:host,port", ".",
// "(local)" or "(localdb)\name" lies. Names and ports are checked; nothing is looked up here.
#pragma once

#include <QString>

namespace quarv::ado {

struct ServerAddress {
    static constexpr int DefaultPort = 1433;

    QString host;      // a name in ASCII or an address without brackets; empty for localInstance
    int port = 0;      // 1..65535; 0: the instance has to be asked for, or localInstance is set
    QString instance;  // set only where `port` is 0
    QString localInstance;  // the name behind "(localdb)\", lower-cased

    // Raises a DataError that says what is wrong with `dataSource`. Empty means this computer.
    static ServerAddress Parse(const QString& dataSource);
};

}  // namespace quarv::ado
