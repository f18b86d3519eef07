// SqlValue: one value while an expression is computed. It is a view: text and bytes point into a
// record, a constant or a TextArena. Which kind it has follows from its type; null has none.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "localdb/engine/Int128.h"

namespace quarv::localdb::engine {

struct SqlValue {
    enum class Kind : uint8_t { Null, Integer, Real, Wide, Text, Bytes };

    Kind kind = Kind::Null;
    int64_t integer = 0;  // integers, money, moments; conditions as 0 and 1
    int16_t offset = 0;   // datetimeoffset: minutes of its clock, beside the UTC in `integer`
    double real = 0;      // real, float
    Int128 wide = 0;      // decimals: the digits with their sign, the scale is the type's
    // UTF-8; a lone surrogate is kept as its three bytes. Of binaries the bytes; of a
    // uniqueidentifier its 16 bytes in the order in which they sort.
    std::string_view text;

    bool IsNull() const { return kind == Kind::Null; }

    static SqlValue Integer(int64_t value);
    static SqlValue Real(double value);
    static SqlValue Wide(Int128 value);
    static SqlValue Text(std::string_view value);
    static SqlValue Bytes(std::string_view value);
};

inline SqlValue SqlValue::Integer(int64_t value) {
    SqlValue result;
    result.kind = Kind::Integer;
    result.integer = value;
    return result;
}

inline SqlValue SqlValue::Real(double value) {
    SqlValue result;
    result.kind = Kind::Real;
    result.real = value;
    return result;
}

inline SqlValue SqlValue::Wide(Int128 value) {
    SqlValue result;
    result.kind = Kind::Wide;
    result.wide = value;
    return result;
}

inline SqlValue SqlValue::Text(std::string_view value) {
    SqlValue result;
    result.kind = Kind::Text;
    result.text = value;
    return result;
}

inline SqlValue SqlValue::Bytes(std::string_view value) {
    SqlValue result;
    result.kind = Kind::Bytes;
    result.text = value;
    return result;
}

// A value that owns its text: a variable's, a constant's.
class OwnedValue {
  public:
    OwnedValue() = default;
    explicit OwnedValue(const SqlValue& value) { *this = value; }
    OwnedValue(const OwnedValue& other) { *this = other.View(); }
    OwnedValue& operator=(const OwnedValue& other) { return *this = other.View(); }
    OwnedValue& operator=(const SqlValue& value) {
        std::string text(value.text);
        value_ = value;
        text_ = std::move(text);
        return *this;
    }

    SqlValue View() const {
        SqlValue view = value_;
        view.text = text_;
        return view;
    }

  private:
    SqlValue value_;
    std::string text_;
};

}  // namespace quarv::localdb::engine
