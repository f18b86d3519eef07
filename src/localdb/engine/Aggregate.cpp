#include "localdb/engine/Aggregate.h"

#include <algorithm>
#include <array>

#include "localdb/engine/ExpressionBinder.h"
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

constexpr std::array<Entry, 13> Table = {
    {{u"count", AggregateKind::Count, u"count"},
     {u"count_big", AggregateKind::CountBig, u"count_big"},
     {u"approx_count_distinct", AggregateKind::CountApproximately, u"approx_count_distinct"},
     {u"sum", AggregateKind::Sum, u"sum"},
     {u"avg", AggregateKind::Average, u"avg"},
     {u"min", AggregateKind::Minimum, u"min"},
     {u"max", AggregateKind::Maximum, u"max"},
     {u"stdev", AggregateKind::Deviation, u"stdev"},
     {u"stdevp", AggregateKind::DeviationOfAll, u"stdevp"},
     {u"var", AggregateKind::Variance, u"var"},
     {u"varp", AggregateKind::VarianceOfAll, u"varp"},
     {u"checksum_agg", AggregateKind::Checksum, u"checksum_agg"},
     {u"string_agg", AggregateKind::Joined, u"string_agg"}}};

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

[[noreturn]] void Invalid(const Entry& entry, const BoundExpression& argument) {
    const QString type = argument.untypedNull ? QStringLiteral("NULL") : argument.type.Name();
    throw SqlError(8117, {type, QString::fromUtf16(entry.operation)});
}

// STRING_AGG gives a text of its first argument's kind, any other type as nvarchar(4000).
SqlType TypeOfJoined(const SqlType& type) {
    if (ClassOf(type) != TypeClass::Text) return MakeType(TypeKind::NVarChar, 4000);
    const bool unicode = IsUnicode(type.kind);
    const int most = unicode ? 4000 : 8000;
    return MakeType(unicode ? TypeKind::NVarChar : TypeKind::VarChar,
                    type.length == SqlType::Max ? SqlType::Max : most);
}

SqlType TypeOf(const Entry& entry, std::vector<BoundPtr>& arguments) {
    switch (entry.kind) {
        case AggregateKind::Count:
            return IntType();
        case AggregateKind::CountBig:
        case AggregateKind::CountApproximately:
            return MakeType(TypeKind::BigInt);
        case AggregateKind::Sum:
        case AggregateKind::Average:
            return TypeOfSum(entry, arguments[0]->type);
        case AggregateKind::Minimum:
        case AggregateKind::Maximum:
            if (arguments[0]->type.kind == TypeKind::Bit) Invalid(entry, *arguments[0]);
            return arguments[0]->type;
        case AggregateKind::Checksum:
            if (ClassOf(arguments[0]->type) != TypeClass::Integer) Invalid(entry, *arguments[0]);
            arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), IntType());
            return IntType();
        case AggregateKind::Joined: {
            const SqlType type = TypeOfJoined(arguments[0]->type);
            for (size_t i = 0; i < 2; ++i) {
                if (ClassOf(arguments[i]->type) == TypeClass::Text && !arguments[i]->untypedNull) {
                    continue;
                }
                arguments[i] = ExpressionBinder::Convert(std::move(arguments[i]), type);
            }
            return type;
        }
        default:
            if (!IsNumber(arguments[0]->type) || arguments[0]->type.kind == TypeKind::Bit) {
                Invalid(entry, *arguments[0]);
            }
            arguments[0] =
                ExpressionBinder::Convert(std::move(arguments[0]), MakeType(TypeKind::Float));
            return MakeType(TypeKind::Float);
    }
}

bool Counts(AggregateKind kind) {
    return kind <= AggregateKind::CountApproximately;
}

const char* StorageName(AggregateKind kind) {
    switch (kind) {
        case AggregateKind::Minimum:
            return "min";
        case AggregateKind::Maximum:
            return "max";
        case AggregateKind::Deviation:
            return "q_stdev";
        case AggregateKind::DeviationOfAll:
            return "q_stdevp";
        case AggregateKind::Variance:
            return "q_var";
        case AggregateKind::VarianceOfAll:
            return "q_varp";
        case AggregateKind::Checksum:
            return "q_checksum";
        case AggregateKind::Sum:
        case AggregateKind::Average:
            return "q_sum";
        default:
            return "count";
    }
}

}  // namespace

std::string BoundAggregate::Detail() const {
    std::string text = Number(static_cast<int>(kind_)) + (distinct_ ? "d" : "");
    for (const bool down : descending) text += down ? '-' : '+';
    return over ? text + over->Detail() : text;
}

// What it is ordered by has collations of its own.
Collating BoundAggregate::FoldCollations() const {
    const std::span<const BoundPtr> all(parts);
    return engine::FoldCollations(all.first(std::min<size_t>(parts.size(), 1)));
}

void BoundAggregate::WriteCall(SqlWriter& writer, const char* name) const {
    writer.Text(name);
    writer.Text(distinct_ ? "(DISTINCT " : "(");
    const bool hasArgument = over ? over->first > 0 : !parts.empty();
    if (hasArgument) {
        writer.Collated(*parts[0]);
    } else {
        writer.Text("*");
    }
    writer.Text(")");
    if (over) over->Write(writer, parts);
}

// q_join(type, directions, text, separator, keys...)
void BoundAggregate::WriteJoined(SqlWriter& writer) const {
    std::string directions;
    const size_t first = parts.size() - descending.size();
    for (size_t i = 0; i < descending.size(); ++i) {
        directions += descending[i] ? 'd' : 'a';
        directions += static_cast<char>('0' + static_cast<int>(parts[first + i]->Order()));
    }
    writer.Text("q_join(" + Number(PackType(type)) + ",'" + directions + "'");
    for (const BoundPtr& part : parts) {
        writer.Text(",");
        writer.Expression(*part);
    }
    writer.Text(")");
}

void BoundAggregate::Write(SqlWriter& writer) const {
    if (kind_ == AggregateKind::Joined) {
        WriteJoined(writer);
        return;
    }
    const bool sums = kind_ == AggregateKind::Sum || kind_ == AggregateKind::Average;
    if (sums) writer.Text("q_total(");
    WriteCall(writer, StorageName(kind_));
    if (!sums) return;
    writer.Text("," + Number(PackType(type)));
    writer.Text(kind_ == AggregateKind::Average ? ",1," : ",0,");
    writer.Text(Number(parts[0]->type.scale) + ")");
}

bool IsAggregateName(const QString& name) {
    return FindEntry(name) != nullptr;
}

size_t AggregateArguments(const QString& name) {
    return FindEntry(name)->kind == AggregateKind::Joined ? 2 : 1;
}

std::unique_ptr<BoundAggregate> MakeAggregate(const QString& name, std::vector<BoundPtr> arguments,
                                              bool distinct) {
    const Entry& entry = *FindEntry(name);
    if (arguments.empty() &&
        (!Counts(entry.kind) || entry.kind == AggregateKind::CountApproximately)) {
        throw SqlError(102, {QStringLiteral("*")});
    }
    if (!arguments.empty() && arguments[0]->untypedNull && !Counts(entry.kind)) {
        Invalid(entry, *arguments[0]);
    }
    const bool ordered = distinct || !Counts(entry.kind);
    if (!arguments.empty() && ordered &&
        (IsOldLong(arguments[0]->type.kind) || arguments[0]->type.kind == TypeKind::Xml)) {
        Invalid(entry, *arguments[0]);
    }
    // Each value once makes no difference to these.
    const bool extreme =
        entry.kind == AggregateKind::Minimum || entry.kind == AggregateKind::Maximum;
    const bool approximate = entry.kind == AggregateKind::CountApproximately;
    if (distinct && entry.kind == AggregateKind::Joined) {
        throw SqlError(102, {QStringLiteral("distinct")});
    }
    auto node = std::make_unique<BoundAggregate>(entry.kind, approximate || (distinct && !extreme));
    node->type = TypeOf(entry, arguments);
    node->nullable = !Counts(entry.kind);
    node->parts = std::move(arguments);
    return node;
}

}  // namespace quarv::localdb::engine
