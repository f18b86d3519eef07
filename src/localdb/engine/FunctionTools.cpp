#include "localdb/engine/FunctionTools.h"

#include <algorithm>

#include "localdb/engine/Conversion.h"
#include "localdb/engine/SurrogatePairs.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

BoundPtr MakeCall(Compute compute, const SqlType& type, Arguments arguments, bool takesNull) {
    auto call = std::make_unique<BoundCall>(compute, takesNull);
    call->type = type;
    call->nullable = std::any_of(arguments.begin(), arguments.end(),
                                 [](const BoundPtr& argument) { return argument->nullable; });
    call->parts = std::move(arguments);
    return call;
}

BoundPtr MakeNullableCall(Compute compute, const SqlType& type, Arguments arguments,
                          bool takesNull) {
    BoundPtr call = MakeCall(compute, type, std::move(arguments), takesNull);
    call->nullable = true;
    return call;
}

BoundPtr MakeNeverNullCall(Compute compute, const SqlType& type, Arguments arguments) {
    BoundPtr call = MakeCall(compute, type, std::move(arguments), true);
    call->nullable = false;
    return call;
}

BoundPtr AsText(BoundPtr value) {
    if (ClassOf(value->type) == TypeClass::Text && !value->untypedNull) return value;
    return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::VarChar, 8000));
}

BoundPtr AsInteger(BoundPtr value) {
    return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::BigInt));
}

BoundPtr AsFloat(BoundPtr value) {
    return ExpressionBinder::Convert(std::move(value), MakeType(TypeKind::Float));
}

QString ConstantWord(const BoundExpression& value) {
    if (!value.IsConstant() || ClassOf(value.type) != TypeClass::Text) return {};
    const SqlValue constant = static_cast<const BoundConstant&>(value).Value();
    if (constant.IsNull()) return {};
    return FromUtf8(WithoutTrailingBlanks(constant.text)).toLower();
}

SqlType Varying(SqlType type) {
    if (type.kind == TypeKind::NChar) type.kind = TypeKind::NVarChar;
    if (type.kind == TypeKind::Char) type.kind = TypeKind::VarChar;
    return type;
}

SqlType Widest(SqlType type) {
    type = Varying(type);
    if (type.length != SqlType::Max) type.length = IsUnicode(type.kind) ? 4000 : 8000;
    return type;
}

SqlValue FitResult(const BoundCall& call, std::string_view text, const Evaluation& evaluation) {
    const SqlType all = MakeType(TypeKind::NVarChar, SqlType::Max);
    return Conversion::Convert(SqlValue::Text(JoinPairs(text, *evaluation.arena)), all, call.type,
                               Conversion::NoStyle, *evaluation.arena);
}

BoundPtr MakeAnswer(const QString& text, const SqlType& type) {
    if (text.isNull()) return std::make_unique<BoundConstant>(SqlValue(), type);
    const std::string bytes = ToUtf8(text);
    return std::make_unique<BoundConstant>(SqlValue::Text(bytes), type);
}

BoundPtr MakeAnswer(int64_t number, const SqlType& type) {
    return std::make_unique<BoundConstant>(SqlValue::Integer(number), type);
}

}  // namespace quarv::localdb::engine
