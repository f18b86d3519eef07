// RNamedList: an ordered list of values with text keys that match in any letter case, for named
// settings such as the parts of a connection string. Its owner is whoever made it.
#pragma once

#include <QString>

#include "base/KeyedList.h"

namespace quarv {

struct NamedListMatcher {
    static bool Match(const QString& a, const QString& b);
};

class RNamedList : public KeyedList<QString, NamedListMatcher> {};

}  // namespace quarv
