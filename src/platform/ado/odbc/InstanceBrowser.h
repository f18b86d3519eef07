// InstanceBrowser: asks the SQL Server Browser of a host on which port one of its instances listens
// (the protocol of [MC-SQLR], "SQL Server Resolution Protocol").
#pragma once

#include <QString>
#include <optional>

namespace quarv::ado::odbc {

// The TCP port of `instance`, or nothing where no answer names one within `timeout` milliseconds.
std::optional<int> BrowseForPort(const QString& host, const QString& instance, int timeout);

// The TCP port in a browser's answer; nothing where it is malformed or names none.
std::optional<int> PortInAnswer(const QByteArray& answer, const QString& instance);

}  // namespace quarv::ado::odbc
