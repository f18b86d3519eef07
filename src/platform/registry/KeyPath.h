// Key paths: names between backslashes, checked against the registry's limits. It knows no hive.
#pragma once

#include <QByteArrayView>
#include <QStringList>

#include "platform/registry/ResultCode.h"

namespace quarv::registry {

// Splits a path in UTF-8 into its names; the empty path has none. A backslash at the end and
// doubled ones count as one separator. ERROR_BAD_PATHNAME where it begins with a backslash,
// ERROR_INVALID_PARAMETER for a name that is too long, holds NUL or is not UTF-8, or too many
// names.
ResultCode SplitKeyPath(QByteArrayView text, QStringList& path);

// A value's name in UTF-8; empty for the key's default value. ERROR_INVALID_PARAMETER as above.
ResultCode CheckValueName(QByteArrayView text, QString& name);

}  // namespace quarv::registry
