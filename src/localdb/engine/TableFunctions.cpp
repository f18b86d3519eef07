// The functions that QueryBinder takes rows from: STRING_SPLIT and GENERATE_SERIES.
#include "localdb/engine/Collation.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/RowPack.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

char32_t SeparatorOf(std::string_view text) {
    size_t at = 0;
    const char32_t code = text.empty() ? 0 : NextCodePoint(text, at);
    if (at == 0 || at != text.size() || code > 0xFFFF) {
        throw SqlError(214, {QStringLiteral("separator"), QStringLiteral("nchar(1)/nvarchar(1)")});
    }
    return code;
}

// The parts of a text as packed rows, each with its number where that is asked for.
SqlValue Split(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    const char32_t separator = SeparatorOf(a[1].text);
    const std::string_view text = a[0].text;
    const TextOrder order = call.Order();
    RowPacker packer(call.option != 0 ? 2 : 1);
    int64_t number = 0;
    size_t begin = 0;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = at;
        const bool last = at == text.size();
        if (!last && !Collation::SameCharacter(NextCodePoint(text, at), separator, order)) continue;
        packer.Add(text.substr(begin, end - begin));
        if (call.option != 0) packer.Add(++number);
        if (last) break;
        begin = at;
    }
    return SqlValue::Bytes(evaluation.arena->Keep(packer.Bytes()));
}

// ENABLE_ORDINAL changes the columns, so that it has to be known now.
bool WantsOrdinal(const BoundExpression& flag) {
    if (!flag.IsConstant()) throw SqlError(8748);
    if (flag.untypedNull) return false;
    if (ClassOf(flag.type) != TypeClass::Integer) {
        throw SqlError(8116,
                       {flag.type.Name(), QStringLiteral("3"), QStringLiteral("string_split")});
    }
    const int64_t value = static_cast<const BoundConstant&>(flag).Value().integer;
    if (value != 0 && value != 1) {
        throw SqlError(
            4199, {QString::number(value), QStringLiteral("3"), QStringLiteral("string_split")});
    }
    return value == 1;
}

void CheckTexts(const Arguments& arguments) {
    for (size_t i = 0; i < 2; ++i) {
        const SqlType& type = arguments[i]->type;
        const bool text =
            ClassOf(type) == TypeClass::Text && !IsOldLong(type.kind) && type.kind != TypeKind::Xml;
        if (text || arguments[i]->untypedNull) continue;
        throw SqlError(8116, {type.Name(), QString::number(i + 1), QStringLiteral("string_split")});
    }
}

// Raises SqlError 4199 for a step of 0.
SqlValue CheckedStep(const BoundCall&, const SqlValue* a, const Evaluation&) {
    const bool zero = a[0].kind == SqlValue::Kind::Wide ? a[0].wide == 0 : a[0].integer == 0;
    if (zero) {
        throw SqlError(
            4199, {QStringLiteral("0"), QStringLiteral("3"), QStringLiteral("generate_series")});
    }
    return a[0];
}

// One whole number kind for all, or decimals, which meet in a common scale.
SqlType SeriesType(const Arguments& arguments) {
    SqlType type = arguments.front()->type;
    for (const BoundPtr& argument : arguments) {
        const TypeClass cls = ClassOf(argument->type);
        const bool number = (cls == TypeClass::Integer && argument->type.kind != TypeKind::Bit) ||
                            cls == TypeClass::Decimal;
        const bool same =
            cls == TypeClass::Decimal ? ClassOf(type) == cls : argument->type.kind == type.kind;
        if (!number || !same || argument->untypedNull) throw SqlError(5373);
        type = TypeRules::Common(type, argument->type);
    }
    if (IsLongDecimal(type)) {
        throw SqlError(40517, {QStringLiteral("GENERATE_SERIES of more than 18 digits")});
    }
    return type;
}

}  // namespace

void QueryBinder::BindSplit(Arguments arguments, BoundSource& bound, Source& source) {
    CheckTexts(arguments);
    const bool ordinal = arguments.size() > 2 && WantsOrdinal(*arguments[2]);
    arguments.resize(2);
    for (BoundPtr& argument : arguments) argument = AsText(std::move(argument));
    SqlType type = Varying(arguments[0]->type);
    if (IsUnicode(arguments[1]->type.kind)) type.kind = TypeKind::NVarChar;
    bound.packed =
        MakeCall(Split, MakeType(TypeKind::VarBinary, SqlType::Max), std::move(arguments));
    CheckCollation(bound.packed->Collates(), u"string_split", true);
    static_cast<BoundCall&>(*bound.packed).option = ordinal ? 1 : 0;
    const CollationId collation = bound.packed->Collates().id;
    source.columns.push_back(
        {QStringLiteral("value"), type, false, false, bound.alias + ".c1", collation});
    if (!ordinal) return;
    source.columns.push_back(
        {QStringLiteral("ordinal"), MakeType(TypeKind::BigInt), false, false, bound.alias + ".c2"});
}

void QueryBinder::BindSeries(Arguments arguments, BoundSource& bound, Source& source) {
    const SqlType type = SeriesType(arguments);
    for (BoundPtr& argument : arguments) {
        argument = ExpressionBinder::Convert(std::move(argument), type);
    }
    if (arguments.size() > 2) {
        Arguments step;
        step.push_back(std::move(arguments[2]));
        arguments[2] = MakeCall(CheckedStep, type, std::move(step));
    } else {
        // A whole step, which the storage holds in units of the scale.
        auto one = std::make_unique<BoundConstant>(SqlValue::Integer(1), IntType());
        arguments.push_back(ExpressionBinder::Convert(std::move(one), type));
        bound.signedByOrder = true;
    }
    bound.series = std::move(arguments);
    source.columns.push_back({QStringLiteral("value"), type, false, false, bound.alias + ".c1"});
}

std::unique_ptr<BoundSource> QueryBinder::BindFunctionTable(const tsql::DerivedTable& table,
                                                            const Scope* around) {
    const Scope names(around);
    ExpressionBinder binder(context_, names);
    Arguments arguments;
    for (const tsql::ExpressionPtr& argument : table.function->arguments) {
        arguments.push_back(binder.Value(*argument));
    }
    const QString name = table.function->name.toLower();
    if (arguments.size() < 2 || arguments.size() > 3) {
        throw SqlError(189, {name, QStringLiteral("2"), QStringLiteral("3")});
    }
    auto bound = std::make_unique<BoundSource>();
    bound->alias = context_.NextAlias();
    Source source;
    source.name = table.alias.isEmpty() ? table.function->name : table.alias;
    if (name == u"string_split") {
        BindSplit(std::move(arguments), *bound, source);
    } else {
        BindSeries(std::move(arguments), *bound, source);
    }
    bound->width = source.columns.size();
    if (table.columns.size() > bound->width) throw SqlError(8159, {source.name});
    if (!table.columns.empty() && table.columns.size() < bound->width) {
        throw SqlError(8158, {source.name});
    }
    for (size_t i = 0; i < table.columns.size(); ++i) source.columns[i].name = table.columns[i];
    scope_.Add(std::move(source), !table.alias.isEmpty());
    return bound;
}

}  // namespace quarv::localdb::engine
