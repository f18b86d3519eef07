// SqlKeywords: the words that T-SQL keeps for itself, and the names of its data types. Knows
// nothing of how they are shown.
#pragma once

#include <QStringView>

namespace quarv {

// In any letter case. GO is no word of the language.
bool IsSqlKeyword(QStringView word);

}  // namespace quarv
