// FailureOf: what an action that may fail, by an error of ours or of a library, is told to the user
// with.
#pragma once

#include <QString>
#include <exception>
#include <optional>

#include "base/Error.h"

namespace quarv {

// The description of what `run` failed of; nothing where it did not.
template <typename Run>
std::optional<QString> FailureOf(Run&& run) {
    try {
        run();
        return std::nullopt;
    } catch (const Error& error) {
        return error.Description();
    } catch (const std::exception& failure) {
        return QString::fromUtf8(failure.what());
    }
}

}  // namespace quarv
