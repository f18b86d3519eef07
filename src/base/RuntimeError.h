// RuntimeError: the runtime's own errors. The table of numbers and texts is in RuntimeError.cpp.
#pragma once

#include "base/Error.h"

namespace quarv {

class RuntimeError : public Error {
  public:
    enum Code : int {
        InvalidProcedureCall = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        DivisionByZero = 11,
        TypeMismatch = 13,
        FileNotFound = 53,
        PermissionDenied = 70,
        PathFileAccess = 75,
        ObjectNotSet = 91,
        NullAsText = 94,
        InvalidPropertyValue = 380,
        NoSuchMember = 438,
        ElementNotFound = 35601,
        KeyNotUnique = 35602,
    };

    // The code's own text from the table; with `detail`, the text, ": " and the detail.
    explicit RuntimeError(Code code, const QString& detail = {});
};

}  // namespace quarv
