// How GoogleTest shows texts of a failed expectation, and a matcher for raised errors.
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <ostream>

#include "base/Error.h"

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << qPrintable(text) << '"';
}
QT_END_NAMESPACE

namespace quarv {

// The number of the error that `action` raises; 0 where it raises none.
template <typename Action>
int Raised(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace quarv
