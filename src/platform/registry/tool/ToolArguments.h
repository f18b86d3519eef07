// ToolArguments: quarv-reg's command line, checked. It touches no hive.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <optional>

#include "platform/registry/RegTypes.h"

namespace quarv::registry {

struct ToolArguments {
    enum class Command : quint8 { Help, Version, Query, Add, Delete };

    Command command = Command::Help;
    HKey root = NoKey;
    QString rootName;             // "HKLM" or "HKCU"
    QString path;                 // below the root, without a backslash at its end
    std::optional<QString> name;  // the value's; empty text for the default value
    std::optional<QString> type;  // as typed
    std::optional<QString> data;
    bool bare = false;       // name given without -v: the data alone are printed
    bool recursive = false;  // -s
    bool force = false;      // -f

    QString FullPath() const { return path.isEmpty() ? rootName : rootName + u'\\' + path; }

    // `words` without the program's name. Raises ToolError.
    static ToolArguments Parse(const QStringList& words);
};

}  // namespace quarv::registry
