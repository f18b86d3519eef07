#include "localdb/engine/BoundNodes.h"

#include "localdb/engine/Arithmetic.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/LikeMatcher.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

bool Compares(tsql::ComparisonSign sign, int order) {
    switch (sign) {
        case tsql::ComparisonSign::Equal:
            return order == 0;
        case tsql::ComparisonSign::NotEqual:
            return order != 0;
        case tsql::ComparisonSign::Less:
            return order < 0;
        case tsql::ComparisonSign::LessOrEqual:
            return order <= 0;
        case tsql::ComparisonSign::Greater:
            return order > 0;
        default:
            return order >= 0;
    }
}

const char* StorageSign(tsql::ComparisonSign sign) {
    constexpr const char* Signs[] = {" = ", " <> ", " < ", " <= ", " > ", " >= "};
    return Signs[static_cast<size_t>(sign)];
}

// Whether the storage orders two values of these types as this server does.
bool StorageCompares(const SqlType& a, const SqlType& b) {
    if (ClassOf(a) != ClassOf(b)) return false;
    if (ClassOf(a) == TypeClass::Decimal) {
        return a.scale == b.scale && IsLongDecimal(a) == IsLongDecimal(b);
    }
    // Bytes of different lengths compare as if the shorter ended in zeros.
    if (ClassOf(a) == TypeClass::Binary) return IsFixedLength(a.kind) && a == b;
    return ClassOf(a) != TypeClass::Moment || a.kind == b.kind;
}

}  // namespace

BoundConstant::BoundConstant(const SqlValue& value, const SqlType& ofType) : value_(value) {
    type = ofType;
    nullable = value.IsNull();
}

std::string BoundConstant::Detail() const {
    const SqlValue value = value_.View();
    std::string text = std::to_string(static_cast<int>(value.kind)) + ':';
    text += std::to_string(value.offset) + ':';
    text += std::to_string(value.integer) + ':' + std::to_string(value.real) + ':';
    text += DecimalMath::ToText(value.wide, 0) + ':';
    text += value.text;
    return text;
}

void BoundColumn::Write(SqlWriter& writer) const {
    if (computed) {
        writer.Expression(*computed);
    } else {
        writer.Text(sql_);
    }
}

Collating BoundColumn::FoldCollations() const {
    Collating own;
    own.id = collation;
    own.label = CollationLabel::Implicit;
    own.unicode = IsUnicode(type.kind);
    own.Settle();
    return own;
}

BoundCollate::BoundCollate(BoundPtr operand, CollationId collation, CollationLabel label)
    : collation_(collation), label_(label) {
    type = operand->type;
    nullable = operand->nullable;
    parts.push_back(std::move(operand));
}

// Whoever compares writes the collation.
void BoundCollate::Write(SqlWriter& writer) const {
    writer.Expression(*parts[0]);
}

Collating BoundCollate::FoldCollations() const {
    Collating own;
    own.id = collation_;
    own.label = label_;
    own.unicode = IsUnicode(type.kind);
    own.Settle();
    return own;
}

SqlValue BoundArithmetic::Evaluate(const Evaluation& evaluation) const {
    const SqlValue a = parts[0]->Evaluate(evaluation);
    const SqlValue b = parts[1]->Evaluate(evaluation);
    return Arithmetic::Apply(sign_, a, parts[0]->type, b, parts[1]->type, type, *evaluation.arena);
}

SqlValue BoundNegate::Evaluate(const Evaluation& evaluation) const {
    return Arithmetic::Negate(sign_, parts[0]->Evaluate(evaluation), type);
}

BoundConvert::BoundConvert(BoundPtr operand, const SqlType& to, bool nullOnError)
    : nullOnError_(nullOnError) {
    type = to;
    nullable = operand->nullable || nullOnError;
    parts.push_back(std::move(operand));
}

SqlValue BoundConvert::Evaluate(const Evaluation& evaluation) const {
    int style = Conversion::NoStyle;
    if (parts.size() > 1) {
        const SqlValue given = parts[1]->Evaluate(evaluation);
        if (given.IsNull()) return {};
        style = static_cast<int>(given.integer);
    }
    const SqlValue value = parts[0]->Evaluate(evaluation);
    if (!nullOnError_) {
        return Conversion::Convert(value, parts[0]->type, type, style, *evaluation.arena);
    }
    try {
        return Conversion::Convert(value, parts[0]->type, type, style, *evaluation.arena);
    } catch (const SqlError&) {
        return {};
    }
}

bool BoundConvert::IsDeterministic() const {
    const TypeClass from = ClassOf(parts[0]->type), to = ClassOf(type);
    const bool reads = from == TypeClass::Text && to == TypeClass::Moment;
    const bool shows = from == TypeClass::Moment && to == TypeClass::Text;
    if (!reads && !shows) return true;
    if (parts.size() < 2 || !parts[1]->IsConstant()) return false;
    const int64_t style = static_cast<const BoundConstant&>(*parts[1]).Value().integer;
    return style > 100 && style != 106 && style != 107 && style != 109 && style != 113 &&
           style != 130;
}

SqlValue BoundCase::Evaluate(const Evaluation& evaluation) const {
    size_t i = 0;
    for (; i + 1 < parts.size(); i += 2) {
        if (Holds(parts[i]->Evaluate(evaluation))) return parts[i + 1]->Evaluate(evaluation);
    }
    return i < parts.size() ? parts[i]->Evaluate(evaluation) : SqlValue();
}

BoundCondition::BoundCondition() {
    type = BitType();
}

SqlValue BoundComparison::Evaluate(const Evaluation& evaluation) const {
    const SqlValue a = parts[0]->Evaluate(evaluation);
    const SqlValue b = parts[1]->Evaluate(evaluation);
    if (a.IsNull() || b.IsNull()) return {};
    return SqlValue::Integer(Compares(sign_, CompareValues(a, b, Order())));
}

void BoundComparison::Write(SqlWriter& writer) const {
    if (writer.IsDeep() || !StorageCompares(parts[0]->type, parts[1]->type)) {
        writer.Call(*this);
        return;
    }
    writer.Expression(*parts[0]);
    writer.Text(StorageSign(sign_));
    writer.Collated(*parts[1], Order());
}

SqlValue BoundJunction::Evaluate(const Evaluation& evaluation) const {
    bool unknown = false;
    for (const BoundPtr& part : parts) {
        const SqlValue value = part->Evaluate(evaluation);
        unknown = unknown || value.IsNull();
        if (!value.IsNull() && (value.integer != 0) != isAnd_) return SqlValue::Integer(!isAnd_);
    }
    return unknown ? SqlValue() : SqlValue::Integer(isAnd_);
}

// A long chain is written as a balanced tree: the storage bounds the height of expressions.
void BoundJunction::WriteRange(SqlWriter& writer, size_t begin, size_t end) const {
    if (end - begin > 16) {
        const size_t middle = begin + (end - begin) / 2;
        writer.Text("(");
        WriteRange(writer, begin, middle);
        writer.Text(isAnd_ ? ") AND (" : ") OR (");
        WriteRange(writer, middle, end);
        writer.Text(")");
        return;
    }
    for (size_t i = begin; i < end; ++i) {
        if (i > begin) writer.Text(isAnd_ ? " AND " : " OR ");
        writer.Text("(");
        writer.Expression(*parts[i]);
        writer.Text(")");
    }
}

void BoundJunction::Write(SqlWriter& writer) const {
    if (writer.IsDeep()) {
        writer.Call(*this);
        return;
    }
    const SqlWriter::Level level(writer);
    WriteRange(writer, 0, parts.size());
}

SqlValue BoundNot::Evaluate(const Evaluation& evaluation) const {
    const SqlValue value = parts[0]->Evaluate(evaluation);
    return value.IsNull() ? value : SqlValue::Integer(value.integer == 0);
}

void BoundNot::Write(SqlWriter& writer) const {
    if (writer.IsDeep()) {
        writer.Call(*this);
        return;
    }
    const SqlWriter::Level level(writer);
    writer.Text("NOT (");
    writer.Expression(*parts[0]);
    writer.Text(")");
}

SqlValue BoundIsNull::Evaluate(const Evaluation& evaluation) const {
    return SqlValue::Integer(parts[0]->Evaluate(evaluation).IsNull() != negated_);
}

void BoundIsNull::Write(SqlWriter& writer) const {
    writer.Expression(*parts[0]);
    writer.Text(negated_ ? " IS NOT NULL" : " IS NULL");
}

SqlValue BoundLike::Evaluate(const Evaluation& evaluation) const {
    const SqlValue text = parts[0]->Evaluate(evaluation);
    const SqlValue pattern = parts[1]->Evaluate(evaluation);
    if (text.IsNull() || pattern.IsNull()) return {};
    char32_t escape = 0;
    if (parts.size() > 2) {
        const SqlValue given = parts[2]->Evaluate(evaluation);
        if (given.IsNull()) return {};
        size_t at = 0;
        if (!given.text.empty()) escape = NextCodePoint(given.text, at);
        if (at == 0 || at != given.text.size()) throw SqlError(506, {FromUtf8(given.text)});
    }
    return SqlValue::Integer(MatchesLike(text.text, pattern.text, escape, Order()));
}

SqlValue BoundIn::Evaluate(const Evaluation& evaluation) const {
    const SqlValue operand = parts[0]->Evaluate(evaluation);
    if (operand.IsNull()) return {};
    bool unknown = false;
    for (size_t i = 1; i < parts.size(); ++i) {
        const SqlValue value = parts[i]->Evaluate(evaluation);
        if (value.IsNull()) {
            unknown = true;
        } else if (CompareValues(operand, value, Order()) == 0) {
            return SqlValue::Integer(1);
        }
    }
    return unknown ? SqlValue() : SqlValue::Integer(0);
}

void BoundIn::Write(SqlWriter& writer) const {
    bool native = !writer.IsDeep();
    for (const BoundPtr& part : parts)
        native = native && StorageCompares(parts[0]->type, part->type);
    if (!native) {
        writer.Call(*this);
        return;
    }
    const SqlWriter::Level level(writer);
    writer.Collated(*parts[0], Order());
    writer.Text(" IN (");
    for (size_t i = 1; i < parts.size(); ++i) {
        if (i > 1) writer.Text(",");
        writer.Expression(*parts[i]);
    }
    writer.Text(")");
}

BoundRowCount::BoundRowCount(BoundPtr count, int64_t least, int number)
    : least_(least), number_(number) {
    type = count->type;
    nullable = false;
    parts.push_back(std::move(count));
}

SqlValue BoundRowCount::Evaluate(const Evaluation& evaluation) const {
    const SqlValue count = parts[0]->Evaluate(evaluation);
    if (count.IsNull()) throw SqlError(1060);
    // A percentage of rows.
    if (count.kind == SqlValue::Kind::Real) {
        if (!(count.real >= 0 && count.real <= 100)) throw SqlError(number_);
        return count;
    }
    if (count.integer < least_) throw SqlError(number_);
    return count;
}

}  // namespace quarv::localdb::engine
