// Value: the one "value of any type": empty, null, boolean, integer, floating, exact decimal, text,
// date/time, bytes, or an object reference. Copying a Value that holds an object copies the
// reference. The conversion to text lives here, in one place, and is locale-aware.
#pragma once

#include <QByteArray>
#include <QLocale>
#include <QString>
#include <compare>
#include <concepts>
#include <variant>

#include "base/DateTime.h"
#include "base/Decimal.h"
#include "base/Object.h"

namespace quarv {

class Value {
  public:
    enum class Kind : quint8 {
        Empty,
        Null,
        Boolean,
        Integer,   // 64-bit signed
        Single,    // 32-bit floating
        Floating,  // 64-bit floating
        Decimal,
        Text,
        DateTime,
        Bytes,
        Object,
    };

    Value() = default;  // Empty
    static Value Null();
    Value(std::same_as<bool> auto value) : data_(value) {}
    template <std::integral T>
    requires(!std::same_as<T, bool>) Value(T value) : data_(static_cast<qint64>(value)) {}
    Value(float value) : data_(value) {}
    Value(double value) : data_(value) {}
    Value(const Decimal& value) : data_(value) {}
    Value(QString value) : data_(std::move(value)) {}
    Value(const char16_t* value) : data_(QString::fromUtf16(value)) {}
    Value(const DateTime& value) : data_(value) {}
    Value(QByteArray value) : data_(std::move(value)) {}
    Value(ObjectRef value) : data_(std::move(value)) {}
    Value(const char*) = delete;  // would be a boolean or bytes by accident

    Kind kind() const { return static_cast<Kind>(data_.index()); }
    bool IsEmpty() const { return kind() == Kind::Empty; }
    bool IsNull() const { return kind() == Kind::Null; }
    // True for an object reference, "no object" included.
    bool IsObject() const { return kind() == Kind::Object; }

    // The locale-aware text: the locale's decimal sign without grouping, "True" and "False", bytes
    // as "0x" and capital hexadecimal digits, empty as "". Decimals keep their scale; a float's
    // text is the shortest that reads back as the same float.
    // Raises NullAsText for null, TypeMismatch for an object.
    QString ToText(const QLocale& locale = QLocale()) const;
    // Numbers rounded half to even; texts that are numbers; booleans as -1 and 0; empty as 0.
    // Raises Overflow beyond 64 bits, NullAsText for null, TypeMismatch for the rest.
    qint64 ToInteger() const;
    // As ToInteger without the rounding.
    double ToDouble() const;
    // Non-zero is true; the texts "True" and "False" in any case. Raises as ToInteger.
    bool ToBoolean() const;
    // The reference, "no object" included. Raises TypeMismatch where no object is held.
    const ObjectRef& ToObject() const;

    // Direct access where the kind is known; raise TypeMismatch where it is another.
    const QString& Text() const;
    const QByteArray& Bytes() const;
    const quarv::Decimal& AsDecimal() const;
    const quarv::DateTime& AsDateTime() const;

    // The ordinary comparison: numbers numerically across kinds, texts exactly (code units), dates
    // in time, objects by identity. Empty counts as 0 beside a number and as "" beside a text.
    // A number is less than a text. Null, bytes of another kind and the like are unordered.
    static std::partial_ordering Compare(const Value& a, const Value& b);
    // True where Compare says equivalent; null equals nothing, itself included.
    static bool Equal(const Value& a, const Value& b);

  private:
    struct NullTag {};
    using Data = std::variant<std::monostate, NullTag, bool, qint64, float, double, quarv::Decimal,
                              QString, quarv::DateTime, QByteArray, ObjectRef>;
    Data data_;
};

}  // namespace quarv
