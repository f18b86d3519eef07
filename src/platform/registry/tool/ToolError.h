// ToolError: why quarv-reg ends with status 1; its text is what the user reads.
#pragma once

#include <QString>

namespace quarv::registry {

struct ToolError {
    QString text;  // without "quarv-reg: " and a line break
};

}  // namespace quarv::registry
