#include "localdb/engine/ErrorSummary.h"

namespace quarv::localdb::engine {

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
