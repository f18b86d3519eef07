#include "localdb/server/ServerError.h"

#include <array>
#include <system_error>

namespace quarv::localdb::server {

namespace {

// By code, from 1.
constexpr std::array<const char*, 14> Texts{
    "%1 (try --help)",
    "\"%1\" is no address and port; use for example 127.0.0.1:1433 or [::1]:1433",
    "cannot listen on %1: %2",
    "cannot use the password file \"%1\": %2",
    "cannot use the data directory \"%1\": %2",
    "the data directory \"%1\" is in use by another server",
    "\"%1\" is no instance name; use 1 to 64 of the characters a-z, 0-9, _ and -",
    "cannot use the instance's file \"%1\": %2",
    "the instance \"%1\" did not start: %2",
    "the instance \"%1\" did not stop",
    "the instance \"%1\" is running; stop it first",
    "there is no instance \"%1\"",
    "the sample database \"%1\" could not be made: %2",
    "%1: %2",
};

QString TextOf(ServerError::Code code, const QString& what, const QString& why) {
    QString text = QString::fromLatin1(Texts[static_cast<size_t>(code) - 1]);
    // In one pass, so that a "%2" within `what` stays as it is.
    const bool both = text.contains(QStringLiteral("%2"));
    return both ? text.arg(what, why) : text.arg(what);
}

}  // namespace

ServerError::ServerError(Code code, const QString& what, const QString& why)
    : Error(code, TextOf(code, what, why)) {}

QString SystemText(int errorNumber) {
    return QString::fromStdString(std::generic_category().message(errorNumber));
}

}  // namespace quarv::localdb::server
