// ResultCode: what a registry call answers, by the numbers of Microsoft's Win32 documentation
// ("System Error Codes"). The table of texts is in ResultCode.cpp.
#pragma once

#include <QString>

namespace quarv::registry {

enum ResultCode : qint32 {
    ERROR_SUCCESS = 0,
    ERROR_FILE_NOT_FOUND = 2,
    ERROR_TOO_MANY_OPEN_FILES = 4,
    ERROR_ACCESS_DENIED = 5,
    ERROR_INVALID_HANDLE = 6,
    ERROR_NOT_ENOUGH_MEMORY = 8,
    ERROR_WRITE_FAULT = 29,
    ERROR_READ_FAULT = 30,
    ERROR_LOCK_VIOLATION = 33,
    ERROR_NOT_SUPPORTED = 50,
    ERROR_INVALID_PARAMETER = 87,
    ERROR_DISK_FULL = 112,
    ERROR_BAD_PATHNAME = 161,
    ERROR_MORE_DATA = 234,
    ERROR_NO_MORE_ITEMS = 259,
    ERROR_KEY_DELETED = 1018,
    ERROR_NOT_ENOUGH_QUOTA = 1816,
};

// One sentence for the user without its full stop; "error N" for a code outside the table.
QString ResultText(ResultCode code);

// The code for a failed system call. `fallback` is for what has no code of its own, an
// input/output error above all: ERROR_READ_FAULT or ERROR_WRITE_FAULT.
ResultCode CodeOfErrno(int error, ResultCode fallback);

}  // namespace quarv::registry
