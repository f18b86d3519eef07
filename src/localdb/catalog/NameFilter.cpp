#include "localdb/catalog/NameFilter.h"

#include "localdb/engine/LikeMatcher.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::catalog {

void NameFilter::Add(const char* column, const QString& name) {
    if (patterns_ && name == u"%") return;
    // A name without wildcards compares by equality, so that an index can find it.
    const bool wildcards = name.contains(u'%') || name.contains(u'_') || name.contains(u'[');
    AddCondition(column, name, patterns_ && wildcards);
}

void NameFilter::AddExact(const char* column, const QString& name) {
    AddCondition(column, name, false);
}

void NameFilter::AddCondition(const char* column, const QString& name, bool pattern) {
    if (name.isEmpty()) return;
    const int index = static_cast<int>(parameters_.size()) + 1;
    const std::string parameter = '?' + std::to_string(index);
    conditions_ += pattern ? " AND q_like(" + std::string(column) + ", " + parameter + ')'
                           : " AND " + std::string(column) + " = " + parameter;
    parameters_.push_back({index, name});
}

bool NameFilter::Matches(const QString& name, const QString& pattern) {
    return pattern.isEmpty() || engine::MatchesLike(engine::ToUtf8(name), engine::ToUtf8(pattern));
}

}  // namespace quarv::localdb::catalog
