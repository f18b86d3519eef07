#include "platform/ado/DataErrors.h"

#include <algorithm>
#include <array>

namespace quarv::ado {

namespace {

struct OwnError {
    DataErrorCode code;
    const char16_t* text;
};

constexpr std::array OwnErrors{
    OwnError{DataErrorCode::NoCurrentRow,
             u"Either BOF or EOF is True, or the current record has been deleted. Requested "
             u"operation requires a current record."},
    OwnError{DataErrorCode::ItemNotFound,
             u"Item cannot be found in the collection that corresponds to the requested name or "
             u"ordinal."},
    OwnError{DataErrorCode::ObjectClosed, u"Operation is not allowed when the object is closed."},
    OwnError{DataErrorCode::ObjectOpen, u"Operation is not allowed when the object is open."},
    OwnError{DataErrorCode::ProviderNotFound,
             u"Provider cannot be found. It may not be properly installed."},
    OwnError{DataErrorCode::InvalidConnection,
             u"The connection cannot be used to perform this operation. It is either closed or "
             u"invalid in this context."},
};

// Error numbers of the OLE DB programmer's reference ("Error Handling").
constexpr int ErrorsInCommand = -2147217900;
constexpr int NoTable = -2147217865;
constexpr int IntegrityViolation = -2147217873;
constexpr int DataOverflow = -2147217833;
constexpr int AuthenticationFailed = -2147217843;
constexpr int AbortLimitReached = -2147217871;
constexpr int PermissionDenied = -2147217911;
constexpr int Canceled = -2147217842;

struct NativeNumber {
    int native;
    int number;
};

constexpr std::array NativeNumbers{
    NativeNumber{229, PermissionDenied},
    NativeNumber{18456, AuthenticationFailed},
};

struct StateNumber {
    const char* state;
    int number;
};

constexpr std::array StateNumbers{
    StateNumber{"42000", ErrorsInCommand},    StateNumber{"42S01", ErrorsInCommand},
    StateNumber{"42S22", ErrorsInCommand},    StateNumber{"42S02", NoTable},
    StateNumber{"23000", IntegrityViolation}, StateNumber{"22001", DataOverflow},
    StateNumber{"22003", DataOverflow},       StateNumber{"HY019", DataOverflow},
    StateNumber{"HYT00", AbortLimitReached},  StateNumber{"HYT01", AbortLimitReached},
    StateNumber{"HY008", Canceled},
};

}  // namespace

DataError MakeDataError(DataErrorCode code) {
    const auto found =
        std::find_if(OwnErrors.begin(), OwnErrors.end(),
                     [code](const OwnError& candidate) { return candidate.code == code; });
    const QString text = found == OwnErrors.end() ? QString() : QString::fromUtf16(found->text);
    return DataError(DataErrorNumber(code), text);
}

int DataErrorNumberOf(const QString& sqlState, int nativeError) {
    for (const NativeNumber& entry : NativeNumbers)
        if (entry.native == nativeError) return entry.number;
    for (const StateNumber& entry : StateNumbers)
        if (sqlState == QLatin1String(entry.state)) return entry.number;
    return UnspecifiedDataError;
}

}  // namespace quarv::ado
