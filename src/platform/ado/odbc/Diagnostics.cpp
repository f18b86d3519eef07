#include "platform/ado/odbc/Diagnostics.h"

#include <sqlext.h>

#include <algorithm>
#include <array>

#include "platform/ado/DataErrors.h"

namespace quarv::ado::odbc {

namespace {

// The driver's extensions of SQLGetDiagField: the line within the batch, and what is named the
// message's state, in which this driver gives the severity.
constexpr SQLSMALLINT LineField = -1154;
constexpr SQLSMALLINT SeverityField = -1150;

// From here on the server ends the session with its message ("Database Engine Error Severities").
constexpr int FatalSeverity = 20;

// A hostile server can send as many messages as it likes; nobody reads beyond these.
constexpr SQLSMALLINT MostRecords = 64;

QString ReadMessage(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number,
                    DiagnosticRecord& record) {
    std::array<SQLWCHAR, 6> state{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    std::vector<SQLWCHAR> text(1024);
    SQLRETURN rc = SQLGetDiagRecW(type, handle, number, state.data(), &native, text.data(),
                                  static_cast<SQLSMALLINT>(text.size()), &length);
    if (rc == SQL_SUCCESS_WITH_INFO && length >= static_cast<SQLSMALLINT>(text.size())) {
        text.resize(std::min<std::size_t>(static_cast<std::size_t>(length) + 1, 32767));
        rc = SQLGetDiagRecW(type, handle, number, state.data(), &native, text.data(),
                            static_cast<SQLSMALLINT>(text.size()), &length);
    }
    if (!SQL_SUCCEEDED(rc)) return {};
    record.sqlState = QString::fromUtf16(reinterpret_cast<const char16_t*>(state.data()), 5);
    record.nativeError = native;
    text.back() = 0;
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(text.data()));
}

// 0 where the driver does not have the field.
int ReadField(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT number, SQLSMALLINT field) {
    // It has 16 bits; a driver that writes more finds room.
    std::array<quint16, 4> value{};
    SQLSMALLINT length = 0;
    const SQLRETURN rc =
        SQLGetDiagFieldW(type, handle, number, field, value.data(), sizeof value, &length);
    return SQL_SUCCEEDED(rc) ? value[0] : 0;
}

}  // namespace

QString WithoutPrefixes(const QString& message) {
    static const QString known[] = {QStringLiteral("[FreeTDS][SQL Server]"),
                                    QStringLiteral("[unixODBC][Driver Manager]")};
    // A server's own message may begin with a bracket, so no more than the known prefix goes.
    for (const QString& prefix : known)
        if (message.startsWith(prefix)) return message.mid(prefix.size());
    // [vendor][component][data source], as the ODBC programmer's reference lays them down.
    QString text = message;
    for (int i = 0; i < 3 && text.startsWith(u'['); ++i) {
        const qsizetype close = text.indexOf(u']');
        if (close < 0) break;
        text.remove(0, close + 1);
    }
    return text;
}

bool DiagnosticRecord::IsFromDriver() const {
    return nativeError >= 20000 && nativeError < 21000 &&
           (IsNote() || sqlState.startsWith(QLatin1String("08")));
}

Diagnostics::Diagnostics(SQLSMALLINT type, SQLHANDLE handle) {
    for (SQLSMALLINT number = 1; number <= MostRecords; ++number) {
        DiagnosticRecord record;
        const QString message = ReadMessage(type, handle, number, record);
        if (record.sqlState.isEmpty()) break;
        record.message = WithoutPrefixes(message).trimmed();
        record.line = ReadField(type, handle, number, LineField);
        record.severity = ReadField(type, handle, number, SeverityField);
        records_.push_back(std::move(record));
    }
}

const DiagnosticRecord* Diagnostics::Cause() const {
    for (const DiagnosticRecord& record : records_)
        if (!record.IsNote()) return &record;
    return records_.empty() ? nullptr : &records_.front();
}

bool Diagnostics::HasState(const char* sqlState) const {
    for (const DiagnosticRecord& record : records_)
        if (record.sqlState == QLatin1String(sqlState)) return true;
    return false;
}

bool Diagnostics::EndsSession() const {
    return std::any_of(records_.begin(), records_.end(), [](const DiagnosticRecord& record) {
        return record.severity >= FatalSeverity && !record.IsFromDriver();
    });
}

const DiagnosticRecord* Diagnostics::FindNative(std::initializer_list<int> numbers) const {
    for (const int number : numbers)
        for (const DiagnosticRecord& record : records_)
            if (record.nativeError == number) return &record;
    return nullptr;
}

DataError Diagnostics::StatementError(bool lost) const {
    const DiagnosticRecord* cause = Cause();
    const bool serverSpoke = cause && cause->nativeError != 0 && !cause->IsFromDriver();
    if (lost && !serverSpoke)
        return DataError(UnspecifiedDataError,
                         QStringLiteral("The connection to the server was lost. Check that the "
                                        "server still runs, then open the database again."),
                         QStringLiteral("08S01"), 0);
    // The driver counts a "?" outside quotes as a parameter, finds none bound, and says nothing.
    if (!cause)
        return DataError(DataErrorNumberOf(QStringLiteral("42000"), 0),
                         QStringLiteral("Incorrect syntax near '?'."), QStringLiteral("42000"), 0);
    const int native = cause->IsFromDriver() ? 0 : cause->nativeError;
    return DataError(DataErrorNumberOf(cause->sqlState, native), cause->message, cause->sqlState,
                     native, cause->line);
}

}  // namespace quarv::ado::odbc
