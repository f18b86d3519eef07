#include "localdb/engine/Aggregate.h"

#include <algorithm>
#include <array>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

struct Entry {
    QStringView name;
    AggregateKind kind;
    const char16_t* operation;  // as messages call it
};

constexpr std::array<Entry, 6> Table = {{{u"count", AggregateKind::Count, u"count"},
                                         {u"count_big", AggregateKind::CountBig, u"count_big"},
                                         {u"sum", AggregateKind::Sum, u"sum"},
                                         {u"avg", AggregateKind::Average, u"avg"},
                                         {u"min", AggregateKind::Minimum, u"min"},
                                         {u"max", AggregateKind::Maximum, u"max"}}};

const Entry* FindEntry(const QString& name) {
    const auto* found = std::find_if(Table.begin(), Table.end(), [&name](const Entry& entry) {
        return entry.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found != Table.end() ? found : nullptr;
}

// "SUM (Transact-SQL)" and "AVG (Transact-SQL)", return types.
SqlType TypeOfSum(const Entry& entry, const SqlType& type) {
    const bool average = entry.kind == AggregateKind::Average;
    switch (ClassOf(type)) {
        case TypeClass::Integer:
            if (type.kind == TypeKind::Bit) break;
            return type.kind == TypeKind::BigInt ? type : IntType();
        case TypeClass::Decimal:
            return MakeType(TypeKind::Decimal, 0, 38,
                            average ? std::max<int>(type.scale, 6) : type.scale);
        case TypeClass::Money:
            return MakeType(TypeKind::Money);
        case TypeClass::Real:
            return MakeType(TypeKind::Float);
        default:
            break;
    }
    throw SqlError(8117, {type.Name(), QString::fromUtf16(entry.operation)});
}

std::string Number(int64_t value) {
    return std::to_string(value);
}

}  // namespace

std::string BoundAggregate::Detail() const {
    return Number(static_cast<int>(kind_)) + (distinct_ ? "d" : "");
}

void BoundAggregate::WriteArgument(SqlWriter& writer) const {
    if (distinct_) writer.Text("DISTINCT ");
    writer.Collated(*parts[0]);
}

void BoundAggregate::Write(SqlWriter& writer) const {
    switch (kind_) {
        case AggregateKind::Count:
        case AggregateKind::CountBig:
            writer.Text("count(");
            if (parts.empty()) {
                writer.Text("*");
            } else {
                WriteArgument(writer);
            }
            writer.Text(")");
            return;
        case AggregateKind::Minimum:
        case AggregateKind::Maximum:
            writer.Text(kind_ == AggregateKind::Minimum ? "min(" : "max(");
            writer.Collated(*parts[0]);
            writer.Text(")");
            return;
        default: {
            const SqlType& argument = parts[0]->type;
            writer.Text("q_total(q_sum(");
            writer.Expression(*parts[0]);
            writer.Text("," + Number(PackType(argument)));
            writer.Text(")," + Number(PackType(type)));
            writer.Text(kind_ == AggregateKind::Average ? ",1," : ",0,");
            writer.Text(Number(argument.scale) + ")");
        }
    }
}

bool IsAggregateName(const QString& name) {
    return FindEntry(name) != nullptr;
}

BoundPtr MakeAggregate(const QString& name, BoundPtr argument, bool distinct) {
    const Entry& entry = *FindEntry(name);
    const bool counts = entry.kind == AggregateKind::Count || entry.kind == AggregateKind::CountBig;
    if (!argument && !counts) throw SqlError(102, {QStringLiteral("*")});
    if (argument && argument->untypedNull && !counts) {
        throw SqlError(8117, {QStringLiteral("NULL"), QString::fromUtf16(entry.operation)});
    }
    const bool sums = entry.kind == AggregateKind::Sum || entry.kind == AggregateKind::Average;
    if (sums && distinct) throw SqlError(40517, {name.toUpper() + QStringLiteral("(DISTINCT)")});
    const bool ordered = distinct || !counts;
    if (argument && ordered &&
        (IsOldLong(argument->type.kind) || argument->type.kind == TypeKind::Xml)) {
        throw SqlError(8117, {argument->type.Name(), QString::fromUtf16(entry.operation)});
    }
    auto node = std::make_unique<BoundAggregate>(entry.kind, distinct);
    if (counts) {
        node->type = entry.kind == AggregateKind::Count ? IntType() : MakeType(TypeKind::BigInt);
        node->nullable = false;
    } else {
        node->type = sums ? TypeOfSum(entry, argument->type) : argument->type;
        if (argument->type.kind == TypeKind::Bit && !sums) {
            throw SqlError(8117, {QStringLiteral("bit"), QString::fromUtf16(entry.operation)});
        }
    }
    if (argument) node->parts.push_back(std::move(argument));
    return node;
}

}  // namespace quarv::localdb::engine
