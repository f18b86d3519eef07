// DATEPART, DATENAME, DATEADD, DATEDIFF and their short forms.
#include <array>

#include "localdb/engine/DateArguments.h"
#include "localdb/engine/DateParts.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

int FirstDay(const Evaluation& evaluation) {
    return static_cast<int>(evaluation.environment->Ask(SystemValue::DateFirst).integer);
}

[[noreturn]] void RefusePart(DatePart part, const QString& function, const SqlType& type) {
    throw SqlError(9810, {DateParts::NameOf(part), function, type.Name()});
}

// Text has every part; a value of a type has those of its type only.
void CheckPart(DatePart part, const QString& function, const SqlType& type) {
    const bool text = ClassOf(type) == TypeClass::Text;
    const bool noClock = type.kind == TypeKind::Date && DateParts::IsClock(part);
    const bool zone = part == DatePart::TimeZone;
    const bool noDay = type.kind == TypeKind::Time && !DateParts::IsClock(part) && !zone;
    const bool noZone = zone && !text && type.kind != TypeKind::DateTimeOffset;
    if (noClock || noDay || noZone) RefusePart(part, function, type);
}

SqlValue ReadPart(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const Moment moment = MomentOf(a[0], call.parts[0]->type);
    return SqlValue::Integer(DateParts::Read(PartOf(call), moment, FirstDay(evaluation)));
}

SqlValue NamePart(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const Moment moment = MomentOf(a[0], call.parts[0]->type);
    const QString name = DateParts::Name(PartOf(call), moment, FirstDay(evaluation));
    return SqlValue::Text(evaluation.arena->Keep(ToUtf8(name)));
}

BoundPtr ReadPartOf(DatePart part, const QString& function, Arguments arguments, bool name) {
    arguments[0] = AsDate(std::move(arguments[0]), 2, function);
    CheckPart(part, function, arguments[0]->type);
    const SqlType type = name ? MakeType(TypeKind::NVarChar, 30) : IntType();
    BoundPtr call =
        WithPart(MakeCall(name ? NamePart : ReadPart, type, std::move(arguments)), part);
    // Both depend on which day a week begins with.
    const bool week = part == DatePart::Weekday || part == DatePart::Week;
    static_cast<BoundCall&>(*call).isDeterministic = !week;
    return call;
}

BoundPtr BindDatePart(const QString& function, const QString& word, Arguments arguments) {
    const DatePart part = FindPart(function, word);
    return ReadPartOf(part, function, std::move(arguments), function == u"datename");
}

template <DatePart Part>
BoundPtr BindPart(Arguments arguments) {
    return ReadPartOf(Part, DateParts::NameOf(Part), std::move(arguments), false);
}

SqlValue Add(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    Moment moment = MomentOf(a[1], call.parts[1]->type);
    std::optional<SqlValue> sum;
    if (DateParts::Add(PartOf(call), a[0].integer, moment)) sum = ValueOf(moment, call.type);
    if (!sum) throw SqlError(517, {call.type.Name()});
    return *sum;
}

// What each type is too coarse for.
void CheckAddedPart(DatePart part, const QString& function, const SqlType& type) {
    if (part == DatePart::TimeZone || part == DatePart::IsoWeek) {
        throw SqlError(9806, {DateParts::NameOf(part), function});
    }
    const bool fine = part == DatePart::Microsecond || part == DatePart::Nanosecond;
    const bool coarse = type.kind == TypeKind::DateTime || type.kind == TypeKind::SmallDateTime;
    if (fine && coarse) RefusePart(part, function, type);
    CheckPart(part, function, type);
}

BoundPtr BindDateAdd(const QString& function, const QString& word, Arguments arguments) {
    const DatePart part = FindPart(function, word);
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), IntType());
    arguments[1] = AsDate(std::move(arguments[1]), 3, function);
    if (ClassOf(arguments[1]->type) == TypeClass::Text) {
        arguments[1] =
            ExpressionBinder::Convert(std::move(arguments[1]), MakeType(TypeKind::DateTime));
    }
    const SqlType type = arguments[1]->type;
    CheckAddedPart(part, function, type);
    return WithPart(MakeCall(Add, type, std::move(arguments)), part);
}

template <bool Big>
SqlValue Difference(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    const Moment from = InUtc(MomentOf(a[0], call.parts[0]->type));
    const Moment to = InUtc(MomentOf(a[1], call.parts[1]->type));
    const std::optional<int64_t> count = DateParts::Between(PartOf(call), from, to);
    const bool fits = count && (Big || *count == static_cast<int32_t>(*count));
    if (!fits) {
        const QString name = Big ? QStringLiteral("datediff_big") : QStringLiteral("datediff");
        throw SqlError(535, {name, name});
    }
    return SqlValue::Integer(*count);
}

BoundPtr BindDateDiff(const QString& function, const QString& word, Arguments arguments) {
    const DatePart part = FindPart(function, word);
    if (part == DatePart::TimeZone || part == DatePart::IsoWeek) {
        throw SqlError(9806, {DateParts::NameOf(part), function});
    }
    arguments[0] = AsDate(std::move(arguments[0]), 2, function);
    arguments[1] = AsDate(std::move(arguments[1]), 3, function);
    const bool big = function == u"datediff_big";
    const SqlType type = big ? MakeType(TypeKind::BigInt) : IntType();
    return WithPart(
        MakeCall(big ? Difference<true> : Difference<false>, type, std::move(arguments)), part);
}

}  // namespace

std::span<const FunctionEntry> DateFunctions() {
    static constexpr std::array<FunctionEntry, 8> Table = {{
        {u"datepart", 2, 2, nullptr, BindDatePart},
        {u"datename", 2, 2, nullptr, BindDatePart},
        {u"dateadd", 3, 3, nullptr, BindDateAdd},
        {u"datediff", 3, 3, nullptr, BindDateDiff},
        {u"datediff_big", 3, 3, nullptr, BindDateDiff},
        {u"year", 1, 1, BindPart<DatePart::Year>},
        {u"month", 1, 1, BindPart<DatePart::Month>},
        {u"day", 1, 1, BindPart<DatePart::Day>},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
