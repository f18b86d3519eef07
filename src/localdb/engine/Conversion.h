// Conversion: a value of one type as a value of another, by the rules of CAST and CONVERT. Texts
// that are too long are cut, numbers that do not fit raise.
#pragma once

#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"
#include "localdb/engine/TextArena.h"

namespace quarv::localdb::engine {

class Conversion {
  public:
    static constexpr int NoStyle = -1;

    // Null stays null. The result's text lives in `value`'s memory or in `arena`.
    // Raises SqlError 220, 232, 241 to 248, 281, 8114 or 8115.
    static SqlValue Convert(const SqlValue& value, const SqlType& from, const SqlType& to,
                            int style, TextArena& arena);
    // As Convert; the text as a message shows it.
    static QString ToMessageText(const SqlValue& value, const SqlType& type);
};

}  // namespace quarv::localdb::engine
