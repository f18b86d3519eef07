#include "platform/registry/ResultCode.h"

#include <cerrno>

namespace quarv::registry {

namespace {

struct CodeAndText {
    ResultCode code;
    const char16_t* text;
};

constexpr CodeAndText Texts[] = {
    {ERROR_SUCCESS, u"it succeeded"},
    {ERROR_FILE_NOT_FOUND, u"there is no such key or value"},
    {ERROR_TOO_MANY_OPEN_FILES, u"too many files are open"},
    {ERROR_ACCESS_DENIED, u"access is denied"},
    {ERROR_INVALID_HANDLE, u"the key is not open"},
    {ERROR_NOT_ENOUGH_MEMORY, u"there is not enough memory"},
    {ERROR_WRITE_FAULT, u"the hive file could not be written"},
    {ERROR_READ_FAULT, u"the hive file could not be read"},
    {ERROR_LOCK_VIOLATION, u"another program keeps the hive file locked"},
    {ERROR_NOT_SUPPORTED, u"the hive file is of a later version than this program knows"},
    {ERROR_INVALID_PARAMETER, u"a name or an argument is not valid"},
    {ERROR_DISK_FULL, u"the disk is full"},
    {ERROR_BAD_PATHNAME, u"a key path must not begin with a backslash"},
    {ERROR_MORE_DATA, u"the data do not fit"},
    {ERROR_NO_MORE_ITEMS, u"there are no more items"},
    {ERROR_KEY_DELETED, u"the key was deleted meanwhile"},
    {ERROR_NOT_ENOUGH_QUOTA, u"the hive file would grow beyond its limit"},
};

}  // namespace

QString ResultText(ResultCode code) {
    for (const CodeAndText& entry : Texts)
        if (entry.code == code) return QString::fromUtf16(entry.text);
    return QStringLiteral("error %1").arg(static_cast<int>(code));
}

ResultCode CodeOfErrno(int error, ResultCode fallback) {
    switch (error) {
        case EACCES:
        case EPERM:
        case EROFS:
        case ENOENT:
        case ENOTDIR:
        case EISDIR:
        case ELOOP:
        case ENAMETOOLONG:
            return ERROR_ACCESS_DENIED;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return ERROR_DISK_FULL;
        case EMFILE:
        case ENFILE:
            return ERROR_TOO_MANY_OPEN_FILES;
        case ENOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        default:
            return fallback;
    }
}

}  // namespace quarv::registry
