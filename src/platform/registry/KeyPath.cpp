#include "platform/registry/KeyPath.h"

#include "platform/registry/RegTypes.h"
#include "platform/registry/Utf8.h"

namespace quarv::registry {

namespace {

bool IsCleanUtf8(QByteArrayView text) {
    return !text.contains('\0') && text.isValidUtf8();
}

}  // namespace

ResultCode SplitKeyPath(QByteArrayView text, QStringList& path) {
    constexpr qsizetype MaxBytes = MaxDepth * (MaxKeyName + 1) * 3;
    path.clear();
    if (text.size() > MaxBytes || !IsCleanUtf8(text)) return ERROR_INVALID_PARAMETER;
    if (text.startsWith('\\')) return ERROR_BAD_PATHNAME;
    QStringList names = FromUtf8(text).split(u'\\', Qt::SkipEmptyParts);
    if (names.size() > MaxDepth) return ERROR_INVALID_PARAMETER;
    for (const QString& name : names)
        if (name.size() > MaxKeyName) return ERROR_INVALID_PARAMETER;
    path = std::move(names);
    return ERROR_SUCCESS;
}

ResultCode CheckValueName(QByteArrayView text, QString& name) {
    if (text.size() > MaxValueName * 3 || !IsCleanUtf8(text)) return ERROR_INVALID_PARAMETER;
    name = FromUtf8(text);
    return name.size() > MaxValueName ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
}

}  // namespace quarv::registry
