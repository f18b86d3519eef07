// ServerError: why this program cannot do what it was told. One line for a person, on stderr. The
// table of texts is in ServerError.cpp.
#pragma once

#include "base/Error.h"

namespace quarv::localdb::server {

class ServerError : public Error {
  public:
    enum Code : int {
        Usage = 1,
        BadAddress,
        CannotListen,
        PasswordFile,
        DataDirectory,
        DataDirectoryInUse,
        InstanceName,
        InstanceFiles,
        InstanceNotStarted,
        InstanceNotStopped,
        InstanceRunning,
        NoSuchInstance,
        Sample,
        System,
    };

    // The table's text with `%1` and `%2` filled in.
    explicit ServerError(Code code, const QString& what = {}, const QString& why = {});

    // The process's exit status for it: 2 for a wrong command line, otherwise 1.
    int ExitStatus() const { return Number() == Usage ? 2 : 1; }
};

// The operating system's text for `errorNumber`.
QString SystemText(int errorNumber);

}  // namespace quarv::localdb::server
