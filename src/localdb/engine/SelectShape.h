// SelectShape: a batch with its literals taken out, for batches of the plainest characters: two of
// the same shape have the same tree but for the literals' texts, and the same lines. Knows nothing
// of what the batch means.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "localdb/tsql/Expression.h"

namespace quarv::localdb::engine {

struct SelectShape {
    static constexpr qsizetype LongestBatch = 2048;  // UTF-16 units

    // The batch; in place of each literal a mark that tells its kind.
    QString key;
    // Integers and character strings, in their order.
    std::vector<tsql::Literal> literals;

    // Nothing for a batch that is long, does not begin with an S or has other characters than
    // words, blanks, such literals and plain signs: comments, variables, quoted names, fractions.
    static std::optional<SelectShape> Of(const QString& batch);
};

}  // namespace quarv::localdb::engine
