#include "base/Value.h"

#include "base/NumberText.h"
#include "base/RuntimeError.h"

namespace quarv {

namespace {

[[noreturn]] void Raise(RuntimeError::Code code) {
    throw RuntimeError(code);
}

// The member of `data` of type T; raises TypeMismatch where another is held.
template <typename T, typename Data>
const T& Get(const Data& data) {
    const T* held = std::get_if<T>(&data);
    if (held == nullptr) Raise(RuntimeError::TypeMismatch);
    return *held;
}

QString BytesText(const QByteArray& bytes) {
    constexpr char16_t Hex[] = u"0123456789ABCDEF";
    QString text(2 + 2 * bytes.size(), Qt::Uninitialized);
    QChar* place = text.data();
    *place++ = u'0';
    *place++ = u'x';
    for (char each : bytes) {
        const auto byte = static_cast<quint8>(each);
        *place++ = Hex[byte >> 4];
        *place++ = Hex[byte & 15];
    }
    return text;
}

}  // namespace

Value Value::Null() {
    Value result;
    result.data_ = NullTag();
    return result;
}

QString Value::ToText(const QLocale& locale) const {
    switch (kind()) {
        case Kind::Empty:
            return QStringLiteral("");
        case Kind::Null:
            Raise(RuntimeError::NullAsText);
        case Kind::Boolean:
            return std::get<bool>(data_) ? QStringLiteral("True") : QStringLiteral("False");
        case Kind::Integer:
            return QString::number(std::get<qint64>(data_));
        case Kind::Single:
            return FloatText(std::get<float>(data_), DecimalSign(locale));
        case Kind::Floating:
            return FloatText(std::get<double>(data_), DecimalSign(locale));
        case Kind::Decimal:
            return AsDecimal().ToText(DecimalSign(locale));
        case Kind::Text:
            return std::get<QString>(data_);
        case Kind::DateTime:
            return AsDateTime().ToText(locale);
        case Kind::Bytes:
            return BytesText(std::get<QByteArray>(data_));
        case Kind::Object:
            break;
    }
    Raise(RuntimeError::TypeMismatch);
}

qint64 Value::ToInteger() const {
    switch (kind()) {
        case Kind::Empty:
            return 0;
        case Kind::Null:
            Raise(RuntimeError::NullAsText);
        case Kind::Boolean:
            return std::get<bool>(data_) ? -1 : 0;
        case Kind::Integer:
            return std::get<qint64>(data_);
        case Kind::Single:
            return RoundToInteger(double{std::get<float>(data_)});
        case Kind::Floating:
            return RoundToInteger(std::get<double>(data_));
        case Kind::Decimal:
            return RoundToInteger(AsDecimal());
        case Kind::Text:
            return std::visit([](const auto& number) { return RoundToInteger(number); },
                              ParseNumber(std::get<QString>(data_), QLocale()));
        default:
            Raise(RuntimeError::TypeMismatch);
    }
}

double Value::ToDouble() const {
    switch (kind()) {
        case Kind::Single:
            return std::get<float>(data_);
        case Kind::Floating:
            return std::get<double>(data_);
        case Kind::Decimal:
            return AsDecimal().ToDouble();
        case Kind::Text: {
            const auto number = ParseNumber(std::get<QString>(data_), QLocale());
            const auto* exact = std::get_if<quarv::Decimal>(&number);
            return exact != nullptr ? exact->ToDouble() : std::get<double>(number);
        }
        default:
            return static_cast<double>(ToInteger());
    }
}

bool Value::ToBoolean() const {
    switch (kind()) {
        case Kind::Decimal:
            return AsDecimal().magnitude != 0;
        case Kind::Single:
        case Kind::Floating:
            return ToDouble() != 0;
        case Kind::Text: {
            const QString& text = std::get<QString>(data_);
            if (text.compare(u"True", Qt::CaseInsensitive) == 0) return true;
            if (text.compare(u"False", Qt::CaseInsensitive) == 0) return false;
            return ToDouble() != 0;
        }
        default:
            return ToInteger() != 0;
    }
}

const ObjectRef& Value::ToObject() const {
    return Get<ObjectRef>(data_);
}

const QString& Value::Text() const {
    return Get<QString>(data_);
}

const QByteArray& Value::Bytes() const {
    return Get<QByteArray>(data_);
}

const quarv::Decimal& Value::AsDecimal() const {
    return Get<quarv::Decimal>(data_);
}

const quarv::DateTime& Value::AsDateTime() const {
    return Get<quarv::DateTime>(data_);
}

}  // namespace quarv
