#include "localdb/engine/ExpressionBinder.h"

#include "localdb/engine/Aggregate.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/Functions.h"
#include "localdb/engine/LiteralValue.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SubqueryNodes.h"
#include "localdb/engine/SystemVariables.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/VariableTable.h"
#include "localdb/engine/WindowFunction.h"

namespace quarv::localdb::engine {

namespace {

bool IsExact(const SqlType& type) {
    const TypeClass cls = ClassOf(type);
    return cls == TypeClass::Integer || cls == TypeClass::Decimal || cls == TypeClass::Money;
}

// For the rules of decimals an integer constant has as many digits as it is written with.
SqlType TypeForArithmetic(const BoundExpression& expression, const BoundExpression& other) {
    const bool counted = expression.IsConstant() &&
                         ClassOf(expression.type) == TypeClass::Integer &&
                         ClassOf(other.type) == TypeClass::Decimal;
    if (!counted) return expression.type;
    const int64_t value = static_cast<const BoundConstant&>(expression).Value().integer;
    const auto digits = QString::number(value < 0 ? -value : value).size();
    return MakeType(TypeKind::Numeric, 0, static_cast<int>(digits));
}

bool IsGroupingName(const QString& name) {
    return name.compare(u"grouping", Qt::CaseInsensitive) == 0 ||
           name.compare(u"grouping_id", Qt::CaseInsensitive) == 0;
}

void TakeTypeOf(BoundPtr& null, const BoundExpression& other) {
    if (null->untypedNull && !other.untypedNull) {
        null = std::make_unique<BoundConstant>(SqlValue(), other.type);
    }
}

}  // namespace

BoundPtr ExpressionBinder::Convert(BoundPtr value, const SqlType& type, bool isExplicit) {
    if (value->untypedNull) return std::make_unique<BoundConstant>(SqlValue(), type);
    if (value->type == type) return value;
    TypeRules::CheckConversion(value->type, type, isExplicit);
    if (value->IsConstant()) {
        try {
            TextArena arena;
            const SqlValue constant = static_cast<BoundConstant&>(*value).Value();
            return std::make_unique<BoundConstant>(
                Conversion::Convert(constant, value->type, type, Conversion::NoStyle, arena), type);
        } catch (const SqlError&) {
            // Raised again when, and if, a row asks for it.
        }
    }
    return std::make_unique<BoundConvert>(std::move(value), type);
}

bool ExpressionBinder::TakeExactly(BoundPtr& constant, const SqlType& to) {
    if (!constant->IsConstant() || constant->type == to) return false;
    if (!IsExact(constant->type) || !IsExact(to)) return false;
    const SqlType& from = constant->type;
    const SqlValue value = static_cast<const BoundConstant&>(*constant).Value();
    try {
        TextArena arena;
        const SqlValue there = Conversion::Convert(value, from, to, Conversion::NoStyle, arena);
        const SqlValue back = Conversion::Convert(there, to, from, Conversion::NoStyle, arena);
        const bool same = value.kind == back.kind && value.integer == back.integer &&
                          value.wide == back.wide && value.real == back.real;
        if (same) constant = std::make_unique<BoundConstant>(there, to);
        return same;
    } catch (const SqlError&) {
        // It does not fit, so the other side is converted.
        return false;
    }
}

void ExpressionBinder::Unify(BoundPtr& a, BoundPtr& b) {
    TakeTypeOf(a, *b);
    TakeTypeOf(b, *a);
    const TypeClass x = ClassOf(a->type), y = ClassOf(b->type);
    // Texts compare whatever their lengths, integers whatever their widths.
    if (x == y && (x == TypeClass::Text || x == TypeClass::Integer || x == TypeClass::Real)) return;
    if (x == y && (x == TypeClass::Binary || a->type.kind == b->type.kind) &&
        (x == TypeClass::Binary || x == TypeClass::Moment)) {
        return;
    }
    if (TakeExactly(b, a->type) || TakeExactly(a, b->type)) return;
    SqlType common = TypeRules::Common(a->type, b->type);
    // Beside a decimal, a text takes part with all the digits that it may have.
    a = Convert(std::move(a), common);
    b = Convert(std::move(b), common);
}

BoundPtr ExpressionBinder::Value(const tsql::Expression& expression) {
    BoundPtr value = BindNode(expression);
    return grouping_ && !insideAggregate_ ? NullIfAbsent(std::move(value)) : std::move(value);
}

BoundPtr ExpressionBinder::BindNode(const tsql::Expression& expression) {
    try {
        switch (expression.kind) {
            case tsql::ExpressionKind::Literal:
                return BindLiteral(static_cast<const tsql::Literal&>(expression));
            case tsql::ExpressionKind::Variable:
                return BindVariable(static_cast<const tsql::Variable&>(expression));
            case tsql::ExpressionKind::Column:
                return scope_.Resolve(static_cast<const tsql::ColumnName&>(expression).name);
            case tsql::ExpressionKind::Negate:
                return BindNegate(static_cast<const tsql::Negate&>(expression));
            case tsql::ExpressionKind::Arithmetic:
                return BindArithmetic(static_cast<const tsql::Arithmetic&>(expression));
            case tsql::ExpressionKind::Cast:
                return BindCast(static_cast<const tsql::Cast&>(expression));
            case tsql::ExpressionKind::Case:
                return BindCase(static_cast<const tsql::Case&>(expression));
            case tsql::ExpressionKind::Function:
                return BindFunction(static_cast<const tsql::Function&>(expression));
            case tsql::ExpressionKind::Collate:
                return BindCollate(static_cast<const tsql::Collate&>(expression));
            case tsql::ExpressionKind::Subquery:
                return BindSubquery(static_cast<const tsql::Subquery&>(expression));
            default:
                return Condition(expression);
        }
    } catch (SqlError& error) {
        if (error.What().line == 0) error.SetLine(expression.line);
        throw;
    }
}

BoundPtr ExpressionBinder::BindVariable(const tsql::Variable& variable) {
    if (variable.name.startsWith(u"@@")) return BindSystemVariable(variable.name);
    const std::optional<size_t> index = context_.Variables().Find(variable.name);
    if (!index) throw SqlError(137, {variable.name});
    return std::make_unique<BoundVariable>(*index, context_.Variables().At(*index).type);
}

BoundPtr ExpressionBinder::BindNegate(const tsql::Negate& negate) {
    BoundPtr operand = Value(*negate.operand);
    const TypeClass cls = ClassOf(operand->type);
    const bool number = cls == TypeClass::Integer || cls == TypeClass::Decimal ||
                        cls == TypeClass::Money || cls == TypeClass::Real;
    const bool fits = negate.sign == u'~' ? cls == TypeClass::Integer
                                          : number && operand->type.kind != TypeKind::Bit;
    if (!fits && negate.sign != u'+') {
        throw SqlError(8117, {operand->type.Name(), negate.sign == u'~' ? QStringLiteral("'~'")
                                                                        : QStringLiteral("minus")});
    }
    auto node = std::make_unique<BoundNegate>(negate.sign);
    node->type = operand->type;
    // A tinyint has no negative values.
    if (node->type.kind == TypeKind::TinyInt && negate.sign == u'-') {
        node->type = MakeType(TypeKind::SmallInt);
    }
    node->nullable = operand->nullable;
    const bool constant = operand->IsConstant() && !operand->untypedNull;
    node->parts.push_back(std::move(operand));
    if (!constant) return node;
    TextArena arena;
    const Evaluation evaluation{nullptr, &arena, nullptr};
    return std::make_unique<BoundConstant>(node->Evaluate(evaluation), node->type);
}

BoundPtr ExpressionBinder::BindArithmetic(const tsql::Arithmetic& arithmetic) {
    BoundPtr a = Value(*arithmetic.left);
    BoundPtr b = Value(*arithmetic.right);
    return Combine(arithmetic.sign, std::move(a), std::move(b));
}

BoundPtr ExpressionBinder::Combine(char16_t sign, BoundPtr a, BoundPtr b) {
    TakeTypeOf(a, *b);
    TakeTypeOf(b, *a);
    const SqlType typeA = TypeForArithmetic(*a, *b), typeB = TypeForArithmetic(*b, *a);
    auto node = std::make_unique<BoundArithmetic>(sign);
    node->type = TypeRules::OfArithmetic(sign, typeA, typeB);
    node->nullable = a->nullable || b->nullable;
    if (ClassOf(node->type) == TypeClass::Decimal) {
        // Each side keeps its own scale; the arithmetic brings them together.
        const SqlType common = TypeRules::Common(typeA, typeB);
        const bool textA = ClassOf(typeA) == TypeClass::Text;
        const bool textB = ClassOf(typeB) == TypeClass::Text;
        a = Convert(std::move(a), textA ? common : TypeRules::AsDecimal(typeA));
        b = Convert(std::move(b), textB ? common : TypeRules::AsDecimal(typeB));
    } else if (ClassOf(node->type) != TypeClass::Text && ClassOf(node->type) != TypeClass::Binary) {
        a = Convert(std::move(a), node->type);
        b = Convert(std::move(b), node->type);
    }
    node->parts.push_back(std::move(a));
    node->parts.push_back(std::move(b));
    CheckCollation(node->Collates(), u"add", false);
    return node;
}

BoundPtr ExpressionBinder::BindCast(const tsql::Cast& cast) {
    BoundPtr operand = Value(*cast.operand);
    tsql::TypeName name = cast.type;
    // An alias type is none that a cast knows.
    if (!FindTypeKind(name.name) && !IsRefusedType(name.name)) {
        throw SqlError(243, {name.name}, name.line);
    }
    SqlType type = BindType(name, 1);
    // Without a length a cast makes thirty characters.
    const bool counted = ClassOf(type) == TypeClass::Text || ClassOf(type) == TypeClass::Binary;
    if (counted && name.arguments.empty() && type.length > 0) type.length = 30;
    if (operand->untypedNull) return std::make_unique<BoundConstant>(SqlValue(), type);
    TypeRules::CheckConversion(operand->type, type, true);
    auto node = std::make_unique<BoundConvert>(std::move(operand), type, cast.nullOnError);
    if (cast.style) node->parts.push_back(Convert(Value(*cast.style), IntType()));
    return node;
}

BoundPtr ExpressionBinder::BindCase(const tsql::Case& expression) {
    auto node = std::make_unique<BoundCase>();
    std::vector<BoundPtr> results;
    for (const tsql::Case::Branch& branch : expression.branches) {
        if (expression.operand) {
            node->parts.push_back(Compare(tsql::ComparisonSign::Equal, Value(*expression.operand),
                                          Value(*branch.when)));
        } else {
            node->parts.push_back(Condition(*branch.when));
        }
        results.push_back(Value(*branch.then));
    }
    if (expression.otherwise) results.push_back(Value(*expression.otherwise));
    SqlType type;
    bool typed = false;
    node->nullable = !expression.otherwise;
    for (const BoundPtr& result : results) {
        node->nullable = node->nullable || result->nullable;
        if (result->untypedNull) continue;
        type = typed ? TypeRules::Common(type, result->type) : result->type;
        typed = true;
    }
    if (!typed) throw SqlError(8133);
    node->type = type;
    for (size_t i = 0; i < results.size(); ++i) {
        const auto place = static_cast<ptrdiff_t>(std::min(2 * i + 1, node->parts.size()));
        node->parts.insert(node->parts.begin() + place, Convert(std::move(results[i]), type));
    }
    CheckCollation(node->Collates(), u"CASE", false);
    return node;
}

BoundPtr ExpressionBinder::BindCollate(const tsql::Collate& collate) {
    const CollationId collation = FindCollation(collate.collation);
    BoundPtr operand = Value(*collate.operand);
    const bool text = ClassOf(operand->type) == TypeClass::Text && !operand->untypedNull;
    if (!text || operand->type.kind == TypeKind::Xml) {
        throw SqlError(447,
                       {operand->untypedNull ? QStringLiteral("void type") : operand->type.Name()});
    }
    const Collating before = operand->Collates();
    if (collate.operand->kind == tsql::ExpressionKind::Collate && before.id != collation) {
        throw SqlError(449, {NameOf(before.id), NameOf(collation)});
    }
    return std::make_unique<BoundCollate>(std::move(operand), collation, CollationLabel::Explicit);
}

BoundPtr ExpressionBinder::BindFunction(const tsql::Function& function) {
    if (IsAggregateName(function.name)) {
        return function.over ? BindWindowed(function) : BindAggregate(function);
    }
    if (IsWindowName(function.name)) return BindWindowed(function);
    if (function.over) throw SqlError(4113, {function.name.toUpper()});
    if (!function.within.empty()) throw SqlError(40517, {QStringLiteral("WITHIN GROUP")});
    if (function.star || function.distinct)
        throw SqlError(102, {function.star ? QStringLiteral("*") : QStringLiteral("distinct")});
    if (IsGroupingName(function.name)) return BindGroupingCall(function);
    return BindScalarFunction(function, *this);
}

BoundPtr ExpressionBinder::BindSubquery(const tsql::Subquery& subquery) {
    QueryBinder binder(context_, &scope_);
    return std::make_unique<BoundSubquery>(binder.BindScalar(*subquery.query));
}

}  // namespace quarv::localdb::engine
