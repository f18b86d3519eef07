// The functions that choose among their arguments: ISNULL, COALESCE, NULLIF, CHOOSE, GREATEST,
// LEAST. What is not chosen is not computed.
#include <array>

#include "localdb/engine/Arithmetic.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeRules.h"

namespace quarv::localdb::engine {

namespace {

// The first of its parts that is not null.
class FirstNotNull : public BoundExpression {
  public:
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        for (const BoundPtr& part : parts) {
            const SqlValue value = part->Evaluate(evaluation);
            if (!value.IsNull()) return value;
        }
        return {};
    }
};

// Its first part tells which of the others, counted from 1.
class Chosen : public BoundExpression {
  public:
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        const SqlValue index = parts[0]->Evaluate(evaluation);
        if (index.IsNull() || index.integer < 1) return {};
        const auto place = static_cast<size_t>(index.integer);
        return place < parts.size() ? parts[place]->Evaluate(evaluation) : SqlValue();
    }
};

struct Commons {
    SqlType type;
    bool typed = false;     // one of them at least is more than the word NULL
    bool nullable = false;  // one of them at least
    bool allNullable = true;
};

Commons CommonOf(const Arguments& arguments, size_t first) {
    Commons common;
    for (size_t i = first; i < arguments.size(); ++i) {
        const BoundExpression& argument = *arguments[i];
        common.nullable = common.nullable || argument.nullable;
        common.allNullable = common.allNullable && argument.nullable;
        if (argument.untypedNull) continue;
        common.type = common.typed ? TypeRules::Common(common.type, argument.type) : argument.type;
        common.typed = true;
    }
    return common;
}

void ConvertAll(Arguments& arguments, size_t first, const SqlType& type) {
    for (size_t i = first; i < arguments.size(); ++i) {
        arguments[i] = ExpressionBinder::Convert(std::move(arguments[i]), type);
    }
}

// ISNULL has the type of its first argument, whatever the second is.
BoundPtr BindIsNullFunction(Arguments arguments) {
    auto node = std::make_unique<FirstNotNull>();
    node->type = arguments[0]->untypedNull ? arguments[1]->type : arguments[0]->type;
    node->nullable = arguments[0]->nullable && arguments[1]->nullable;
    ConvertAll(arguments, 0, node->type);
    node->parts = std::move(arguments);
    return node;
}

BoundPtr BindCoalesce(Arguments arguments) {
    const Commons common = CommonOf(arguments, 0);
    if (!common.typed) throw SqlError(4127);
    auto node = std::make_unique<FirstNotNull>();
    node->type = common.type;
    node->nullable = common.allNullable;
    ConvertAll(arguments, 0, node->type);
    node->parts = std::move(arguments);
    return node;
}

// The first argument's type stays, whatever the comparison needs: `common` is for that alone.
class NullWhereEqual : public BoundExpression {
  public:
    explicit NullWhereEqual(const SqlType& common) : common_(common) {}
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        const SqlValue value = parts[0]->Evaluate(evaluation);
        const SqlValue other = parts[1]->Evaluate(evaluation);
        if (value.IsNull() || other.IsNull()) return value;
        const SqlValue compared = Conversion::Convert(value, parts[0]->type, common_,
                                                      Conversion::NoStyle, *evaluation.arena);
        return CompareValues(compared, other, Order()) == 0 ? SqlValue() : value;
    }

  private:
    SqlType common_;
};

BoundPtr BindNullIf(Arguments arguments) {
    if (arguments[0]->untypedNull) throw SqlError(4151);
    const SqlType type = arguments[0]->type;
    const SqlType common =
        arguments[1]->untypedNull ? type : TypeRules::Common(type, arguments[1]->type);
    TypeRules::CheckConversion(type, common, false);
    auto node = std::make_unique<NullWhereEqual>(common);
    node->type = type;
    arguments[1] = ExpressionBinder::Convert(std::move(arguments[1]), common);
    node->parts = std::move(arguments);
    return node;
}

BoundPtr BindChoose(Arguments arguments) {
    const Commons common = CommonOf(arguments, 1);
    if (!common.typed) throw SqlError(8133);
    auto node = std::make_unique<Chosen>();
    node->type = common.type;
    arguments[0] = ExpressionBinder::Convert(std::move(arguments[0]), IntType());
    ConvertAll(arguments, 1, node->type);
    node->parts = std::move(arguments);
    return node;
}

// The largest (1) or smallest (-1) of those that are not null.
template <int Direction>
SqlValue Extreme(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    SqlValue best;
    for (size_t i = 0; i < call.parts.size(); ++i) {
        if (a[i].IsNull()) continue;
        if (best.IsNull() || CompareValues(a[i], best, call.Order()) * Direction > 0) best = a[i];
    }
    return best;
}

template <int Direction>
BoundPtr BindExtreme(Arguments arguments) {
    const Commons common = CommonOf(arguments, 0);
    if (!common.typed) throw SqlError(8133);
    ConvertAll(arguments, 0, common.type);
    BoundPtr call = MakeCall(Extreme<Direction>, common.type, std::move(arguments), true);
    call->nullable = common.allNullable;
    return call;
}

}  // namespace

std::span<const FunctionEntry> ChoiceFunctions() {
    static constexpr std::array<FunctionEntry, 6> Table = {{
        {u"isnull", 2, 2, BindIsNullFunction},
        {u"coalesce", 1, BoundCall::MaxArguments, BindCoalesce},
        {u"nullif", 2, 2, BindNullIf},
        {u"choose", 2, BoundCall::MaxArguments, BindChoose},
        {u"greatest", 1, BoundCall::MaxArguments, BindExtreme<1>},
        {u"least", 1, BoundCall::MaxArguments, BindExtreme<-1>},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
