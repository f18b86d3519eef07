// HiveText: the hive file's text format, version 1, both ways (docs/hive-format.md). Pure: bytes
// in, tree out and back. What it reads is hostile until checked.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/registry/HiveKey.h"
#include "platform/registry/ResultCode.h"

namespace quarv::registry {

// Beyond these a file is not read and not written.
inline constexpr qint64 MaxHiveBytes = 8 * 1024 * 1024;
inline constexpr int MaxHiveKeys = 65536;

enum class HiveKind : quint8 { Plain, Overlay };

struct ParsedHive {
    enum class Outcome : quint8 {
        Good,
        Damaged,      // malformed or cut short
        Unsupported,  // a hive of another version of the format
    };

    Outcome outcome = Outcome::Good;
    HiveKey root;     // empty unless Good
    int line = 0;     // 1-based, where it stopped being readable
    QString problem;  // in plain words, without its full stop
};

// Marks of deletion are accepted in an overlay only.
ParsedHive ParseHive(const QByteArray& bytes, HiveKind kind);

// ERROR_NOT_ENOUGH_QUOTA where the text would pass the limits above.
ResultCode WriteHive(const HiveKey& root, QByteArray& text);

}  // namespace quarv::registry
