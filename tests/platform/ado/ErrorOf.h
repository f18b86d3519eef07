// The DataError that an action raises, for tests that look at its number and words.
#pragma once

#include <gtest/gtest.h>

#include "base/DataError.h"
#include "support/TextPrinter.h"

namespace quarv::test {

// A failure of the test where `action` raises no DataError.
template <class Action>
DataError ErrorOf(Action action) {
    try {
        action();
    } catch (const DataError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was raised";
    return DataError(0, QStringLiteral("nothing was raised"));
}

}  // namespace quarv::test
