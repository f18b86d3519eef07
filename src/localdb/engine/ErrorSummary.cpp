#include "localdb/engine/ErrorSummary.h"

#include <algorithm>

namespace quarv::localdb::engine {

ErrorSummary ErrorSummary::OfConstraint(const SqlError& cause) {
    constexpr int Numbers[] = {1505, 1902, 1911, 1919, 2714, 8111};
    const bool constraint =
        std::find(std::begin(Numbers), std::end(Numbers), cause.Number()) != std::end(Numbers);
    return constraint ? ErrorSummary(SqlError(1750)).After(cause) : ErrorSummary(cause);
}

ErrorSummary::ErrorSummary(const SqlError& error)
    : SqlError(error), causes_(CausesOf(error)), endsStatement_(EndsStatement(error)) {}

ErrorSummary& ErrorSummary::After(const SqlError& cause) {
    const std::vector<Message> earlier = CausesOf(cause);
    causes_.insert(causes_.end(), earlier.begin(), earlier.end());
    causes_.push_back(cause.What());
    endsStatement_ = endsStatement_ || EndsStatement(cause);
    return *this;
}

ErrorSummary& ErrorSummary::EndingStatement() {
    endsStatement_ = true;
    return *this;
}

std::vector<Message> ErrorSummary::CausesOf(const SqlError& error) {
    const auto* summary = dynamic_cast<const ErrorSummary*>(&error);
    return summary ? summary->causes_ : std::vector<Message>();
}

bool ErrorSummary::EndsStatement(const SqlError& error) {
    const auto* summary = dynamic_cast<const ErrorSummary*>(&error);
    return summary && summary->endsStatement_;
}

}  // namespace quarv::localdb::engine
