#include "localdb/server/ServerMessages.h"

#include <algorithm>
#include <array>

namespace quarv::localdb::server {

namespace {

struct Entry {
    int number;
    uint8_t severity;
    uint8_t state;
    const char* text;
};

constexpr std::array<Entry, 10> Entries{{
    {message::OutOfMemory, 17, 123,
     "There is insufficient system memory in resource pool 'default' to run this query."},
    {message::ProtocolStream, 16, 1,
     "The incoming tabular data stream (TDS) protocol stream is incorrect: %."},
    {message::CannotOpenDatabase, 11, 1,
     "Cannot open database \"%\" requested by the login. The login failed."},
    {message::DatabaseChanged, 10, 1, "Changed database context to '%'."},
    {message::LanguageChanged, 10, 1, "Changed language setting to %."},
    {message::RpcParameterType, 16, 1,
     "The incoming tabular data stream (TDS) remote procedure call (RPC) protocol stream is "
     "incorrect: %."},
    {message::TooManySessions, 20, 1,
     "Could not connect because the maximum number of '%' user connections has already been "
     "reached."},
    {message::UntrustedLogin, 14, 1,
     "Login failed. The login is from an untrusted domain and cannot be used with Integrated "
     "authentication."},
    {message::LoginFailed, 14, 1, "Login failed for user '%'."},
    {message::NotSupported, 16, 1,
     "Keyword or statement option '%' is not supported in this version of SQL Server."},
}};

QString Fill(const char* text, const QStringList& inserts) {
    QString filled;
    qsizetype next = 0;
    for (const char* c = text; *c != '\0'; ++c) {
        if (*c == '%' && next < inserts.size()) {
            filled += inserts[next++];
        } else {
            filled += QLatin1Char(*c);
        }
    }
    return filled;
}

}  // namespace

tds::ServerMessage MakeMessage(int number, const QStringList& inserts, const QString& server) {
    const auto* entry = std::find_if(Entries.begin(), Entries.end(),
                                     [number](const Entry& e) { return e.number == number; });
    tds::ServerMessage result;
    result.number = number;
    result.server = server;
    result.line = 1;
    if (entry == Entries.end()) return result;
    result.state = entry->state;
    result.severity = entry->severity;
    result.text = Fill(entry->text, inserts);
    return result;
}

}  // namespace quarv::localdb::server
