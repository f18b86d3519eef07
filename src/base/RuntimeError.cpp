#include "base/RuntimeError.h"

#include <algorithm>
#include <array>

namespace quarv {

namespace {

struct Entry {
    RuntimeError::Code code;
    const char16_t* text;
};

constexpr std::array Table{
    Entry{RuntimeError::InvalidProcedureCall, u"Invalid procedure call"},
    Entry{RuntimeError::Overflow, u"Overflow"},
    Entry{RuntimeError::SubscriptOutOfRange, u"Subscript out of range"},
    Entry{RuntimeError::DivisionByZero, u"Division by zero"},
    Entry{RuntimeError::TypeMismatch, u"Type mismatch"},
    Entry{RuntimeError::FileNotFound, u"File not found"},
    Entry{RuntimeError::PermissionDenied, u"Permission denied"},
    Entry{RuntimeError::PathFileAccess, u"Path or file access error"},
    Entry{RuntimeError::ObjectNotSet, u"Object not set"},
    Entry{RuntimeError::NullAsText, u"Null used as text"},
    Entry{RuntimeError::InvalidPropertyValue, u"Invalid property value"},
    Entry{RuntimeError::NoSuchMember, u"No such property or method"},
    Entry{RuntimeError::ElementNotFound, u"Element not found"},
    Entry{RuntimeError::KeyNotUnique, u"Key is not unique in collection"},
};

QString Describe(RuntimeError::Code code, const QString& detail) {
    const auto entry = std::find_if(Table.begin(), Table.end(),
                                    [code](const Entry& each) { return each.code == code; });
    const QString text =
        entry == Table.end() ? QStringLiteral("Unknown error") : QString::fromUtf16(entry->text);
    return detail.isEmpty() ? text : text + QStringLiteral(": ") + detail;
}

}  // namespace

RuntimeError::RuntimeError(Code code, const QString& detail)
    : Error(code, Describe(code, detail)) {}

}  // namespace quarv
