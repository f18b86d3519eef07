#include "base/RNamedList.h"

#include "base/RUtils.h"

namespace quarv {

bool NamedListMatcher::Match(const QString& a, const QString& b) {
    return SameText(a, b);
}

}  // namespace quarv
