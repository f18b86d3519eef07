// InstanceBrowser: asks the SQL Server Browser of a host on which port one of its instances listens
// (the protocol of [MC-SQLR], "SQL Server Resolution Protocol"). It trusts no answer beyond a port.
#pragma once

#include <QString>
#include <optional>

namespace quarv::ado::odbc {

struct BrowserAnswer {
    bool hostUnknown = false;  // nobody of this name was found in time
    std::optional<int> port;   // 1..65535; nothing where no answer names the instance's
};

// Asks where `instance` listens, again and again until `timeout` milliseconds have passed or every
// address of the host has refused the question. The look-up of the host's name counts in.
BrowserAnswer BrowseForPort(const QString& host, const QString& instance, int timeout);

// The TCP port in a browser's answer; nothing where it is malformed, longer than such an answer may
// be, or names none.
std::optional<int> PortInAnswer(const QByteArray& answer, const QString& instance);

}  // namespace quarv::ado::odbc
