// Conversion: a value of one type as a value of another, by the rules of CAST and CONVERT. Texts
// that are too long are cut, numbers that do not fit raise.
#pragma once

#include <optional>
#include <string>

#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"
#include "localdb/engine/TextArena.h"

namespace quarv::localdb::engine {

class Conversion {
  public:
    static constexpr int NoStyle = -1;

    // Null stays null. The result's text lives in `value`'s memory or in `arena`.
    // Raises SqlError 220, 232, 234, 235, 241 to 248, 281, 295, 8114, 8115, 8169, 8170 or 9809.
    static SqlValue Convert(const SqlValue& value, const SqlType& from, const SqlType& to,
                            int style, TextArena& arena);
    // The text with "?" for what code page 1252 lacks: what a varchar can hold.
    static std::string_view ToCodePage(std::string_view text, TextArena& arena);
    // The bytes that hexadecimal digits stand for, a zero put before an odd number of them; empty
    // where there is something else.
    static std::optional<std::string> BytesOfHex(std::string_view digits);
    // As Convert; the text as a message shows it.
    static QString ToMessageText(const SqlValue& value, const SqlType& type);
};

}  // namespace quarv::localdb::engine
