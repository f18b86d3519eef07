#include "platform/ado/BatchErrors.h"

#include "platform/ado/DataErrors.h"

namespace quarv::ado {

namespace {

// More lines than this nobody reads in a box.
constexpr size_t MostDescribed = 20;

}  // namespace

bool IsLost(const Connection& connection, const DataError& error) {
    return error.SqlState().startsWith(QLatin1String("08")) ||
           error.Number() == DataErrorNumber(DataErrorCode::InvalidConnection) ||
           connection.State() == adStateClosed;
}

bool ClosedAsLost(Connection& connection, const DataError& error) {
    if (!IsLost(connection, error)) return false;
    if (connection.State() == adStateOpen) connection.Close();
    return true;
}

DataErrors ErrorsOfRest(Connection& connection, RecordsetPtr records) {
    DataErrors errors;
    while (records) {
        try {
            records = records->NextRecordset();
        } catch (const DataError& error) {
            errors.push_back(error);
            if (ClosedAsLost(connection, error)) break;
        }
    }
    return errors;
}

DataError WithLater(const DataError& first, const DataErrors& later) {
    if (later.empty()) return first;
    const QString lineEnd = QStringLiteral("\r\n");
    QString description = first.Description();
    for (size_t i = 0; i < std::min(later.size(), MostDescribed); ++i)
        description += lineEnd + later[i].Description();
    if (later.size() > MostDescribed)
        description += lineEnd + QStringLiteral("(and %1 more)").arg(later.size() - MostDescribed);
    return DataError(first.Number(), description, first.SqlState(), first.NativeError(),
                     first.Line());
}

}  // namespace quarv::ado
