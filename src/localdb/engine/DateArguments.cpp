#include "localdb/engine/DateArguments.h"

#include "localdb/engine/DateParts.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TextNumber.h"

namespace quarv::localdb::engine {

BoundPtr AsDate(BoundPtr value, int number, const QString& function) {
    if (value->untypedNull) {
        return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::DateTime));
    }
    switch (ClassOf(value->type)) {
        case TypeClass::Moment:
        case TypeClass::Text:
            return value;
        case TypeClass::Integer:
        case TypeClass::Decimal:
        case TypeClass::Money:
        case TypeClass::Real:
            return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::DateTime));
        default:
            throw SqlError(8116, {value->type.Name(), QString::number(number), function});
    }
}

Moment MomentOf(const SqlValue& value, const SqlType& type) {
    if (ClassOf(type) != TypeClass::Text) {
        return Moment::Load(type.kind, value.integer, value.offset);
    }
    const std::optional<Moment> parsed = Moment::Parse(value.text, TypeKind::DateTimeOffset);
    if (parsed) return *parsed;
    const bool day = TextNumber::LooksLikeDate(value.text);
    throw SqlError(day ? 242 : 241, {type.Name(), QStringLiteral("datetime")});
}

Moment InUtc(Moment moment) {
    const int offset = moment.offset;
    moment.offset = 0;
    // At both ends of the calendar the clock stays as it is.
    DateParts::Add(DatePart::Minute, -offset, moment);
    return moment;
}

std::optional<SqlValue> ValueOf(const Moment& moment, const SqlType& type) {
    const std::optional<int64_t> stored = moment.Store(type);
    if (!stored) return std::nullopt;
    SqlValue value = SqlValue::Integer(*stored);
    if (type.kind == TypeKind::DateTimeOffset) value.offset = static_cast<int16_t>(moment.offset);
    return value;
}

DatePart FindPart(const QString& function, const QString& word) {
    if (word.isEmpty()) throw SqlError(1023, {QStringLiteral("1"), function});
    const std::optional<DatePart> part = DateParts::Find(word);
    if (!part) throw SqlError(155, {word, function});
    return *part;
}

BoundPtr WithPart(BoundPtr call, DatePart part) {
    static_cast<BoundCall&>(*call).option = static_cast<int>(part);
    return call;
}

DatePart PartOf(const BoundCall& call) {
    return static_cast<DatePart>(call.option);
}

}  // namespace quarv::localdb::engine
